// LibraryModel: the rows of a library's data file in a table, all of them or those that a
// search has found. A row is cut into fields when it comes into sight.
#pragma once

#include <QAbstractTableModel>
#include <cstdint>
#include <string>
#include <vector>

#include "guidance/library.h"

namespace tavlo {

class LibraryModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  LibraryModel(const Library& library, QObject* parent)
      : QAbstractTableModel(parent), library_(library) {}

  /// Shows the rows in which all words occur, of the library as it stands now.
  void show_rows_with(const QString& words);

  /// The fields of a row that is shown, one for each column.
  const std::vector<std::string>& fields(int row) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  const Library& library_;
  std::vector<std::uint32_t> shown_;
  // Of the row that was asked for last: a view asks for its cells one by one.
  mutable int cut_row_ = -1;
  mutable std::vector<std::string> cut_;
};

}  // namespace tavlo
