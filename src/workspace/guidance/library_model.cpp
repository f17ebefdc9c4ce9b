#include "workspace/guidance/library_model.h"

#include "guidance/library_search.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

void LibraryModel::show_rows_with(const QString& words) {
  beginResetModel();
  shown_ = find_library_rows(library_.rows, library_.first_row(), from_qt(words));
  cut_row_ = -1;
  endResetModel();
}

const std::vector<std::string>& LibraryModel::fields(int row) const {
  if (row != cut_row_) library_.rows.fields(shown_[static_cast<std::size_t>(row)], cut_);
  cut_row_ = row;
  cut_.resize(library_.definition.columns.size());
  return cut_;
}

int LibraryModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int LibraryModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(library_.definition.columns.size());
}

QVariant LibraryModel::data(const QModelIndex& index, int role) const {
  const bool is_text = role == Qt::DisplayRole || role == Qt::ToolTipRole;
  if (!index.isValid() || !is_text) return {};
  return to_qt(fields(index.row())[static_cast<std::size_t>(index.column())]);
}

QVariant LibraryModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  const auto place = static_cast<std::size_t>(section);
  if (orientation == Qt::Horizontal) return to_qt(library_.definition.columns[place].Name);
  return tr("Row %1").arg(shown_[place] - library_.first_row() + 1);
}

}  // namespace tavlo
