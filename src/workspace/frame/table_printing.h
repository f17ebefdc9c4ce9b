// Table printing: a table on paper as text, all its rows, with the title, the page's number
// and the headings on each page. Columns share the width of the page; what is too long for
// its own goes on below.
#pragma once

#include <QAbstractItemModel>
#include <QPrinter>

namespace tavlo {

struct PrintedTable {
  QString title;
  const QAbstractItemModel* model = nullptr;
  int rows = 0;           ///< from the top; the rest of the model stays out
  bool numbered = false;  ///< with the headings of the rows as first column
};

/// The range of pages that the printer was told, `most_pages` at most. False when the
/// printer can't be used.
bool print_table(QPrinter& printer, const PrintedTable& table, int most_pages);

}  // namespace tavlo
