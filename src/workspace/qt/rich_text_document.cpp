#include "workspace/qt/rich_text_document.h"

#include <QFontMetricsF>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QTextTable>
#include <algorithm>
#include <utility>
#include <vector>

#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

// What a format can't tell, or not exactly.
constexpr int half_points_property = QTextFormat::UserProperty;
constexpr int font_property = QTextFormat::UserProperty + 1;
constexpr int edges_property = QTextFormat::UserProperty + 2;

constexpr std::size_t most_cells = 20'000;
constexpr double own_half_points = TextStyle{}.half_points;
constexpr double twips_of_a_digit = 111.2;  // in Arial of the log's own size

bool is_blank_line(const QTextBlock& block) {
  return block.isValid() && block.length() == 1 && !QTextCursor(block).currentTable();
}

/// Also what stands for a number that there is not: "-" or "?".
bool is_number(const QString& text) {
  constexpr auto is_sign_of_numbers = [](QChar c) {
    return c.isDigit() || c.isSpace() || QStringLiteral(".,+-eE%?").contains(c);
  };
  return std::ranges::all_of(text, is_sign_of_numbers) && !text.trimmed().isEmpty();
}

/// Adds what it is shown at a place of a document.
class DocumentAppender : public RichTextVisitor {
 public:
  explicit DocumentAppender(const QTextCursor& place);

  void text(std::string_view text, const TextStyle& style, const std::string& font) override;
  void line_end() override { add(QStringLiteral("\n"), {}); }
  void begin_row(std::span<const int> right_edges) override;
  void end_cell() override;
  void end_row() override;

  /// Adds a table that is not yet ended.
  void end_table();

  int position() const { return end_.position(); }

 private:
  struct Piece {
    QString text;
    QTextCharFormat format;
  };
  using Cell = std::vector<Piece>;
  using Rows = std::vector<std::vector<Cell>>;

  QTextCharFormat format_of(const TextStyle& style, const std::string& font) const;
  QTextTableFormat table_format() const;
  QTextTableCellFormat cell_format(bool is_heading) const;
  void fill(QTextTable& table, const Rows& rows) const;
  void fill(QTextTableCell cell, const Cell& from, bool at_right) const;
  static QString text_of(const Cell& cell);
  void close_up();
  void add(const QString& text, const QTextCharFormat& format);

  QTextCursor end_;
  double own_size_;          ///< points of the log's own style
  double pixels_of_a_twip_;  ///< in widths that are for letters of that style
  std::vector<int> edges_;   ///< of the table at work
  Rows rows_;                ///< the last may be begun
  bool in_row_ = false;
  bool in_line_ = false;  ///< in a row that is shown as a line
  std::size_t cells_ = 0;
};

DocumentAppender::DocumentAppender(const QTextCursor& place)
    : end_(place),
      own_size_(place.document()->defaultFont().pointSizeF()),
      pixels_of_a_twip_(
          QFontMetricsF(place.document()->defaultFont()).horizontalAdvance(QLatin1Char('0')) /
          twips_of_a_digit) {}

void DocumentAppender::text(std::string_view text, const TextStyle& style,
                            const std::string& font) {
  add(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())), format_of(style, font));
}

QTextCharFormat DocumentAppender::format_of(const TextStyle& style, const std::string& font) const {
  QTextCharFormat format;
  if (style.bold) format.setFontWeight(QFont::Bold);
  if (style.italic) format.setFontItalic(true);
  if (style.underline) format.setFontUnderline(true);
  if (style.colour != automatic_colour) format.setForeground(QColor::fromRgb(style.colour));
  if (style.half_points != TextStyle{}.half_points) {
    format.setFontPointSize(own_size_ * style.half_points / own_half_points);
    format.setProperty(half_points_property, style.half_points);
  }
  if (style.font != 0) {
    format.setFontFamilies({to_qt(font)});
    format.setProperty(font_property, to_qt(font));
  }
  return format;
}

void DocumentAppender::add(const QString& text, const QTextCharFormat& format) {
  if (in_row_) {
    rows_.back().back().push_back({text, format});
  } else {
    if (!in_line_) end_table();
    end_.insertText(text, format);
  }
}

void DocumentAppender::begin_row(std::span<const int> right_edges) {
  if (!std::ranges::equal(right_edges, edges_)) end_table();
  edges_.assign(right_edges.begin(), right_edges.end());
  cells_ += edges_.size();
  in_line_ = cells_ > most_cells;
  if (in_line_) return end_table();
  in_row_ = true;
  rows_.emplace_back().emplace_back();
}

void DocumentAppender::end_cell() {
  if (in_line_) return add(QStringLiteral("\t"), {});
  rows_.back().emplace_back();
}

void DocumentAppender::end_row() {
  if (in_line_) add(QStringLiteral("\n"), {});
  in_row_ = false;
  in_line_ = false;
}

void DocumentAppender::end_table() {
  const Rows rows = std::exchange(rows_, {});
  if (rows.empty()) return;
  close_up();
  QTextTable* const table = end_.insertTable(static_cast<int>(rows.size()),
                                             static_cast<int>(edges_.size()), table_format());
  fill(*table, rows);
  end_.setPosition(table->lastPosition() + 1);
}

/// A table begins with a blank line, and what stands in front may end with one: shown is one.
void DocumentAppender::close_up() {
  const QTextBlock blank = end_.block().previous();
  if (!is_blank_line(blank) || !is_blank_line(blank.previous())) return;
  QTextBlockFormat flat;
  flat.setLineHeight(0, QTextBlockFormat::FixedHeight);
  QTextCursor(blank).setBlockFormat(flat);
}

/// Numbers, and a heading above numbers, stand at the right.
void DocumentAppender::fill(QTextTable& table, const Rows& rows) const {
  for (int column = 0; column < table.columns(); ++column) {
    bool has_numbers = false;
    for (int row = table.rows() - 1; row >= 0; --row) {
      const Cell& from = rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
      has_numbers = has_numbers || is_number(text_of(from));
      fill(table.cellAt(row, column), from, row == 0 ? has_numbers : is_number(text_of(from)));
    }
  }
}

void DocumentAppender::fill(QTextTableCell cell, const Cell& from, bool at_right) const {
  cell.setFormat(cell_format(cell.row() == 0));
  QTextBlockFormat format;
  if (at_right) format.setAlignment(Qt::AlignRight);
  QTextCursor at = cell.firstCursorPosition();
  at.setBlockFormat(format);
  for (const Piece& piece : from) at.insertText(piece.text, piece.format);
}

QString DocumentAppender::text_of(const Cell& cell) {
  QString text;
  for (const Piece& piece : cell) text += piece.text;
  return text;
}

QTextTableFormat DocumentAppender::table_format() const {
  QTextTableFormat format;
  QList<QTextLength> widths;
  QVariantList edges;
  int left = 0;
  for (const int edge : edges_) {
    widths.append(QTextLength(QTextLength::FixedLength, (edge - left) * pixels_of_a_twip_));
    edges.append(edge);
    left = edge;
  }
  format.setColumnWidthConstraints(widths);
  format.setProperty(edges_property, edges);
  format.setCellSpacing(0);
  format.setBorder(0);
  format.setBottomMargin(QFontMetricsF(end_.document()->defaultFont()).lineSpacing() / 2);
  return format;
}

/// Gaps beside the text, and a line under the headings.
QTextTableCellFormat DocumentAppender::cell_format(bool is_heading) const {
  constexpr int gap = 72;  // twips
  QTextTableCellFormat format;
  format.setLeftPadding(gap * pixels_of_a_twip_);
  format.setRightPadding(gap * pixels_of_a_twip_);
  if (!is_heading) return format;
  format.setBottomBorder(1);
  format.setBottomBorderStyle(QTextFrameFormat::BorderStyle_Solid);
  format.setBottomBorderBrush(Qt::gray);
  return format;
}

/// Collects a document that DocumentAppender has made, or a part of one.
class DocumentReader {
 public:
  RichText read(const QTextDocument& document);
  RichText read(QTextBlock from, int end);

 private:
  void read(QTextFrame::iterator at);
  void read(const QTextTable& table);
  void read(const QTextBlock& block);
  TextStyle style_of(const QTextCharFormat& format);

  RichTextContent content_;
};

RichText DocumentReader::read(const QTextDocument& document) {
  read(document.rootFrame()->begin());
  return RichText(std::move(content_));
}

// Qt has an empty block in front of each table and behind it.
void DocumentReader::read(QTextFrame::iterator at) {
  bool is_behind_block = false;
  for (; !at.atEnd(); ++at) {
    if (const auto* const table = qobject_cast<QTextTable*>(at.currentFrame())) {
      read(*table);
      is_behind_block = false;
    } else if (at.currentBlock().isValid()) {
      if (is_behind_block) content_.add("\n", {});
      read(at.currentBlock());
      is_behind_block = true;
    }
  }
}

RichText DocumentReader::read(QTextBlock from, int end) {
  bool is_behind_block = false;
  while (from.isValid() && from.position() < end) {
    if (const QTextTable* const table = QTextCursor(from).currentTable()) {
      read(*table);
      from = from.document()->findBlock(table->lastPosition() + 1);
      is_behind_block = false;
      continue;
    }
    if (is_behind_block) content_.add("\n", {});
    read(from);
    is_behind_block = true;
    from = from.next();
  }
  if (is_behind_block && from.isValid()) content_.add("\n", {});
  return RichText(std::move(content_));
}

void DocumentReader::read(const QTextTable& table) {
  std::vector<int> edges;
  for (const QVariant& edge : table.format().property(edges_property).toList())
    edges.push_back(edge.toInt());
  // A part of the columns: nobody knows which.
  if (std::ssize(edges) != table.columns()) edges.clear();
  for (int row = 0; row < table.rows(); ++row) {
    content_.begin_row();
    for (int column = 0; column < table.columns(); ++column) {
      read(table.cellAt(row, column).begin());
      content_.end_cell();
    }
    content_.end_row(edges);
  }
}

void DocumentReader::read(const QTextBlock& block) {
  for (auto at = block.begin(); !at.atEnd(); ++at)
    content_.add(from_qt(at.fragment().text()), style_of(at.fragment().charFormat()));
}

TextStyle DocumentReader::style_of(const QTextCharFormat& format) {
  TextStyle style;
  style.bold = format.fontWeight() >= QFont::Bold;
  style.italic = format.fontItalic();
  style.underline = format.fontUnderline();
  if (format.hasProperty(half_points_property))
    style.half_points = static_cast<std::uint16_t>(format.intProperty(half_points_property));
  if (format.hasProperty(font_property))
    style.font = content_.font(from_qt(format.stringProperty(font_property)));
  if (format.foreground().style() != Qt::NoBrush)
    style.colour = format.foreground().color().rgb() & 0xFFFFFF;
  return style;
}

}  // namespace

void append_rich_text(QTextDocument& document, const RichText& text) {
  QTextCursor end(&document);
  end.movePosition(QTextCursor::End);
  insert_rich_text(end, text);
}

int insert_rich_text(const QTextCursor& place, const RichText& text) {
  DocumentAppender appender(place);
  QTextCursor change(place);
  change.beginEditBlock();  // laid out once, at the end
  text.visit(appender);
  appender.end_table();
  change.endEditBlock();
  return appender.position();
}

RichText rich_text_between(const QTextDocument& document, int begin, int end) {
  return DocumentReader().read(document.findBlock(begin), end);
}

QTextCharFormat letters_of_font(const QTextDocument& document, const QFont& font) {
  const int half_points = std::clamp(qRound(2 * font.pointSizeF()), 2, 3276);
  QTextCharFormat format;
  format.setFontFamilies({font.family()});
  format.setProperty(font_property, font.family());
  format.setFontPointSize(document.defaultFont().pointSizeF() * half_points / own_half_points);
  format.setProperty(half_points_property, half_points);
  format.setFontWeight(font.bold() ? QFont::Bold : QFont::Normal);
  format.setFontItalic(font.italic());
  format.setFontUnderline(font.underline());
  return format;
}

QFont font_of_letters(const QTextDocument& document, const QTextCharFormat& format) {
  const bool has_font = format.hasProperty(font_property);
  QFont font(has_font ? format.stringProperty(font_property) : document.defaultFont().family());
  const bool has_size = format.hasProperty(half_points_property);
  font.setPointSizeF((has_size ? format.intProperty(half_points_property) : own_half_points) / 2);
  font.setBold(format.fontWeight() >= QFont::Bold);
  font.setItalic(format.fontItalic());
  font.setUnderline(format.fontUnderline());
  return font;
}

RichText rich_text_of(const QTextCursor& selection) {
  QTextDocument part;
  QTextCursor(&part).insertFragment(selection.selection());
  return DocumentReader().read(part);
}

}  // namespace tavlo
