#include "files/project_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include "project/fit_records.h"
#include "support/case_list.h"
#include "support/project_lines.h"
#include "support/random_projects.h"

namespace tavlo {
namespace {

using test::random_project;
using test::RandomNumbers;
using test::small_project;

std::string written(const Project& project, Ranking ranking = Ranking::of_changed_rows) {
  ProjectBytes made;
  const auto fault = write_project(project, made, ranking);
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

bool is_finite(const FitResult& fit) {
  return std::isfinite(fit.Quality) &&
         std::all_of(fit.Rows.begin(), fit.Rows.end(), [](const FitParam& row) {
           return std::isfinite(row.Scale + row.Fraction + row.Shape + row.T0);
         });
}

/// What a file of the project has to hold, value by value. A cell that can't be read has no
/// line of its own: in a comment that the program found for it, the text must be.
class Expected {
 public:
  Expected(const Project& project, bool is_utf8, const std::vector<std::string>& found)
      : is_utf8_(is_utf8), found_(found) {
    add(project.charts.bound(), project.data.bound(), project.fits.bound());
    for (const Chart& each : project.charts) chart(each);
    for (int i = 1; i <= project.data.bound(); ++i) data(project.data(i), project.fits(i));
    for (int i = 1; i <= project.fits.bound(); ++i) fit_set(project.fits(i), project.data(i));
    values.push_back(project.log.rtf());
  }

  std::vector<std::string> values;

 private:
  template <class... Each>
  void add(const Each&... each) {
    (values.push_back(spelt_value(each)), ...);
  }
  template <class Value>
  std::string spelt_value(const Value& value) {
    if constexpr (std::is_convertible_v<Value, std::string_view>)
      return test::spelt(one_line(value), is_utf8_);
    else
      return test::spelt(value);
  }

  void item(const ChartItem& item) {
    add(item.FontBold, item.FontItalic, item.FontUnderline, item.Flag4, item.Flag5, item.Flag6,
        item.FontSize, item.FillColor, item.LineColor, item.LineStyle, item.LineWidth, item.Color5,
        item.TextColor, item.Value7, item.Value8, item.Value9, item.Height, item.Left, item.Top,
        item.Width, item.Mode, item.Fill, item.Int3, item.Int4, item.Int5, item.nPoints);
    for (int i = 0; i <= item.nPoints; ++i) add(item.PointsX(i), item.PointsY(i));
    add(item.FontName, item.Text1, item.Text2);
  }

  void chart(const Chart& chart) {
    add(chart.Version, chart.UniqueId, chart.Flag1, chart.Flag2, chart.SubPopulations,
        chart.Axes.bound(), chart.DataIds.bound(), chart.FitIds.bound(), chart.Boxes.bound(),
        chart.Markers.bound(), chart.Texts.bound());
    for (const std::int32_t id : chart.DataIds) add(id);
    for (const std::int32_t id : chart.FitIds) add(id);
    for (const ChartAxis& axis : chart.Axes) {
      add(axis.AutoMax, axis.AutoMin, axis.Max, axis.Min, axis.MajorColor, axis.MinorColor,
          axis.MajorStyle, axis.MinorStyle, axis.MajorWidth, axis.MinorWidth, axis.ScaleType);
      item(axis.Label);
    }
    for (const ChartItem& box : chart.Boxes) item(box);
    for (const ChartMarker& row : chart.Markers)
      add(row.FitNumber, row.FillColor, row.SymbolColor, row.SymbolFill, row.SymbolWidth, row.FitId,
          row.DataId, row.LineColor, row.LineWidth, row.Color9, row.Long13, row.Long10,
          row.SymbolStyle, row.LineStyle, row.Int1, row.Int2, row.Tied, row.Symbol, row.Size,
          row.Label);
    for (const ChartItem& text : chart.Texts) item(text);
    add(chart.Name, chart.DateFormat, chart.Profile);
  }

  /// Rows behind the row of sums, under extreme times and ranks of the first and last failure.
  void data(const DataSet& data, const FitSet& fits) {
    const DataReading now(data.rows, data.reading.ranks(), data.own_ranks, data.ModeNames.bound());
    const auto rank = [&](std::size_t i) {
      return data.own_ranks ? data.rows[i].rank : now.rank_of(i);
    };
    double failures = 0, suspensions = 0;
    std::optional<std::size_t> first, last;
    for (std::size_t i = 0; i < data.rows.size(); ++i) {
      const SheetRow& row = data.rows[i];
      if (!row.has_point()) continue;
      failures += row.failures;
      suspensions += row.suspensions;
      if (row.failures <= 0) continue;
      if (!first || row.time < data.rows[*first].time) first = i;
      if (!last || row.time >= data.rows[*last].time) last = i;
    }
    const auto time_at = [&](auto i) {
      return i ? double{test::to_digits(data.rows[*i].time, 7)} : 0;
    };
    const auto rank_at = [&](auto i) { return i ? double{rank(*i)} : 0; };
    const bool fits_current =
        std::none_of(fits.Fits.begin() + 1, fits.Fits.end(),
                     [&](const FitResult& fit) { return is_out_of_date(fit, data); });
    add(data.Title, fits_current, data.Flag2, data.Reserved, time_at(last), time_at(first),
        rank_at(last), rank_at(first), data.UniqueId, static_cast<std::int32_t>(data.rows.size()),
        data.is_read() ? 0 : 1, data.ModeNames.bound(), data.Inspection.bound(),
        data.Profiles.bound(), data.XScale, data.YScale, data.ModeNames.bound());
    if (data.ModeNames.bound() > 0)
      for (const std::string& name : data.ModeNames) add(name);
    add(failures, suspensions, 0.0F, 0.0F,
        data.SummaryState != 0                     ? data.SummaryState
        : data.own_ranks                           ? 1
        : data.reading.ranks() == RankKind::benard ? 128
                                                   : 64,
        data.SummaryMode, data.SummarySpare);
    for (std::size_t i = 0; i < data.rows.size(); ++i) {
      const SheetRow& row = data.rows[i];
      const bool no_time = !row.has(sheet_column::x) && (row.failures > 0 || row.suspensions > 0);
      add(row.failures, row.suspensions, row.time, rank(i), static_cast<std::int32_t>(i + 1),
          row.mode, no_time ? row.spare | 1 : row.spare);
    }
    add("");
    for (std::size_t i = 0; i < data.rows.size(); ++i) comment(data.rows[i]);
    lists(data);
  }

  void comment(const SheetRow& row) {
    add(row.text(sheet_column::comment));
    if (row.unreadable_column() == 0) return;
    const std::string& told = found_.at(values.size() - 1);
    EXPECT_TRUE(told.starts_with(values.back())) << told;
    add(row.text(row.unreadable_column()));
    EXPECT_NE(told.find(values.back()), told.npos) << told;
    values.pop_back();
    values.back() = told;
  }

  void lists(const DataSet& data) {
    for (int i = 0; data.Inspection.bound() > 0 && i <= data.Inspection.bound(); ++i) {
      const InspectionList& list = data.Inspection(i);
      add(list.Last);
      for (int k = 0; k <= list.Last; ++k) add(list.Times(k), list.Counts(k), list.Flags(k));
    }
    for (int i = 0; data.Profiles.bound() > 0 && i <= data.Profiles.bound(); ++i) {
      const WarrantyProfile& profile = data.Profiles(i);
      add(profile.Title, profile.Spare, profile.Cols, profile.Rows, profile.Kind);
      for (const double cell : profile.Table) add(cell);
    }
  }

  /// A fit that is infinite was not calculated.
  void fit_set(const FitSet& fits, const DataSet& data) {
    add(fits.UniqueId, fits.nFits, 1, fits.Title, 0, data.UniqueId);
    for (int k = 1; k <= fits.nFits; ++k) {
      const FitResult& fit = fits.Fits(k);
      const bool there = is_finite(fit);
      add(there ? fit.Quality : 0, fit.ModelCode, fit.Method,
          !there                      ? 0
          : is_out_of_date(fit, data) ? 2
                                      : 1,
          there ? fit.nRows : 0, fit.Label);
      for (int i = 1; there && i <= fit.nRows; ++i) {
        const FitParam& row = fit.Rows(i);
        add(row.Scale, row.Fraction, row.Shape, row.T0, row.Applies);
      }
    }
  }

  bool is_utf8_;
  const std::vector<std::string>& found_;
};

/// What a file keeps of a fit.
auto kept(const FitResult& fit, const DataSet& data) {
  return std::tuple(fit.Label, fit.ModelCode, fit.Method, fit.nRows, fit.Rows, fit.Quality,
                    fit.request.model, fit.request.method, fit.request.censored, fit.request.slope,
                    is_out_of_date(fit, data));
}

void expect_same(const Project& found, const Project& wanted) {
  EXPECT_EQ(found.charts, wanted.charts);
  ASSERT_EQ(found.data.bound(), wanted.data.bound());
  for (int i = 1; i <= wanted.data.bound(); ++i) {
    EXPECT_TRUE(same_content(found.data(i), wanted.data(i)));
    const FitSet &fits = wanted.fits(i), &others = found.fits(i);
    EXPECT_EQ(std::tuple(others.UniqueId, others.Title, others.DataIds, others.nFits),
              std::tuple(fits.UniqueId, fits.Title, fits.DataIds, fits.nFits));
    for (int k = 1; k <= fits.nFits; ++k)
      EXPECT_EQ(kept(others.Fits(k), found.data(i)), kept(fits.Fits(k), wanted.data(i)));
  }
}

/// Only a fit that is infinite is lost: it is not up to date any more.
void expect_same_texts(const std::vector<std::string>& found,
                       const std::vector<std::string>& wanted) {
  ASSERT_EQ(found.size(), wanted.size());
  for (std::size_t i = 0; i < found.size(); ++i)
    EXPECT_TRUE(found[i] == wanted[i] || wanted[i] == "#TRUE#") << found[i] << " " << wanted[i];
}

// What the program writes has the stated form and holds the project; read back it is there
// again, rows, charts, and each fit with what was asked for, and is written as it was.
TEST(ProjectFile, HoldsTheProjectInTheStatedLines) {
  for (int seed = 0; seed < 90 && !testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    RandomNumbers random(static_cast<std::uint64_t>(seed));
    const bool unsaveable = seed % 3 == 2, beyond = seed % 4 >= 2;
    const Project project =
        random_project(random, {.beyond_code_page = beyond, .unsaveable = unsaveable});
    const std::string first = written(project);
    const std::vector<std::string> found = test::values_of(first);
    EXPECT_EQ(first.starts_with("\xEF\xBB\xBF"), beyond);
    EXPECT_EQ(found, Expected(project, beyond, found).values);
    const Project again = read(first);
    const std::string second = written(again);
    EXPECT_EQ(written(read(second)), second);
    EXPECT_EQ(again.log.plain(), project.log.plain());
    if (unsaveable) {
      expect_same_texts(test::values_of(second), found);
      continue;
    }
    EXPECT_EQ(second, first);
    expect_same(again, project);
    expect_same(read(written(project, Ranking::none)), project);
  }
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
  const std::size_t log = whole.find("\r\n{\\rtf"), length = whole.rfind('\n', log) + 1;
  const std::string miscounted = std::string(whole).replace(length, log - length, "40");
  for (const std::string& bytes :
       {with_line_feeds(whole), "\xEF\xBB\xBF" + whole, whole + "\r\n\n", miscounted})
    EXPECT_EQ(written(read(bytes)), whole);
}

}  // namespace
}  // namespace tavlo
