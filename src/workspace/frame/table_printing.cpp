#include "workspace/frame/table_printing.h"

#include <QFontMetricsF>
#include <algorithm>
#include <numeric>
#include <vector>

#include "workspace/frame/printed_pages.h"

namespace tavlo {

namespace {

/// The table as a grid of texts: row -1 holds the headings.
class Cells {
 public:
  explicit Cells(const PrintedTable& table) : table_(table), first_(table.numbered ? 1 : 0) {}

  int columns() const { return table_.model->columnCount() + first_; }
  int rows() const { return std::min(table_.rows, table_.model->rowCount()); }

  QString text(int row, int column) const {
    const int model_column = column - first_;
    if (row < 0 && model_column < 0) return {};
    if (row < 0) return table_.model->headerData(model_column, Qt::Horizontal).toString();
    if (model_column < 0) return table_.model->headerData(row, Qt::Vertical).toString();
    return table_.model->index(row, model_column).data().toString();
  }

  Qt::Alignment alignment(int row, int column) const {
    if (column < first_) return Qt::AlignRight;
    if (row < 0) return Qt::AlignHCenter;
    const QVariant value = table_.model->index(row, column - first_).data(Qt::TextAlignmentRole);
    return Qt::Alignment(QFlag(value.toInt())) & Qt::AlignHorizontal_Mask;
  }

 private:
  const PrintedTable& table_;
  int first_;
};

/// The longest text stands for the widest, since to measure a million takes long; a spare
/// character makes up for digits that are not all of one width.
double natural_width(const Cells& cells, int column, const QFontMetricsF& metrics) {
  QString longest = cells.text(-1, column);
  double width = metrics.horizontalAdvance(longest);
  for (int row = 0; row < cells.rows(); ++row)
    if (QString text = cells.text(row, column); text.size() > longest.size())
      longest = std::move(text);
  width = std::max(width, metrics.horizontalAdvance(longest));
  return width + 3 * metrics.averageCharWidth();
}

/// Columns keep their natural width where the page has room; else the widest give way.
std::vector<double> shared_widths(std::vector<double> widths, double room) {
  std::vector<std::size_t> order(widths.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(),
            [&](std::size_t a, std::size_t b) { return widths[a] < widths[b]; });
  auto left = static_cast<double>(widths.size());
  for (const std::size_t column : order) {
    widths[column] = std::min(widths[column], room / left);
    room -= widths[column];
    left -= 1;
  }
  return widths;
}

class Sheet {
 public:
  Sheet(QPrinter& printer, const PrintedTable& table)
      : cells_(table), page_(printed_page(printer)), head_(head_height(printer)) {
    const QFontMetricsF metrics(printed_font(), &printer);
    line_ = metrics.lineSpacing();
    gap_ = metrics.averageCharWidth();
    std::vector<double> natural;
    for (int column = 0; column < cells_.columns(); ++column)
      natural.push_back(natural_width(cells_, column, metrics));
    widths_ = shared_widths(std::move(natural), page_.width());
    find_pages(metrics);
  }

  int pages() const { return static_cast<int>(starts_.size()); }

  void paint(QPainter& painter, int page) const {
    double y = paint_row(painter, -1, head_);
    painter.drawLine(QPointF(0, y), QPointF(page_.width(), y));
    const auto at = static_cast<std::size_t>(page);
    const int end = at + 1 < starts_.size() ? starts_[at + 1] : cells_.rows();
    for (int row = starts_[at]; row < end; ++row) y = paint_row(painter, row, y);
  }

 private:
  static constexpr int wrapping = Qt::TextWordWrap | Qt::TextWrapAnywhere;

  double height(int row, const QFontMetricsF& metrics) const {
    double height = line_;
    for (int column = 0; column < cells_.columns(); ++column) {
      const double width = widths_[static_cast<std::size_t>(column)] - 2 * gap_;
      const QString text = cells_.text(row, column);
      // Most cells hold a short number: only the others are laid out.
      if (static_cast<double>(text.size()) * gap_ < width &&
          metrics.horizontalAdvance(text) <= width)
        continue;
      const QRectF room(0, 0, width, page_.height());
      height = std::max(height, metrics.boundingRect(room, wrapping, text).height());
    }
    return std::min(height, page_.height() / 2);
  }

  void find_pages(const QFontMetricsF& metrics) {
    const double top = head_ + height(-1, metrics);
    starts_ = {0};
    double y = top;
    heights_.reserve(static_cast<std::size_t>(cells_.rows()) + 1);
    heights_.push_back(height(-1, metrics));
    for (int row = 0; row < cells_.rows(); ++row) {
      const double high = height(row, metrics);
      heights_.push_back(high);
      if (y + high > page_.height() && row > starts_.back()) {
        starts_.push_back(row);
        y = top;
      }
      y += high;
    }
  }

  /// The place of the next row.
  double paint_row(QPainter& painter, int row, double y) const {
    const double high = heights_[static_cast<std::size_t>(row + 1)];
    double x = 0;
    for (int column = 0; column < cells_.columns(); ++column) {
      const double width = widths_[static_cast<std::size_t>(column)];
      const QString text = cells_.text(row, column);
      if (!text.isEmpty())
        painter.drawText(QRectF(x + gap_, y, width - 2 * gap_, high),
                         static_cast<int>(cells_.alignment(row, column)) | wrapping, text);
      x += width;
    }
    return y + high;
  }

  Cells cells_;
  QRectF page_;
  double head_;
  double line_ = 0;
  double gap_ = 0;
  std::vector<double> widths_;
  std::vector<double> heights_;  // of the headings, then of each row
  std::vector<int> starts_;      // the first row of each page
};

}  // namespace

bool print_table(QPrinter& printer, const PrintedTable& table, int most_pages) {
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  const Sheet sheet(printer, table);
  const auto content = [&sheet](QPainter& on, int page) { sheet.paint(on, page); };
  return paint_pages(printer, painter, {table.title, sheet.pages(), content}, most_pages) &&
         painter.end();
}

}  // namespace tavlo
