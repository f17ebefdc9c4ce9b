// Text encoding: the bytes of a text as UTF-8, whichever program wrote them. UTF-16 is
// converted; whatever is no text is refused. Single fields may still be in the ANSI code
// page: those who keep them convert them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "files/read_fault.h"

namespace tavlo {

/// Takes a UTF-8 byte order mark off the front.
std::string_view without_byte_order_mark(std::string_view bytes);

/// Refuses what a reader of bytes can't take: UTF-16, UTF-32 and NUL.
std::optional<ReadFault> find_foreign_bytes(std::string_view bytes);

/// Makes `text` a text without a byte order mark, in `buffer` where it must be converted.
/// Refuses UTF-32, broken UTF-16 and bytes that are no text (NUL).
std::optional<ReadFault> decode_text(std::string_view& text, std::string& buffer);

}  // namespace tavlo
