// X clipboard: how long a form of the clipboard is, without taking it in. The toolkit holds
// what another program gives three times before its length is known: of a long text that is
// more memory than there may be.
#pragma once

#include <cstddef>
#include <span>

namespace tavlo {

/// True when the first of the forms (names of the X server) that the clipboard's owner gives has
/// more than `most` bytes. False where there is none, or no X server. Must not be asked while
/// this program owns the clipboard: it would wait for itself.
bool x_clipboard_exceeds(std::span<const char* const> forms, std::size_t most);

}  // namespace tavlo
