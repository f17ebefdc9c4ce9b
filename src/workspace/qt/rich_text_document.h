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

/// What is selected of a document that was made so.
RichText rich_text_of(const QTextCursor& selection);

}  // namespace tavlo
