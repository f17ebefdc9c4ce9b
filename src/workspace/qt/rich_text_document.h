// Rich text document: the core's rich text in a document of Qt and back. The log's own style
// is the document's font; other sizes are in proportion to it.
#pragma once

#include <QTextCursor>
#include <QTextDocument>

#include "project/rich_text.h"

namespace tavlo {

/// Adds a rich text at the end of a document. Tables are laid out all at once: behind 20,000
/// cells, rows are lines with tabs.
void append_rich_text(QTextDocument& document, const RichText& text);

/// Inserts a rich text at a place, which must not be in a table; where it stands behind it.
int insert_rich_text(const QTextCursor& place, const RichText& text);

/// What stands between the beginnings of two lines outside tables; up to the document's end
/// for a second one behind it.
RichText rich_text_between(const QTextDocument& document, int begin, int end);

/// What letters of the log look like in a font of that name, size and style, whose size is
/// that in a file.
QTextCharFormat letters_of_font(const QTextDocument& document, const QFont& font);

/// The font of letters, by its name and size in a file.
QFont font_of_letters(const QTextDocument& document, const QTextCharFormat& format);

/// What is selected of a document that was made so.
RichText rich_text_of(const QTextCursor& selection);

}  // namespace tavlo
