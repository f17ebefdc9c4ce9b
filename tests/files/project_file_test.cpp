#include "files/project_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <numeric>

#include "project/code_page.h"
#include "project/fit_records.h"
#include "support/case_list.h"
#include "support/project_lines.h"
#include "support/random_projects.h"

namespace tavlo {
namespace {

using test::bytes_of;
using test::Doubles, test::Flags, test::Ints, test::Longs, test::Singles;
using test::lines_of;
using test::random_project;
using test::RandomNumbers;
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

/// The numbers as the file keeps them.
std::string digits(const Singles& numbers) {
  std::string text;
  char buffer[40];
  for (const float number : numbers) {
    std::snprintf(buffer, sizeof buffer, "%.7G ", static_cast<double>(number));
    text += buffer;
  }
  return text;
}
std::string digits(const Doubles& numbers) {
  std::string text;
  char buffer[40];
  for (const double number : numbers) {
    std::snprintf(buffer, sizeof buffer, "%.15G ", number);
    text += buffer;
  }
  return text;
}

std::string one_line(std::string text) {
  std::replace(text.begin(), text.end(), '\r', ' ');
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

void expect_item(const test::ItemLines& line, const ChartItem& item) {
  EXPECT_EQ(line.flags, (Flags{item.FontBold, item.FontItalic, item.FontUnderline, item.Flag4,
                               item.Flag5, item.Flag6}));
  EXPECT_EQ(line.font_size, item.FontSize);
  EXPECT_EQ(line.longs, (Longs{item.FillColor, item.LineColor, item.LineStyle, item.LineWidth,
                               item.Color5, item.TextColor, item.Value7, item.Value8, item.Value9,
                               item.Height, item.Left, item.Top, item.Width}));
  EXPECT_EQ(line.ints, (Ints{item.Mode, item.Fill, item.Int3, item.Int4, item.Int5}));
  Singles points;
  for (int i = 0; i <= item.nPoints; ++i)
    points.insert(points.end(), {item.PointsX(i), item.PointsY(i)});
  EXPECT_EQ(digits(line.points), digits(points));
  EXPECT_EQ(line.texts, (std::array{item.FontName, one_line(item.Text1), one_line(item.Text2)}));
}

void expect_marker(const test::MarkerLines& line, const ChartMarker& marker) {
  EXPECT_EQ(line.longs, (Longs{marker.FitNumber, marker.FillColor, marker.SymbolColor,
                               marker.SymbolFill, marker.SymbolWidth, marker.FitId, marker.DataId,
                               marker.LineColor, marker.LineWidth, marker.Color9, marker.Long13,
                               marker.Long10, marker.SymbolStyle, marker.LineStyle}));
  EXPECT_EQ(line.ints, (Ints{marker.Int1, marker.Int2, marker.Tied, marker.Symbol, marker.Size}));
  EXPECT_EQ(line.label, one_line(marker.Label));
}

void expect_axis(const test::AxisLines& line, const ChartAxis& axis) {
  EXPECT_EQ(line.automatic, (Flags{axis.AutoMax, axis.AutoMin}));
  EXPECT_EQ(digits(line.limits), digits(Doubles{axis.Max, axis.Min}));
  EXPECT_EQ(line.longs, (Longs{axis.MajorColor, axis.MinorColor, axis.MajorStyle, axis.MinorStyle,
                               axis.MajorWidth, axis.MinorWidth}));
  EXPECT_EQ(line.scale, axis.ScaleType);
  expect_item(line.label, axis.Label);
}

template <class Lines, class Records, class Expect>
void expect_each(const Lines& lines, const Records& records, Expect expect) {
  ASSERT_EQ(static_cast<int>(lines.size()), records.bound() + 1);
  for (int i = 0; i <= records.bound(); ++i) expect(lines[static_cast<std::size_t>(i)], records(i));
}

void expect_chart(const test::ChartLines& line, const Chart& chart) {
  EXPECT_EQ(std::tuple(line.version, line.id, line.spare),
            std::tuple(chart.Version, chart.UniqueId, chart.SubPopulations));
  EXPECT_EQ(line.flags, (Flags{chart.Flag1, chart.Flag2}));
  EXPECT_EQ(line.data_ids, Longs(chart.DataIds.begin(), chart.DataIds.end()));
  EXPECT_EQ(line.fit_ids, Longs(chart.FitIds.begin(), chart.FitIds.end()));
  expect_each(line.axes, chart.Axes, expect_axis);
  expect_each(line.boxes, chart.Boxes, expect_item);
  expect_each(line.markers, chart.Markers, expect_marker);
  expect_each(line.texts, chart.Texts, expect_item);
  EXPECT_EQ(line.names, (std::array{one_line(chart.Name), chart.DateFormat, chart.Profile}));
}

void expect_row(const test::PointLines& line, const SheetRow& row, int number) {
  EXPECT_EQ(line.units, (Doubles{row.failures, row.suspensions}));
  EXPECT_EQ(digits(Singles{line.place[0]}), digits(Singles{row.time}));
  EXPECT_EQ(line.order, number);
  const bool no_time = !row.has(sheet_column::x) && (row.failures > 0 || row.suspensions > 0);
  const auto spare = static_cast<std::int16_t>(no_time ? row.spare | 1 : row.spare);
  EXPECT_EQ(line.ints, (Ints{row.mode, spare}));
  const std::string comment = one_line(row.text(sheet_column::comment));
  const int cell = row.unreadable_column();
  const std::string unread = cell == 0 ? "" : one_line(row.text(cell));
  EXPECT_EQ(cell == 0 ? comment : "", cell == 0 ? line.comment : "");
  for (const std::string& text : {comment, unread})
    EXPECT_NE(line.comment.find(text), std::string::npos) << line.comment;
}

/// The row of sums, and the limits of the set.
void expect_sums(const test::DataLines& line, const DataSet& data) {
  double failures = 0, suspensions = 0;
  const test::PointLines *first = nullptr, *last = nullptr;
  for (std::size_t i = 0; i < data.rows.size(); ++i) {
    const SheetRow& row = data.rows[i];
    const test::PointLines& point = line.points[i + 1];
    if (!row.has(sheet_column::x)) continue;
    failures += row.failures;
    suspensions += row.suspensions;
    EXPECT_TRUE(!data.own_ranks || point.place[1] == row.rank) << point.place[1];
    if (row.failures <= 0) continue;
    if (!first || point.place[0] < first->place[0]) first = &point;
    if (!last || point.place[0] >= last->place[0]) last = &point;
  }
  const test::PointLines& sums = line.points[0];
  EXPECT_EQ(sums.units, (Doubles{failures, suspensions}));
  EXPECT_EQ(sums.ints, (Ints{0, data.SummarySpare}));
  EXPECT_EQ((sums.order & 63) != 0, data.own_ranks);
  const auto as_singles = [&](int from) {
    const auto at = [&](int i) {
      return static_cast<float>(line.head[static_cast<std::size_t>(i)]);
    };
    return digits(Singles{at(from), at(from + 1)});
  };
  const auto of_points = [&](std::size_t i) {
    return digits(first ? Singles{last->place[i], first->place[i]} : Singles{0, 0});
  };
  EXPECT_EQ(digits(Doubles{line.head[0]}), digits(Doubles{data.Reserved}));
  EXPECT_EQ(as_singles(1), of_points(0));
  EXPECT_EQ(as_singles(3), of_points(1));
}

void expect_data(const test::DataLines& line, const DataSet& data) {
  EXPECT_EQ(line.title, one_line(data.Title));
  EXPECT_EQ(line.id, data.UniqueId);
  EXPECT_EQ(line.flags[1], data.Flag2);
  EXPECT_EQ(line.scales, (Ints{data.XScale, data.YScale}));
  expect_each(line.modes, data.ModeNames,
              [](const auto& mode, const auto& name) { EXPECT_EQ(mode, one_line(name)); });
  ASSERT_EQ(line.points.size(), data.rows.size() + 1);
  for (std::size_t i = 0; i < data.rows.size(); ++i)
    expect_row(line.points[i + 1], data.rows[i], static_cast<int>(i) + 1);
  expect_sums(line, data);
  ASSERT_EQ(static_cast<int>(line.inspection.size()), data.Inspection.bound() + 1);
  for (int i = 1; i <= data.Inspection.bound(); ++i) {
    const InspectionList& list = data.Inspection(i);
    const auto& lines = line.inspection[static_cast<std::size_t>(i)];
    ASSERT_EQ(static_cast<int>(lines.size()), list.Last + 1);
    for (int k = 0; k <= list.Last; ++k) {
      const auto& each = lines[static_cast<std::size_t>(k)];
      EXPECT_EQ(digits(each.place), digits(Singles{list.Times(k), list.Counts(k)}));
      EXPECT_EQ(each.flag, list.Flags(k));
    }
  }
  ASSERT_EQ(static_cast<int>(line.profiles.size()), data.Profiles.bound() + 1);
  for (int i = 1; i <= data.Profiles.bound(); ++i) {
    const test::ProfileLines& lines = line.profiles[static_cast<std::size_t>(i)];
    const WarrantyProfile& profile = data.Profiles(i);
    Doubles table;
    for (const Doubles& row : lines.table) table.insert(table.end(), row.begin(), row.end());
    EXPECT_EQ(digits(table), digits(profile.Table));
    EXPECT_EQ(std::tuple(lines.title, lines.spare, lines.kind, lines.table.size()),
              std::tuple(one_line(profile.Title), profile.Spare, profile.Kind,
                         static_cast<std::size_t>(profile.Rows) + 1));
  }
}

bool is_finite(const FitResult& fit) {
  return std::isfinite(fit.Quality) &&
         std::all_of(fit.Rows.begin(), fit.Rows.end(), [](const FitParam& row) {
           return std::isfinite(row.Scale + row.Fraction + row.Shape + row.T0);
         });
}

void expect_fits(const test::FitSetLines& line, const FitSet& fits, const DataSet& data) {
  EXPECT_EQ(std::tuple(line.id, line.title), std::tuple(fits.UniqueId, one_line(fits.Title)));
  EXPECT_EQ(line.data_ids, (Longs{0, data.UniqueId}));
  ASSERT_EQ(static_cast<int>(line.fits.size()), fits.nFits);
  for (int i = 1; i <= fits.nFits; ++i) {
    const test::FitLines& lines = line.fits[static_cast<std::size_t>(i) - 1];
    const FitResult& fit = fits.Fits(i);
    const int status = !is_finite(fit) ? 0 : is_out_of_date(fit, data) ? 2 : 1;
    EXPECT_EQ(lines.ints, (Ints{fit.ModelCode, fit.Method, static_cast<std::int16_t>(status)}));
    EXPECT_EQ(lines.label, fit.Label);
    if (status == 0) continue;
    EXPECT_EQ(digits(Doubles{lines.quality}), digits(Doubles{fit.Quality}));
    ASSERT_EQ(static_cast<int>(lines.rows.size()), fit.nRows);
    for (int k = 1; k <= fit.nRows; ++k) {
      const FitParam& row = fit.Rows(k);
      const test::FitRowLines& numbers = lines.rows[static_cast<std::size_t>(k) - 1];
      EXPECT_EQ(digits(numbers.numbers),
                digits(Doubles{row.Scale, row.Fraction, row.Shape, row.T0}));
      EXPECT_EQ(numbers.applies, row.Applies);
    }
  }
}

void expect_lines(const test::ProjectLines& lines, const Project& project) {
  expect_each(lines.charts, project.charts, expect_chart);
  ASSERT_EQ(static_cast<int>(lines.data.size()), project.data.bound());
  ASSERT_EQ(static_cast<int>(lines.fits.size()), project.fits.bound());
  for (int i = 1; i <= project.data.bound(); ++i) {
    const auto at = static_cast<std::size_t>(i) - 1;
    expect_data(lines.data[at], project.data(i));
    expect_fits(lines.fits[at], project.fits(i), project.data(i));
  }
  EXPECT_EQ(lines.log, project.log.rtf());
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
    const test::ProjectLines lines = lines_of(first);
    EXPECT_EQ(bytes_of(lines), first);
    EXPECT_EQ(lines.utf8, beyond);
    expect_lines(lines, project);
    const Project again = read(first);
    const std::string second = written(again);
    EXPECT_EQ(written(read(second)), second);
    EXPECT_EQ(second, unsaveable ? second : first);
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
