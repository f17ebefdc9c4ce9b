// Shown text: foreign text, as the name of a file, made fit for a terminal, a picture or
// a message: it can't move the pointer, change colours or break a file's form.
#pragma once

#include <string>
#include <string_view>

namespace tavlo::cli {

/// `text` with control characters and bytes that are no UTF-8 written as \x1B.
std::string shown_text(std::string_view text);

}  // namespace tavlo::cli
