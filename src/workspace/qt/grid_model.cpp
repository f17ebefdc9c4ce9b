#include "workspace/qt/grid_model.h"

#include <QGuiApplication>
#include <QItemSelectionModel>
#include <QPalette>
#include <QTableView>

#include "workspace/qt/icons.h"
#include "workspace/qt/qt_text.h"
#include "workspace/qt/tones.h"

namespace tavlo {

namespace {

QVariant brush_of(CellColour colour) {
  switch (colour) {
    case CellColour::grey: return QBrush(quiet_ink(QGuiApplication::palette()));
    case CellColour::red: return QBrush(wrong_ink(QGuiApplication::palette()));
    case CellColour::usual: break;
  }
  return {};
}

bool reads_as_number(const QString& text) {
  if (text.isEmpty()) return false;
  const QChar first = text.front();
  return first.isDigit() || first == u'-' || first == u'.';
}

QVariant role_of(const CellBox& box, int role) {
  if (role == Qt::CheckStateRole) return box.ticked ? Qt::Checked : Qt::Unchecked;
  return box.ticked ? QVariant(box.colour) : QVariant();
}

}  // namespace

GridModel::GridModel(CellTable& grid, bool numbers_in_header, QObject* parent)
    : QAbstractTableModel(parent),
      grid_(grid),
      first_column_(numbers_in_header ? 1 : 0),
      rows_(grid.rows() - 1) {}

void GridModel::refresh() {
  const int rows = grid_.rows() - 1;
  if (rows > rows_) {
    beginInsertRows({}, rows_, rows - 1);
    rows_ = rows;
    endInsertRows();
  } else if (rows < rows_) {
    beginRemoveRows({}, rows, rows_ - 1);
    rows_ = rows;
    endRemoveRows();
  }
  emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
  if (rows_ > 0) emit dataChanged(index(0, 0), index(rows_ - 1, columnCount() - 1));
}

QModelIndex GridModel::at(int grid_row, int grid_column) const {
  return index(grid_row - 1, grid_column - first_column_);
}

int GridModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : grid_.columns() - first_column_;
}

// The view may ask while a calculation has made the grid shorter already.
QString GridModel::text(int row, int column) const {
  return row < grid_.rows() ? to_qt(grid_.text(row, column)) : QString();
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const QString shown = text(grid_row(index), grid_column(index));
  if (role == Qt::DisplayRole || role == Qt::EditRole) return shown;
  if (role == Qt::ToolTipRole) return tip_at(index);
  // A sign, or grey, says nothing to who can't see it.
  if (role == Qt::AccessibleDescriptionRole) return tip_at(index);
  if (role == Qt::ForegroundRole && colour_of_)
    return brush_of(colour_of_(grid_row(index), grid_column(index)));
  if (role == Qt::TextAlignmentRole)
    return int((reads_as_number(shown) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
  if (role == Qt::DecorationRole && !sign_at(index).isEmpty()) return icon(sign_at(index));
  if (role == Qt::CheckStateRole || role == Qt::DecorationRole)
    if (const auto box = box_at(index)) return role_of(*box, role);
  return {};
}

QVariant GridModel::tip_at(const QModelIndex& index) const {
  if (cell_tip_of_) return to_qt(cell_tip_of_(grid_row(index), grid_column(index)));
  const std::string tip = tip_of_ ? tip_of_(grid_row(index)) : std::string();
  const auto box = box_at(index);
  return tip.empty() && box ? box->tip : to_qt(tip);
}

QString GridModel::sign_at(const QModelIndex& index) const {
  const bool may_have = sign_of_ && grid_column(index) == sign_column_;
  return may_have ? sign_of_(grid_row(index)) : QString();
}

std::optional<CellBox> GridModel::box_at(const QModelIndex& index) const {
  if (!box_of_ || index.column() != 0) return std::nullopt;
  return box_of_(grid_row(index));
}

bool GridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || !box_at(index)) return false;
  tick_(grid_row(index), value.toInt() == Qt::Checked);
  return true;
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags usual = QAbstractTableModel::flags(index);
  return box_at(index) ? usual | Qt::ItemIsUserCheckable : usual;
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const bool horizontal = orientation == Qt::Horizontal;
  if (role == Qt::TextAlignmentRole)
    return int((horizontal ? Qt::AlignHCenter : Qt::AlignRight) | Qt::AlignVCenter);
  if (role != Qt::DisplayRole) return {};
  if (horizontal) return text(0, section + first_column_);
  return first_column_ == 1 ? QVariant(text(section + 1, 0)) : QVariant(section + 1);
}

void GridModel::mirror_selection(const QTableView& view) {
  const QItemSelection selection = view.selectionModel()->selection();
  if (selection.isEmpty()) {
    if (const QModelIndex current = view.currentIndex(); current.isValid())
      grid_.go_to(grid_row(current), grid_column(current));
    return;
  }
  const QItemSelectionRange& block = selection.first();
  grid_.go_to(grid_row(block.topLeft()), grid_column(block.topLeft()));
  grid_.select_to(grid_row(block.bottomRight()), grid_column(block.bottomRight()));
}

}  // namespace tavlo
