// GridModel: shows a CellTable of the core in a QTableView. Rows behind the headings
// only are counted, so model row 0 is grid row 1.
#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <functional>
#include <optional>
#include <string>

#include "project/cell_table.h"

class QTableView;

namespace tavlo {

enum class CellColour { usual, grey, red };

/// A box that a person ticks, with the colour of what it stands for while it is ticked.
struct CellBox {
  bool ticked = false;
  QColor colour;
  QString tip;
};

class GridModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// With `numbers_in_header` column 0 of the grid becomes the row header and
  /// model column 0 is grid column 1.
  GridModel(CellTable& grid, bool numbers_in_header, QObject* parent);

  /// Shows the grid as it stands now; keeps scroll position and selection.
  void refresh();

  /// Tells the tool tip of a grid row; empty where there is none.
  void set_row_tips(std::function<std::string(int grid_row)> tip_of) {
    tip_of_ = std::move(tip_of);
  }

  /// Tells the tool tip of a cell; empty where there is none.
  void set_cell_tips(std::function<std::string(int grid_row, int grid_column)> tip_of) {
    cell_tip_of_ = std::move(tip_of);
  }
  /// The column that shows a sign on some rows, and the key of that icon; empty where there is
  /// none.
  void set_signs(int grid_column, std::function<QString(int grid_row)> sign_of) {
    sign_column_ = grid_column;
    sign_of_ = std::move(sign_of);
  }

  /// Tells the colour of a cell that isn't the usual one: grey for what is no longer valid,
  /// red for what can't be read.
  void set_colours(std::function<CellColour(int grid_row, int grid_column)> colour_of) {
    colour_of_ = std::move(colour_of);
  }

  /// Puts boxes into the first column: `box_of` tells that of a grid row, nothing where there
  /// is none, and `tick` takes what the person makes of it.
  void set_boxes(std::function<std::optional<CellBox>(int grid_row)> box_of,
                 std::function<void(int grid_row, bool ticked)> tick) {
    box_of_ = std::move(box_of);
    tick_ = std::move(tick);
  }

  int grid_row(const QModelIndex& index) const { return index.row() + 1; }
  int grid_column(const QModelIndex& index) const { return index.column() + first_column_; }
  QModelIndex at(int grid_row, int grid_column) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  /// The grid takes the selection of the view as its own.
  void mirror_selection(const QTableView& view);

 private:
  QString text(int row, int column) const;
  QVariant tip_at(const QModelIndex& index) const;
  QString sign_at(const QModelIndex& index) const;
  std::optional<CellBox> box_at(const QModelIndex& index) const;

  CellTable& grid_;
  int first_column_;
  int rows_;
  std::function<std::string(int)> tip_of_;
  std::function<std::string(int, int)> cell_tip_of_;
  int sign_column_ = -1;
  std::function<QString(int)> sign_of_;
  std::function<CellColour(int, int)> colour_of_;
  std::function<std::optional<CellBox>(int)> box_of_;
  std::function<void(int, bool)> tick_;
};

}  // namespace tavlo
