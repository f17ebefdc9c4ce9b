// HTML text: a rich text as a document of HTML, the form in which programs of the web take
// what is copied.
#pragma once

#include <string>

#include "project/rich_text.h"

namespace tavlo {

/// The whole document, UTF-8.
std::string html_text(const RichText& text);

}  // namespace tavlo
