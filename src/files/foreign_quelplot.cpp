#include "files/foreign_quelplot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string>

#include "files/column_names.h"
#include "files/foreign_content.h"
#include "files/text_lines.h"

namespace tavlo {

namespace {

/// What the line of a paragraph says; a plain line is one without the marks.
std::string_view without_paragraph(std::string_view line) {
  constexpr std::string_view begin = "<P>", end = "</P>";
  constexpr std::size_t least_unended = 8;
  line = trimmed(line);
  const bool ended = line.size() >= begin.size() + end.size() &&
                     equal_in_any_case(line.substr(line.size() - end.size()), end);
  if (!equal_in_any_case(line.substr(0, begin.size()), begin)) return line;
  if (!ended && line.size() < least_unended) return line;
  line.remove_prefix(begin.size());
  if (ended) line.remove_suffix(end.size());
  return trimmed(line);
}

/// Takes the cell in front, which ends at a blank; a comma behind it goes with it.
std::string_view take_cell(std::string_view& line) {
  line = trimmed(line);
  std::string_view word = line.substr(0, line.find_first_of(" \t"));
  line.remove_prefix(word.size());
  if (word.ends_with(',')) word.remove_suffix(1);
  return word;
}

class QuelPlot {
 public:
  /// Reads the header.
  explicit QuelPlot(ProjectReader& file) : file_(file) {
    find_start();
    read_header();
  }

  int sets() const { return std::max(sets_, 1); }

  /// The sets `first` to `last`, from 1.
  std::vector<ForeignContent> read(int first, int last);

 private:
  static constexpr int type_with_blocks = 9;  ///< two blocks stand ahead of each set

  std::string_view line(const char* kind) { return without_paragraph(file_.line(kind)); }
  std::int32_t whole(const char* kind);
  std::int32_t count(const char* kind);
  void drop(std::int64_t lines, const char* kind);
  void find_start();
  void read_header();
  void skip_block();
  void skip_blocks_ahead();
  void read_points();
  SampleRow read_point();
  void read_sections(int first);
  void read_section(std::size_t section, int first);
  void read_titles();
  void read_slopes(int first);

  ProjectReader& file_;
  std::vector<ForeignContent> contents_;
  std::int32_t type_ = 0;
  std::int32_t sets_ = 0;
};

std::int32_t QuelPlot::whole(const char* kind) {
  std::string_view text = line(kind);
  return file_.whole(take_cell(text));
}

/// The number of lines that follow. There may be less: then the file ends among them.
std::int32_t QuelPlot::count(const char* kind) {
  const std::int32_t number = whole(kind);
  if (number < 0)
    file_.refuse(run_time::subscript,
                 "Count out of range in file: " + std::to_string(number) + " lines");
  return number;
}

void QuelPlot::drop(std::int64_t lines, const char* kind) {
  for (; lines > 0; --lines) file_.line(kind);
}

void QuelPlot::find_start() {
  constexpr int most_lines = 10;
  for (int i = 0; i < most_lines && !file_.at_end(); ++i)
    if (equal_in_any_case(line("header"), "QUELPLOT_DATA2")) return;
  file_.refuse(run_time::type_mismatch, "there is no line QUELPLOT_DATA2 among the first ten");
}

void QuelPlot::read_header() {
  constexpr const char* kind = "line of the header";
  constexpr int type_line = 3, values_line = 8, most_lines = 10000;
  constexpr std::int32_t values_per_set = 3;
  constexpr std::size_t least_bytes_per_set = 4;
  drop(2, kind);
  const std::int32_t lines = whole(kind);
  if (lines < values_line || lines > most_lines)
    file_.refuse(run_time::type_mismatch,
                 "the header can't have " + std::to_string(lines) + " lines (8 to 10000)");
  drop(type_line - 1, kind);
  type_ = whole(kind);
  drop(values_line - type_line - 1, kind);
  sets_ = whole(kind) / values_per_set;
  if (sets_ > most_quelplot_sets)
    file_.refuse(run_time::subscript, "Count out of range in file: " + std::to_string(sets_) +
                                          " data sets (at most 1000)");
  if (sets_ > 1) require_room(file_, sets_, least_bytes_per_set, "data sets");
  drop(lines - values_line, kind);
}

void QuelPlot::skip_block() {
  while (!equal_in_any_case(line("data set").substr(0, 4), "SET_")) {
  }
  drop(count("number of lines"), "line of a data set");
}

void QuelPlot::skip_blocks_ahead() {
  if (type_ != type_with_blocks) return;
  skip_block();
  skip_block();
}

std::vector<ForeignContent> QuelPlot::read(int first, int last) {
  for (int set = 1; set < first; ++set) {
    skip_blocks_ahead();
    skip_block();
  }
  for (int set = first; set <= last; ++set) {
    skip_blocks_ahead();
    read_points();
  }
  read_sections(first);
  return std::move(contents_);
}

void QuelPlot::read_points() {
  constexpr std::size_t least_bytes = 5;  // "1 1 1"; the last may lack a line end
  constexpr FitParam row = {.Scale = 2, .Fraction = 1, .Shape = 1, .T0 = 0, .Applies = 1};
  file_.line("data set");
  std::int32_t number = whole("number of points");
  require_room(file_, number, least_bytes, "points");
  ForeignContent& content = contents_.emplace_back();
  content.fits = {foreign_fit({model_code::weibull2, {row}})};
  std::vector<SampleRow>& points = content.points.emplace();
  points.reserve(static_cast<std::size_t>(number));
  for (; number > 0; --number) points.push_back(read_point());
}

SampleRow QuelPlot::read_point() {
  std::string_view text = line("point");
  const float time = file_.single(file_.number(take_cell(text)));
  file_.single(file_.number(take_cell(text)));  // the rank, which is made anew
  const double units = file_.number(take_cell(text));
  const bool failed = time >= 0.0F && units > 0.0;
  const double number = std::fabs(units);
  return {std::fabs(time), failed ? number : 0.0, failed ? 0.0 : number, 0};
}

// The sections stand in one order; any may be missing.
void QuelPlot::read_sections(int first) {
  constexpr std::size_t sections = 4;
  constexpr std::array<const char*, sections> headings = {"LABELSWSW", "PROGRAM_SPECIFIC",
                                                          "SOLCOEF", "PARAMETERS_DUANE"};
  bool behind_points = true;
  for (std::size_t next = 0; next < sections && !file_.at_end();) {
    const std::string_view heading = line("section");
    if (behind_points) refuse_point_too_many(file_, heading);
    behind_points = false;
    for (std::size_t i = next; i < sections; ++i) {
      if (!equal_in_any_case(heading, headings[i])) continue;
      read_section(i, first);
      next = i + 1;
      break;
    }
  }
}

void QuelPlot::read_section(std::size_t section, int first) {
  constexpr const char* kind = "line of a section";
  switch (section) {
    case 0: read_titles(); break;
    case 1: drop(std::max(count(kind), 2), kind); break;
    case 2: drop(count(kind) - 2, kind); break;
    default: read_slopes(first);
  }
}

void QuelPlot::read_titles() {
  constexpr const char* kind = "line of the labels";
  constexpr int titles = 5;
  const std::int32_t lines = count("number of labels");
  std::map<int, std::string> found;
  std::string_view first = line(kind);
  if (first.starts_with("!!")) first.remove_prefix(2);
  found[chart_item::main_title] = foreign_words(first);
  found[chart_item::sub_title] = foreign_words(line(kind));
  const std::string front = foreign_words(line(kind));
  found[chart_item::x_title] = front + foreign_words(line(kind));
  found[chart_item::y_title] = foreign_words(line(kind));
  drop(lines - titles, kind);
  for (ForeignContent& content : contents_) content.titles = found;
}

/// The slope is the second of the four lines of a set.
void QuelPlot::read_slopes(int first) {
  constexpr const char* kind = "line of the slopes";
  constexpr int lines_of_set = 4, lines_to_slope = 2;
  file_.line(kind);
  drop(std::int64_t{lines_of_set} * (first - 1), kind);
  for (std::size_t i = 0; i < contents_.size(); ++i) {
    drop((i == 0 ? 0 : lines_of_set - lines_to_slope) + lines_to_slope - 1, kind);
    std::string_view text = line(kind);
    // A slope of this kind has the other sign in the file.
    contents_[i].fits->front().Rows(1).Shape = 0.0 - file_.number(take_cell(text));
  }
}

}  // namespace

std::optional<NumberedFault> count_quelplot_sets(std::string_view bytes, int& sets) {
  return read_foreign(bytes, [&](ProjectReader& file) { sets = QuelPlot(file).sets(); });
}

std::optional<NumberedFault> read_quelplot(std::string_view bytes, int set, Project& project) {
  std::vector<ForeignContent> content;
  auto fault = read_foreign(bytes, [&](ProjectReader& file) {
    QuelPlot data(file);
    const int there = set < 1 || set > data.sets() ? 1 : set;
    content = data.read(there, there);
  });
  if (!fault) store(std::move(content.front()), project);
  return fault;
}

std::optional<NumberedFault> read_quelplot_sets(std::string_view bytes, const Project& empty,
                                                std::vector<Project>& projects) {
  std::vector<ForeignContent> contents;
  auto fault = read_foreign(bytes, [&](ProjectReader& file) {
    QuelPlot data(file);
    contents = data.read(1, data.sets());
  });
  if (fault) return fault;
  for (ForeignContent& content : contents) store(std::move(content), projects.emplace_back(empty));
  return std::nullopt;
}

}  // namespace tavlo
