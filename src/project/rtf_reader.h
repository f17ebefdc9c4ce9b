// RTF reader: RTF as a rich text. It takes text, bold, italic, underline, fonts, sizes,
// colours and tables, in the forms that word processors write; what else a document holds is
// left out. RTF that is broken gives what can be read of it.
#pragma once

#include <string_view>

#include "project/rich_text_content.h"

namespace tavlo {

/// True for what begins as an RTF document does.
bool is_rtf(std::string_view text);

/// Reads a document, or a piece of one, which begins in the log's own style. The line end that
/// every document ends with is none of its text. Groups deeper than 200 are read as if
/// they had no braces. Time and memory are in proportion to the length.
RichTextContent read_rtf(std::string_view rtf);

}  // namespace tavlo
