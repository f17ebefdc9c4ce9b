// Rich text content: what a log holds. UTF-8 text with a mark at each end of a line, cell
// and row; beside it the runs of one style, the rows' widths and the fonts' names. It grows
// at its end only, so what is known of a part of it stays true.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavlo {

/// No colour of its own: the text has that of the window or the paper.
constexpr std::uint32_t automatic_colour = 0xFFFFFFFF;

/// How characters look.
struct TextStyle {
  bool bold = false;
  bool italic = false;
  bool underline = false;
  std::uint16_t font = 0;          ///< place of its name in the content; 0 the log's own font
  std::uint16_t half_points = 20;  ///< size, in half points
  std::uint32_t colour = automatic_colour;  ///< 0xRRGGBB

  friend bool operator==(const TextStyle&, const TextStyle&) = default;
};

/// What somebody who goes through a content meets, in its order.
class RichTextVisitor {
 public:
  virtual ~RichTextVisitor() = default;

  /// Text of one style, and the name of its font, without a line end in it; a tab may be.
  virtual void text(std::string_view text, const TextStyle& style, const std::string& font) = 0;
  virtual void line_end() = 0;

  /// A row of a table, a right edge a cell: in twips (1/1440 inch) from the table's
  /// left edge, none below the one before. Rows in a row whose edges are equal are one table.
  virtual void begin_row(std::span<const int> right_edges) = 0;
  virtual void end_cell() = 0;
  virtual void end_row() = 0;
};

class RichTextContent {
 public:
  static constexpr std::size_t most_cells = 100;       ///< a row; what follows is in its last cell
  static constexpr std::size_t most_fonts = 1000;      ///< what comes later has the log's own
  static constexpr std::size_t most_runs = 4'000'000;  ///< what comes later has the last style

  /// The place of a font, which gets one where it has none.
  std::uint16_t font(std::string_view name);

  /// Adds text (UTF-8). Line breaks of any kind end lines; other control characters but tabs
  /// are left out, and broken UTF-8 becomes U+FFFD.
  void add(std::string_view text, const TextStyle& style);

  /// Adds what another content has between two of its sizes.
  void add(const RichTextContent& other, std::size_t begin, std::size_t end);

  /// Begins a row, on a line of its own. Until its end what is added is in its cells.
  void begin_row();
  void end_cell();
  /// Ends a row and the cell that is begun. A cell without an edge is an inch wide.
  void end_row(std::span<const int> right_edges);

  /// Takes the line end off that the content ends with, if it does.
  void drop_last_line_end();

  /// The part up to a size that the content once had.
  RichTextContent front(std::size_t end) const;

  /// How much there is; no measure of what is seen.
  std::size_t size() const { return text_.size(); }

  /// Shows what stands between two sizes that the content once had.
  void visit(std::size_t begin, std::size_t end, RichTextVisitor& visitor) const;

  /// The text between two sizes, lines separated by "\n", cells by tabs.
  std::string plain(std::size_t begin, std::size_t end) const;

  /// The beginnings of lines outside tables from `begin` on, each `every` lines behind the one
  /// before: an insertion there divides nothing.
  std::vector<std::size_t> line_begins(std::size_t begin, std::size_t end, int every) const;

  /// True where the part from `begin` looks as that of another content from `other_begin`.
  bool same_part(std::size_t begin, const RichTextContent& other, std::size_t other_begin,
                 std::size_t length) const;

  /// True where the first `end` of both look the same.
  bool same_front(const RichTextContent& other, std::size_t end) const;

 private:
  /// Text from `begin` to the next run has this style. It begins at a character, not at a mark.
  struct Run {
    std::size_t begin;
    TextStyle style;
  };
  struct Row {
    std::size_t begin;
    std::size_t edges;  ///< place of its first edge
    std::size_t cells;
  };

  bool is_at_line_begin() const;
  void add_clean(std::string_view text, const TextStyle& style);
  void add_run(std::size_t begin, const TextStyle& style);
  void add_runs(const RichTextContent& other, std::size_t begin, std::size_t end);
  void add_rows(const RichTextContent& other, std::size_t begin, std::size_t end);
  void add_row(std::size_t begin, std::span<const int> right_edges);
  std::vector<Run>::const_iterator run_at(std::size_t place) const;
  std::vector<Row>::const_iterator row_at(std::size_t place) const;
  std::span<const int> edges(const Row& row) const { return {&edges_[row.edges], row.cells}; }
  std::string_view text_up_to_mark(std::size_t begin, std::size_t end) const;
  TextStyle style_before(std::vector<Run>::const_iterator run) const;

  std::string text_;
  std::vector<Run> runs_;  ///< text in front of the first has the default style
  std::vector<Row> rows_;
  std::vector<int> edges_;
  std::vector<std::string> fonts_{"Arial"};

  // Of the row that is begun.
  std::size_t row_begin_ = 0;
  std::size_t last_cell_end_ = 0;
  std::size_t cells_in_row_ = 0;  ///< ended ones
};

}  // namespace tavlo
