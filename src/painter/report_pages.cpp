#include "painter/report_pages.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QFontMetricsF>
#include <QPainter>
#include <QPdfWriter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>
#include <QTextTable>
#include <algorithm>
#include <vector>

#include "chart/report/html_report.h"
#include "painter/picture_writer.h"
#include "painter/player.h"
#include "painter/report_drawing.h"

namespace tavlo {

namespace {

constexpr int fine = 1200;  // dots an inch: places and letters are not rounded visibly
constexpr double text_points = 9.5;
constexpr double small_points = 8;
const QColor accent(0, 114, 178);
const QColor grey(100, 100, 100);

QString to_text(const std::string& text) { return QString::fromStdString(text); }

QFont report_font(double points) {
  QFont font(QStringLiteral("Arial"));
  font.setPointSizeF(points);
  return font;
}

QTextCharFormat letters(double points, bool bold = false, const QColor& colour = Qt::black) {
  QTextCharFormat format;
  format.setFont(report_font(points));
  format.setFontWeight(bold ? QFont::Bold : QFont::Normal);
  format.setForeground(colour);
  return format;
}

/// Writes a report into a document that is laid out for paper. Lengths are in points.
class ReportText {
 public:
  explicit ReportText(QTextDocument& document) : end_(&document) {}

  void write(const Report& report) {
    end_.beginEditBlock();  // laid out once, at the end
    add_line(report.title, letters(18, true), 0, 4);
    for (const auto& fact : report.facts)
      add_line(fact[0] + ":  " + fact[1], letters(text_points, false, grey), 0, 0);
    for (const ReportPart& part : report.parts) write(part);
    end_.endEditBlock();
  }

  /// The titles, which stand on the page of what follows them.
  const std::vector<int>& headings() const { return headings_; }

 private:
  void write(const ReportPart& part) {
    add_heading(part.title, letters(13, true, accent), 14, 4);
    for (const DrawingRecord& drawing : part.drawings) add_drawing(drawing);
    for (const ReportTable& table : part.tables) write(table);
    for (const std::string& line : part.lines)
      add_line(line, letters(text_points, false, grey), 2, 0);
  }

  void write(const ReportTable& table) {
    if (!table.title.empty()) add_heading(table.title, letters(text_points, true), 4, 2);
    add_table(table);
    for (const std::string& remark : table.remarks)
      add_line(remark, letters(text_points, false, grey), 2, 0);
  }

  void add_table(const ReportTable& table) {
    open_block(0, 0);
    const auto columns = static_cast<int>(table.headings.size());
    QTextTableFormat format;
    format.setHeaderRowCount(1);
    format.setBorder(0);
    format.setCellSpacing(0);
    // Numbers alone are read more easily where they stand close together.
    const bool has_text = std::ranges::find(table.is_text, true) != table.is_text.end();
    format.setWidth(
        QTextLength(QTextLength::PercentageLength, has_text ? 100 : std::min(100, 18 * columns)));
    QTextTable* const made =
        end_.insertTable(static_cast<int>(table.rows.size()) + 1, columns, format);
    fill(*made, 0, table, table.headings, true);
    for (std::size_t row = 0; row < table.rows.size(); ++row)
      fill(*made, static_cast<int>(row) + 1, table, table.rows[row],
           table.has_totals && row + 1 == table.rows.size());
    end_.movePosition(QTextCursor::End);
    is_behind_table_ = true;
  }

  static void fill(QTextTable& made, int row, const ReportTable& table,
                   const std::vector<std::string>& cells, bool bold) {
    for (int column = 0; column < made.columns(); ++column) {
      const auto i = static_cast<std::size_t>(column);
      QTextTableCell cell = made.cellAt(row, column);
      cell.setFormat(cell_format(row == 0, bold));
      QTextBlockFormat block;
      block.setAlignment(table.is_text[i] ? Qt::AlignLeft : Qt::AlignRight);
      QTextCursor at = cell.firstCursorPosition();
      at.setBlockFormat(block);
      at.insertText(to_text(cells[i]), letters(text_points, bold));
    }
  }

  static QTextTableCellFormat cell_format(bool is_heading, bool is_bold) {
    QTextTableCellFormat format;
    format.setLeftPadding(4);
    format.setRightPadding(4);
    format.setTopPadding(is_bold ? 2.5 : 1.5);
    format.setBottomPadding(is_bold ? 2.5 : 1.5);
    format.setBottomBorder(is_heading ? 1 : 0.5);
    format.setBottomBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBottomBorderBrush(is_heading ? QColor(100, 100, 100) : QColor(215, 215, 215));
    return format;
  }

  void add_drawing(const DrawingRecord& drawing) {
    open_block(2, 2);
    end_.insertText(QString(QChar::ObjectReplacementCharacter), drawing_format(drawing));
  }

  /// Qt leaves no room between a table and the block behind it: a flat line makes some.
  void add_heading(const std::string& text, const QTextCharFormat& format, double above,
                   double below) {
    if (is_behind_table_) add_line("", letters(above / 2), 0, 0);
    add_line(text, format, above, below);
    headings_.push_back(end_.position());
  }

  void add_line(const std::string& text, const QTextCharFormat& format, double above,
                double below) {
    open_block(above, below);
    end_.insertText(to_text(text), format);
  }

  /// A document begins with a block, and a table is followed by one.
  void open_block(double above, double below) {
    QTextBlockFormat format;
    format.setTopMargin(above);
    format.setBottomMargin(below);
    if (is_first_ || is_behind_table_)
      end_.setBlockFormat(format);
    else
      end_.insertBlock(format);
    is_first_ = is_behind_table_ = false;
  }

  QTextCursor end_;
  std::vector<int> headings_;  ///< places in the document; a cursor would move on to its end
  bool is_first_ = true;
  bool is_behind_table_ = false;
};

/// The pages of a document on a writer, each with its head and its foot.
class Pages {
 public:
  Pages(QPdfWriter& pdf, const Report& report)
      : pdf_(pdf),
        report_(report),
        page_(pdf.pageLayout().paintRectPixels(fine).size()),
        line_(QFontMetricsF(report_font(small_points), &pdf).lineSpacing()),
        text_(page_.width(), page_.height() - 4 * line_) {
    document_.setUseDesignMetrics(true);
    document_.documentLayout()->setPaintDevice(&pdf);
    document_.setDefaultFont(report_font(text_points));
    document_.setDocumentMargin(0);
    add_drawings(document_, text_);
    document_.setPageSize(text_);
    ReportText text(document_);
    text.write(report);
    for (const int heading : text.headings()) keep_with_next(heading);
  }

  bool paint() {
    QPainter painter(&pdf_);
    for (int page = 0; page < document_.pageCount(); ++page) {
      if (page > 0 && !pdf_.newPage()) return false;
      paint_edges(painter, page);
      painter.save();
      painter.translate(0, 2 * line_ - page * text_.height());
      document_.drawContents(&painter, QRectF(QPointF(0, page * text_.height()), text_));
      painter.restore();
    }
    return painter.end();
  }

 private:
  int page_at(double y) const { return static_cast<int>(y / text_.height()); }

  void keep_with_next(int heading) {
    const QAbstractTextDocumentLayout& layout = *document_.documentLayout();
    const QTextBlock block = document_.findBlock(heading);
    const QTextBlock next = block.next();
    const double top = layout.blockBoundingRect(block).top();
    if (!next.isValid() || page_at(top) == page_at(bottom_of_first_line(next))) return;
    QTextBlockFormat format = block.blockFormat();
    format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    QTextCursor(block).setBlockFormat(format);
  }

  /// In a table the block is the first cell; a drawing is as high as its line.
  double bottom_of_first_line(const QTextBlock& block) const {
    const QRectF place = document_.documentLayout()->blockBoundingRect(block);
    const QTextLayout* const lines = block.layout();
    const double line = lines->lineCount() > 0 ? lines->lineAt(0).height() : 0;
    return place.top() + line - 1;
  }

  void paint_edges(QPainter& painter, int page) const {
    painter.setFont(report_font(small_points));
    painter.setPen(grey);
    const QRectF head(0, 0, page_.width(), line_);
    const QString title = painter.fontMetrics().elidedText(to_text(report_.title), Qt::ElideRight,
                                                           static_cast<int>(page_.width() * 3 / 4));
    if (page > 0) painter.drawText(head, Qt::AlignLeft, title);
    if (page > 0) painter.drawText(head, Qt::AlignRight, to_text(report_.date));
    const QRectF foot(0, page_.height() - line_, page_.width(), line_);
    painter.drawText(foot, Qt::AlignLeft, to_text(report_.maker));
    painter.drawText(foot, Qt::AlignRight,
                     QStringLiteral("Page %1 of %2").arg(page + 1).arg(document_.pageCount()));
  }

  QPdfWriter& pdf_;
  const Report& report_;
  QSizeF page_;
  double line_;
  QSizeF text_;  ///< between head and foot
  QTextDocument document_;
};

/// Moves the places in the table of objects at the file's end that stand behind a change.
void move_places(QByteArray& pdf, qsizetype behind, qsizetype by) {
  constexpr qsizetype digits = 10;
  constexpr qsizetype line = 20;
  const qsizetype table = pdf.lastIndexOf("\nxref\n") + 1;
  const qsizetype end = pdf.lastIndexOf("trailer");
  qsizetype at = pdf.indexOf('\n', pdf.indexOf('\n', table) + 1) + 1;
  for (; table > 0 && at + line <= end; at += line) {
    const qsizetype place = pdf.mid(at, digits).toLongLong();
    if (place > behind)
      pdf.replace(at, digits, QByteArray::number(place + by).rightJustified(digits, '0'));
  }
  const QByteArray mark = "startxref\n";
  const qsizetype number = pdf.lastIndexOf(mark) + mark.size();
  pdf.replace(number, pdf.indexOf('\n', number) - number, QByteArray::number(table));
}

/// The writer puts the present moment into the file, with the time zone.
void set_moment(QByteArray& pdf, const std::string& date) {
  QByteArray moment = QByteArray::fromStdString(date);
  moment.replace("-", "");
  const QByteArray mark = "/CreationDate (D:";
  const qsizetype at = pdf.indexOf(mark);
  const qsizetype end = pdf.indexOf(')', at);
  if (at < 0 || end < 0 || moment.size() != 8) return;
  moment += "000000Z";
  const qsizetype begin = at + mark.size();
  const qsizetype by = moment.size() - (end - begin);
  pdf.replace(begin, end - begin, moment);
  move_places(pdf, begin, by);
}

}  // namespace

QByteArray pdf_report(const Report& report, PaperSize paper) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  bool is_whole = false;
  {
    QPdfWriter pdf(&buffer);
    pdf.setResolution(fine);
    pdf.setPageSize(QPageSize(paper == PaperSize::a4 ? QPageSize::A4 : QPageSize::Letter));
    pdf.setPageMargins({18, 15, 18, 13}, QPageLayout::Millimeter);
    pdf.setTitle(to_text(report.title));
    pdf.setCreator(QStringLiteral("Tavlo"));
    is_whole = Pages(pdf, report).paint();
  }
  buffer.close();
  if (!is_whole) return {};
  set_moment(bytes, report.date);
  return bytes;
}

std::string report_file(const Report& report, const std::string& format, PaperSize paper) {
  if (format == "pdf") return pdf_report(report, paper).toStdString();
  if (format != "html") return {};
  std::vector<std::string> pictures;
  for (const ReportPart& part : report.parts)
    for (const DrawingRecord& drawing : part.drawings)
      pictures.push_back(svg_picture(drawing, paper_format(drawing, 96)).toStdString());
  return html_report(report, paper, pictures);
}

}  // namespace tavlo
