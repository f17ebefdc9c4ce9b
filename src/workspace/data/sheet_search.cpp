#include "workspace/data/sheet_search.h"

#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

/// Tells whether a cell holds the text.
class CellTest {
 public:
  CellTest(const DataSheet& sheet, const QString& wanted)
      : sheet_(sheet), rows_(sheet.data().rows), wanted_(wanted) {
    const std::string text = from_qt(wanted);
    may_be_number_ = text.find_first_not_of("0123456789.+-eE") == std::string::npos;
  }

  bool holds(CellPlace cell) const {
    const SheetRow& row = rows_[static_cast<std::size_t>(cell.row) - 1];
    const bool is_number = cell.column <= sheet_column::susps;
    const bool has_number = is_number && may_be_number_ && row.has(sheet_column::x);
    const bool has_words = row.texts || (cell.column == sheet_column::mode && row.mode != 0);
    if (!has_number && !has_words && !(is_number && may_be_number_ && row.has(cell.column)))
      return false;
    return to_qt(sheet_.text(cell.row, cell.column)).contains(wanted_, Qt::CaseInsensitive);
  }

 private:
  const DataSheet& sheet_;
  const SharedRows<SheetRow>& rows_;
  QString wanted_;
  bool may_be_number_ = false;
};

}  // namespace

std::optional<CellPlace> find_cell(const DataSheet& sheet, std::span<const int> columns,
                                   const QString& wanted, CellPlace from, SearchWay way) {
  const auto width = static_cast<std::int64_t>(columns.size());
  const std::int64_t cells = sheet.last_row() * width;
  if (cells == 0 || wanted.isEmpty()) return std::nullopt;
  const CellTest test(sheet, wanted);
  const bool forward = way == SearchWay::forward;
  const auto in_row = std::find(columns.begin(), columns.end(), from.column) - columns.begin();
  const std::int64_t start = std::min<std::int64_t>((from.row - 1) * width + in_row, cells - 1);
  for (std::int64_t step = 1; step <= cells; ++step) {
    const std::int64_t at = (start + (forward ? step : cells - step)) % cells;
    const CellPlace cell{static_cast<int>(at / width) + 1,
                         columns[static_cast<std::size_t>(at % width)]};
    if (test.holds(cell)) return cell;
  }
  return std::nullopt;
}

}  // namespace tavlo
