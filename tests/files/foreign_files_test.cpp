#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

#include "fuzz/foreign_file_law.h"
#include "project/fit_records.h"
#include "support/case_list.h"

namespace tavlo {
namespace {

using test::empty_project;

std::string example(const std::string& name) {
  std::ifstream file(TAVLO_TEST_DATA "/foreign/" + name, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(file), {}};
  EXPECT_FALSE(bytes.empty()) << name;
  return bytes;
}

std::optional<NumberedFault> read(std::string_view bytes, int set, Project& project, int& sets) {
  const FileType type = file_type(bytes, "");
  if (type == FileType::old_data) return read_old_data(bytes, project);
  EXPECT_TRUE(type == FileType::quelplot || type == FileType::quelplot_html) << bytes;
  if (auto fault = count_quelplot_sets(bytes, sets)) return fault;
  const auto fault = read_quelplot(bytes, set, project);
  // All sets at once are the sets one by one.
  std::vector<Project> all;
  if (!fault && set > 0 && set <= sets && !read_quelplot_sets(bytes, empty_project(), all)) {
    EXPECT_EQ(all.at(static_cast<std::size_t>(set) - 1), project) << bytes;
  }
  return fault;
}

/// "100 >200x3" of the points; model/method, state, quality and parameters of the fits; titles.
std::string summary(const Project& project) {
  std::ostringstream text;
  const auto& rows = project.data(1).rows;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const double units = std::max(rows[i].failures, rows[i].suspensions);
    text << (rows[i].failures > 0 ? "" : ">") << rows[i].time;
    if (units != 1) text << 'x' << units;
    text << ' ';
  }
  for (int i = 1; i <= project.fits(1).nFits; ++i) {
    const FitResult& fit = project.fits(1).Fits(i);
    text << "| " << fit.request.model << '/' << fit.request.method
         << (fit.Status == FitStatus::calculated ? " old " : " stale ") << fit.Quality << ' ';
    for (const FitParam& row : life_of(fit).rows)
      text << '(' << 1 / row.Scale << ' ' << row.Fraction << ' ' << row.Shape << ' ' << row.T0
           << ") ";
  }
  for (int item = chart_item::main_title; item <= chart_item::y_title; ++item)
    text << "| " << project.charts(1).Boxes(item).Text2;
  return text.str();
}

std::string outcome(std::string_view bytes, int set) {
  Project project = empty_project();
  int sets = 1;
  const auto fault = read(bytes, set, project, sets);
  if (fault)
    return "error " + std::to_string(fault->error_number) + ", line " +
           std::to_string(fault->fault.line) + ": " + fault->fault.what;
  return (sets > 1 ? "of " + std::to_string(sets) + ": " : "") + summary(project);
}

TEST(ForeignFiles, EveryPathHasItsOutcome) {
  for (const auto& row : test::case_list("foreign_files.txt")) {
    const bool named = row[0].starts_with('@');
    const std::string bytes = named ? example(row[0].substr(1)) : row[0];
    EXPECT_EQ(outcome(bytes, std::stoi(row[1])), row[2]) << bytes;
    EXPECT_EQ(test::breach_of_foreign_law(bytes), "") << bytes;
  }
}

TEST(ForeignFiles, TheFirstLinesTellTheTypeThenTheEndingOfTheName) {
  for (const auto& row : test::case_list("foreign_types.txt"))
    EXPECT_EQ(static_cast<int>(file_type(row[0], row[1])), std::stoi(row[2])) << row[0];
}

/// Of letters that UTF-16 has at the same number.
std::string utf16(const std::string& ansi) {
  std::string wide = "\xFF\xFE";
  for (const char c : ansi) wide += {c, '\0'};
  return wide;
}

constexpr const char* real_files[] = {"old_all_sections.dat", "quelplot_one_set.dat",
                                      "quelplot_page.html"};

TEST(ForeignFiles, EncodingsAreAllTheSame) {
  for (const char* const name : real_files) {
    const std::string bytes = example(name), utf8 = utf8_from_ansi(bytes);
    for (const std::string& text : {utf16(bytes), utf8, "\xEF\xBB\xBF" + utf8, bytes + "\x1A\x1A"})
      EXPECT_EQ(outcome(text, 1), outcome(bytes, 1)) << text;
  }
}

// A file may end behind its points, between two sections; only the very last word of it may be
// cut without being missed.
TEST(ForeignFiles, CutAtAnyByteIsAFaultUntilThePointsAreThere) {
  for (const char* const name : real_files) {
    const std::string bytes = example(name);
    Project whole = empty_project();
    int sets = 0, well = 0;
    ASSERT_FALSE(read(bytes, 1, whole, sets));
    constexpr std::size_t magic = 150;
    for (std::size_t size = 0; size < bytes.size(); ++size) {
      Project cut = empty_project();
      const std::string_view part = std::string_view(bytes).substr(0, size);
      ASSERT_EQ(test::breach_of_foreign_law(part), "") << part;
      if (size < magic || read(part, 1, cut, sets)) continue;
      ASSERT_EQ(cut.data(1).rows.size(), whole.data(1).rows.size()) << part;
      ++well;
    }
    EXPECT_TRUE(well > 5 && well < 400) << name << well;
  }
}

}  // namespace
}  // namespace tavlo
