// Text printing: a long text on paper, with the title and the page's number on each page.
#pragma once

#include <QPrinter>
#include <QString>

#include "project/rich_text.h"

namespace tavlo {

/// `most_pages` at most. False when the printer can't be used.
bool print_text(QPrinter& printer, const QString& title, const RichText& text, int most_pages);

}  // namespace tavlo
