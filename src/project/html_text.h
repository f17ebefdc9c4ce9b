// HTML text: a rich text as a document of HTML, the form in which programs of the web take
// what is copied.
#pragma once

#include <string>
#include <string_view>

#include "project/rich_text.h"

namespace tavlo {

/// The text as it stands in a document; characters that no document may hold are left out.
std::string html_escaped(std::string_view text);

/// The whole document, UTF-8.
std::string html_text(const RichText& text);

}  // namespace tavlo
