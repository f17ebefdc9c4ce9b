#include "files/project_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <cmath>

#include "project/fit_records.h"
#include "support/case_list.h"
#include "support/project_lines.h"
#include "support/random_projects.h"

namespace tavlo {
namespace {

using test::bytes_of;
using test::lines_of;
using test::random_project;
using test::RandomNumbers;
using test::Singles;
using test::small_project;

constexpr int projects = 60;

std::string written(const Project& project) {
  ProjectBytes made;
  const auto fault = write_project(project, made);
  EXPECT_FALSE(fault) << fault->fault.what;
  EXPECT_EQ(made.is_utf8, made.bytes.starts_with("\xEF\xBB\xBF"));
  return made.bytes;
}

Project read(const std::string& bytes) {
  Project project;
  const auto fault = read_project(bytes, project);
  EXPECT_FALSE(fault) << fault->fault.line << ": " << fault->fault.what;
  return project;
}

std::string one_line(std::string text) {
  std::replace(text.begin(), text.end(), '\r', ' ');
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

/// What each record is in the file.
template <class Lines, class Records>
std::vector<Lines> each_of(const Records& records, int from,
                           Lines (*lines)(const decltype(records(0)))) {
  std::vector<Lines> made;
  for (int i = from; i <= records.bound(); ++i) made.push_back(lines(records(i)));
  return made;
}

test::ItemLines item_lines(const ChartItem& item) {
  Singles points;
  for (int i = 0; i <= item.nPoints; ++i)
    points.insert(points.end(), {item.PointsX(i), item.PointsY(i)});
  return {
      {item.FontBold, item.FontItalic, item.FontUnderline, item.Flag4, item.Flag5, item.Flag6},
      item.FontSize,
      {item.FillColor, item.LineColor, item.LineStyle, item.LineWidth, item.Color5, item.TextColor,
       item.Value7, item.Value8, item.Value9, item.Height, item.Left, item.Top, item.Width},
      {item.Mode, item.Fill, item.Int3, item.Int4, item.Int5},
      points,
      {item.FontName, one_line(item.Text1), one_line(item.Text2)}};
}

test::AxisLines axis_lines(const ChartAxis& axis) {
  return {{axis.AutoMax, axis.AutoMin},
          {axis.Max, axis.Min},
          {axis.MajorColor, axis.MinorColor, axis.MajorStyle, axis.MinorStyle, axis.MajorWidth,
           axis.MinorWidth},
          axis.ScaleType,
          item_lines(axis.Label)};
}

test::MarkerLines marker_lines(const ChartMarker& row) {
  return {{row.FitNumber, row.FillColor, row.SymbolColor, row.SymbolFill, row.SymbolWidth,
           row.FitId, row.DataId, row.LineColor, row.LineWidth, row.Color9, row.Long13, row.Long10,
           row.SymbolStyle, row.LineStyle},
          {row.Int1, row.Int2, row.Tied, row.Symbol, row.Size},
          one_line(row.Label)};
}

test::ChartLines chart_lines(const Chart& chart) {
  return {chart.Version,
          chart.UniqueId,
          {chart.Flag1, chart.Flag2},
          chart.SubPopulations,
          {chart.DataIds.begin(), chart.DataIds.end()},
          {chart.FitIds.begin(), chart.FitIds.end()},
          each_of(chart.Axes, 0, axis_lines),
          each_of(chart.Boxes, 0, item_lines),
          each_of(chart.Markers, 0, marker_lines),
          each_of(chart.Texts, 0, item_lines),
          {one_line(chart.Name), chart.DateFormat, chart.Profile}};
}

std::vector<test::InspectionLines> inspection_lines(const InspectionList& list) {
  std::vector<test::InspectionLines> lines;
  for (int i = 0; i <= list.Last; ++i)
    lines.push_back({{list.Times(i), list.Counts(i)}, list.Flags(i)});
  return lines;
}

test::ProfileLines profile_lines(const WarrantyProfile& profile) {
  test::ProfileLines lines{one_line(profile.Title), profile.Spare, profile.Kind, {}};
  const std::ptrdiff_t columns = profile.Cols + 1;
  for (auto row = profile.Table.begin(); row != profile.Table.end(); row += columns)
    lines.table.emplace_back(row, row + columns);
  return lines;
}

test::PointLines point_lines(const SheetRow& row, std::int32_t number, float rank) {
  const bool no_time = !row.has(sheet_column::x) && (row.failures > 0 || row.suspensions > 0);
  return {{row.failures, row.suspensions},
          {row.time, rank},
          number,
          {row.mode, static_cast<std::int16_t>(no_time ? row.spare | 1 : row.spare)},
          one_line(row.text(sheet_column::comment))};
}

/// Rows, the row of sums, and times and ranks of the first and the last failure.
void add_points(test::DataLines& lines, const DataSet& data, const DataReading& reading) {
  const int state = data.own_ranks ? 1 : reading.ranks() == RankKind::benard ? 128 : 64;
  lines.points.push_back({{0, 0}, {0, 0}, state, {0, data.SummarySpare}, ""});
  std::size_t first = 0, last = 0;
  for (std::size_t i = 1; i <= data.rows.size(); ++i) {
    const SheetRow& row = data.rows[i - 1];
    lines.points.push_back(point_lines(row, static_cast<std::int32_t>(i),
                                       data.own_ranks ? row.rank : reading.rank_of(i - 1)));
    if (!row.has(sheet_column::x)) continue;
    lines.points[0].units[0] += row.failures;
    lines.points[0].units[1] += row.suspensions;
    if (row.failures <= 0) continue;
    if (first == 0 || row.time < lines.points[first].place[0]) first = i;
    if (last == 0 || row.time >= lines.points[last].place[0]) last = i;
  }
  const auto at = [&](std::size_t row, std::size_t i) {
    return static_cast<double>(lines.points[row].place[i]);
  };
  lines.head = {data.Reserved, at(last, 0), at(first, 0), at(last, 1), at(first, 1)};
}

test::DataLines data_lines(const DataSet& data, bool fits_current) {
  test::DataLines lines;
  lines.title = one_line(data.Title);
  lines.flags = {fits_current, data.Flag2};
  lines.id = data.UniqueId;
  lines.changed = data.is_read() ? 0 : 1;
  lines.scales = {data.XScale, data.YScale};
  lines.modes = {data.ModeNames.begin(), data.ModeNames.end()};
  std::transform(lines.modes.begin(), lines.modes.end(), lines.modes.begin(), one_line);
  const DataReading now(data.rows, data.reading.ranks(), data.own_ranks, data.ModeNames.bound());
  add_points(lines, data, now);
  lines.inspection = each_of(data.Inspection, 0, inspection_lines);
  lines.profiles = each_of(data.Profiles, 0, profile_lines);
  return lines;
}

bool is_finite(const FitResult& fit) {
  return std::isfinite(fit.Quality) &&
         std::all_of(fit.Rows.begin(), fit.Rows.end(), [](const FitParam& row) {
           return std::isfinite(row.Scale + row.Fraction + row.Shape + row.T0);
         });
}

/// A fit that is infinite was not calculated.
test::FitLines fit_lines(const FitResult& fit, const DataSet& data) {
  test::FitLines lines;
  lines.label = fit.Label;
  lines.ints = {fit.ModelCode, fit.Method, 0};
  if (!is_finite(fit)) return lines;
  lines.quality = fit.Quality;
  lines.ints[2] = is_out_of_date(fit, data) ? 2 : 1;
  for (int i = 1; i <= fit.nRows; ++i) {
    const FitParam& row = fit.Rows(i);
    lines.rows.push_back({{row.Scale, row.Fraction, row.Shape, row.T0}, row.Applies});
  }
  return lines;
}

test::ProjectLines lines_of(const Project& project, bool utf8) {
  test::ProjectLines lines;
  lines.utf8 = utf8;
  lines.charts = each_of(project.charts, 0, chart_lines);
  for (int i = 1; i <= project.data.bound(); ++i) {
    const DataSet& data = project.data(i);
    const FitSet& from = project.fits(i);
    test::FitSetLines fits{from.UniqueId, one_line(from.Title), {0, data.UniqueId}, {}};
    bool current = true;
    for (int k = 1; k <= from.nFits; ++k) {
      fits.fits.push_back(fit_lines(from.Fits(k), data));
      current = current && !is_out_of_date(from.Fits(k), data);
    }
    lines.data.push_back(data_lines(data, current));
    lines.fits.push_back(fits);
  }
  lines.log = project.log.rtf();
  return lines;
}

/// A cell that can't be read is in no line of its own: its text must be in the comment.
void take_unreadable(test::ProjectLines& expected, const test::ProjectLines& found,
                     const Project& project) {
  for (int i = 1; i <= project.data.bound(); ++i)
    for (std::size_t k = 0; k < project.data(i).rows.size(); ++k) {
      const SheetRow& row = project.data(i).rows[k];
      std::string& comment = expected.data[static_cast<std::size_t>(i) - 1].points[k + 1].comment;
      const int cell = row.unreadable_column();
      if (cell == 0) continue;
      const std::string& told =
          found.data.at(static_cast<std::size_t>(i) - 1).points.at(k + 1).comment;
      EXPECT_TRUE(told.starts_with(comment)) << told;
      EXPECT_NE(told.find(one_line(row.text(cell))), told.npos) << told;
      comment = told;
    }
}

std::string comments_of(const test::DataLines& lines) {
  std::string all;
  for (const test::PointLines& point : lines.points) all += point.comment + "\n";
  return all;
}

// What the program writes has the stated form and holds the project; read back and written
// again it is the same, as it is by the other reader and writer.
TEST(ProjectFile, HoldsTheProjectInTheStatedLines) {
  for (int seed = 0; seed < projects && !testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    RandomNumbers random(static_cast<std::uint64_t>(seed));
    const bool unsaveable = seed % 2 == 1, beyond = seed % 4 >= 2;
    const Project project =
        random_project(random, {.beyond_code_page = beyond, .unsaveable = unsaveable});
    const std::string first = written(project);
    const test::ProjectLines found = lines_of(first);
    test::ProjectLines expected = lines_of(project, beyond);
    take_unreadable(expected, found, project);
    EXPECT_EQ(first, bytes_of(expected));
    EXPECT_EQ(first, bytes_of(found));
    const Project again = read(first);
    const std::string second = written(again);
    EXPECT_EQ(written(read(second)), second);
    EXPECT_EQ(second, unsaveable ? second : first);
    for (std::size_t i = 0; i < found.data.size(); ++i)
      EXPECT_EQ(comments_of(lines_of(second).data[i]), comments_of(found.data[i]));
    EXPECT_EQ(again.log.plain(), project.log.plain());
  }
}

/// What a file keeps of a fit.
auto kept(const FitResult& fit, const DataSet& data) {
  return std::tuple(fit.Label, fit.ModelCode, fit.Method, fit.nRows, fit.Rows, fit.Quality,
                    fit.request.model, fit.request.method, fit.request.censored, fit.request.slope,
                    is_out_of_date(fit, data));
}

// What was saved is there again: rows, charts, and each fit with what was asked for.
TEST(ProjectFile, AProjectIsThereAgainWhenItIsRead) {
  for (int seed = 0; seed < projects && !testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    RandomNumbers random(static_cast<std::uint64_t>(seed));
    const Project before = random_project(random, {.beyond_code_page = seed % 4 >= 2});
    const Project after = read(written(before));
    EXPECT_EQ(after.charts, before.charts);
    ASSERT_EQ(after.data.bound(), before.data.bound());
    for (int i = 1; i <= before.data.bound(); ++i) {
      EXPECT_TRUE(same_content(after.data(i), before.data(i)));
      const FitSet &fits = before.fits(i), &found = after.fits(i);
      EXPECT_EQ(std::tuple(found.UniqueId, found.Title, found.DataIds, found.nFits),
                std::tuple(fits.UniqueId, fits.Title, fits.DataIds, fits.nFits));
      for (int k = 1; k <= fits.nFits; ++k)
        EXPECT_EQ(kept(found.Fits(k), after.data(i)), kept(fits.Fits(k), before.data(i)));
    }
  }
}

TEST(ProjectFile, TenSavesDoNotChangeTheLog) {
  std::string bytes = written(small_project());
  for (int i = 0; i < 10; ++i) bytes = written(read(bytes));
  EXPECT_EQ(bytes, written(small_project()));
}

/// Reads it over another project, which a fault must leave as it is.
std::optional<ProjectFault> fault_of(const std::string& bytes) {
  static const Project before = small_project();
  Project project = before;
  const auto fault = read_project(bytes, project);
  if (!fault) return fault;
  EXPECT_TRUE(project == before);
  EXPECT_FALSE(fault->fault.what.empty());
  const auto ends = [&](char c) { return std::count(bytes.begin(), bytes.end(), c); };
  const auto lines = std::max(ends('\r'), ends('\n')) + 1;
  EXPECT_TRUE(fault->fault.line >= 1 && fault->fault.line <= lines) << fault->fault.line;
  return fault;
}

std::string with_line_feeds(std::string bytes) {
  std::erase(bytes, '\r');
  return bytes;
}

// Only the very last line end may go without being missed.
TEST(ProjectFile, CutAtAnyByteIsAFaultAndChangesNothing) {
  const std::string small = written(small_project());
  for (const std::string& whole : {small, with_line_feeds(small)}) {
    const std::size_t behind_log = whole.rfind('}') + 1;
    for (std::size_t size = 0; size < behind_log; ++size)
      ASSERT_TRUE(fault_of(whole.substr(0, size))) << size;
    EXPECT_FALSE(fault_of(whole.substr(0, behind_log)));
  }
  RandomNumbers random(5);
  const std::string large = written(random_project(random, {.beyond_code_page = true}));
  for (std::size_t end = large.find("\r\n"); end != large.npos; end = large.find("\r\n", end + 2))
    for (const std::size_t size : {end, end + 2})
      ASSERT_TRUE(size > large.rfind('}') || fault_of(large.substr(0, size))) << size;
}

long peak_kilobytes() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

/// The lines of the small project from the one that reads `anchor` on, and those before it.
std::pair<std::string, std::string> parted_at(const std::string& anchor) {
  const std::string bytes = written(small_project());
  const std::size_t at = anchor == "start" ? 0 : bytes.find("\r\n" + anchor + "\r\n") + 2;
  return {bytes.substr(0, at), bytes.substr(at)};
}

std::string with_line(std::string lines, int behind, const std::string& by) {
  std::size_t at = 0;
  for (; behind > 0; --behind) at = lines.find("\r\n", at) + 2;
  return lines.replace(at, lines.find("\r\n", at) - at, by);
}

TEST(ProjectFile, HostileLinesAreToldAndCostNothing) {
  const long peak = peak_kilobytes();
  for (const auto& row : test::case_list("hostile_projects.txt")) {
    const std::size_t plus = row[0].find('+');
    const auto [before, lines] = parted_at(row[0].substr(0, plus));
    const auto fault = fault_of(before + with_line(lines, std::stoi(row[0].substr(plus)), row[1]));
    std::string told = "read";
    if (fault)
      told =
          std::to_string(fault->error_number) + " at +" +
          std::to_string(fault->fault.line - 1 - std::count(before.begin(), before.end(), '\n')) +
          ": " + fault->fault.what;
    EXPECT_EQ(told.substr(0, row[2].size()), row[2]) << told << ": " << row[0] << " => " << row[1];
  }
  EXPECT_LT(peak_kilobytes() - peak, 64 * 1024);
}

// Another program's code page, another kind of file.
TEST(ProjectFile, OtherBytesAreNoProject) {
  const std::string whole = written(small_project());
  std::string wide = "\xFF\xFE", binary;
  for (const char c : whole) wide += {c, '\0'};
  for (int i = 0; i < 5000; ++i) binary += static_cast<char>(i * i % 251);
  for (const std::string& bytes :
       {std::string(), std::string("\r\n\r\n"), binary, std::string("time\n1\n2\n")})
    EXPECT_TRUE(fault_of(bytes)) << bytes.substr(0, 20);
  EXPECT_TRUE(fault_of(wide));
}

// Where a writer of another kind spreads the same values otherwise, the project is the same.
TEST(ProjectFile, OtherFormsOfTheSameValuesAreRead) {
  const std::string whole = written(small_project());
  const auto replaced = [&](const std::string& what, const std::string& by) {
    std::string bytes = whole;
    for (std::size_t at = 0; (at = bytes.find(what, at)) != std::string::npos; at += by.size())
      bytes.replace(at, what.size(), by);
    return bytes;
  };
  const std::pair<std::string, std::string> forms[] = {
      {"#TRUE#", "True"}, {"#FALSE#", "0"}, {"#TRUE#,", "-1\r\n"}, {"300,", " +3.0d+2 ,"}};
  for (const auto& [what, by] : forms) EXPECT_EQ(written(read(replaced(what, by))), whole) << by;
  EXPECT_EQ(written(read("\r\n\r\n" + whole)), whole);
  for (const std::string& bytes :
       {with_line_feeds(whole), "\xEF\xBB\xBF" + whole, whole + "\r\n\n"})
    EXPECT_EQ(written(read(bytes)), whole);
}

}  // namespace
}  // namespace tavlo
