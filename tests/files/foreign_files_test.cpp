#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "fuzz/foreign_file_law.h"
#include "numerics/number_text.h"
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
  return read_quelplot(bytes, set, project);
}

std::string counted(const char* mark, float time, double units) {
  return mark + number_text(time, 7) + (units == 1 ? "" : "x" + number_text(units));
}

/// "100 >200x3" of the points; model/method, state, quality and parameters of the fits; titles.
std::string summary(const Project& project) {
  std::string text;
  const auto& rows = project.data(1).rows;
  for (std::size_t i = 0; i < rows.size(); ++i)
    text += rows[i].failures > 0 ? counted("", rows[i].time, rows[i].failures) + ' '
                                 : counted(">", rows[i].time, rows[i].suspensions) + ' ';
  for (int i = 1; i <= project.fits(1).nFits; ++i) {
    const FitResult& fit = project.fits(1).Fits(i);
    EXPECT_EQ(std::pair(fit.request.model, fit.request.method),
              std::pair(fit.ModelCode, fit.Method));
    text += "| " + std::to_string(fit.ModelCode) + '/' + std::to_string(fit.Method) +
            (fit.Status == FitStatus::calculated ? " old " : " stale ") + number_text(fit.Quality);
    for (int row = 1; row <= fit.nRows; ++row) {
      const FitParam& at = fit.Rows(row);
      text += " (" + number_text(1 / at.Scale) + ' ' + number_text(at.Fraction) + ' ' +
              number_text(at.Shape) + ' ' + number_text(at.T0) + ')';
      EXPECT_EQ(at.Applies, 1);
    }
    text += ' ';
  }
  for (int item = chart_item::main_title; item <= chart_item::y_title; ++item)
    text += "| " + project.charts(1).Boxes(item).Text2;
  return text;
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

/// An example, where `@name` stands in front, with what stands behind it.
std::string bytes_of(const std::string& text) {
  if (!text.starts_with('@')) return text;
  const std::size_t end = std::min(text.find('\n'), text.size());
  return example(text.substr(1, end - 1)) + text.substr(end);
}

TEST(ForeignFiles, EveryPathHasItsOutcome) {
  for (const auto& row : test::case_list("foreign_files.txt")) {
    const std::string bytes = bytes_of(row[0]);
    EXPECT_EQ(outcome(bytes, std::stoi(row[1])), row[2]) << bytes;
    EXPECT_EQ(test::breach_of_foreign_law(bytes), "") << bytes;
  }
}

TEST(ForeignFiles, AllSetsAreTheSetsOneByOne) {
  const std::string bytes = example("quelplot_three_sets.dat");
  std::vector<Project> projects;
  ASSERT_FALSE(read_quelplot_sets(bytes, empty_project(), projects));
  ASSERT_EQ(projects.size(), 3U);
  for (int set = 1; set <= 3; ++set)
    EXPECT_EQ("of 3: " + summary(projects[static_cast<std::size_t>(set) - 1]), outcome(bytes, set));
}

TEST(ForeignFiles, TheFirstLinesTellTheTypeThenTheEndingOfTheName) {
  for (const auto& row : test::case_list("foreign_types.txt"))
    EXPECT_EQ(static_cast<int>(file_type(row[0], row[1])), std::stoi(row[2])) << row[0];
}

std::string with_line_ends(std::string text, const std::string& end) {
  std::string changed;
  for (const char c : text)
    if (c != '\r') changed += c == '\n' ? end : std::string(1, c);
  return changed;
}

std::string utf16(const std::string& ansi) {
  std::string utf8 = utf8_from_ansi(ansi), wide = "\xFF\xFE";
  for (std::string_view rest = utf8; !rest.empty();) {
    const char32_t unit = next_code_point(rest);
    wide += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
  }
  return wide;
}

constexpr const char* real_files[] = {"old_all_sections.dat", "quelplot_one_set.dat",
                                      "quelplot_page.html"};

TEST(ForeignFiles, LineEndsAndEncodingsAreAllTheSame) {
  for (const char* const name : real_files) {
    const std::string bytes = example(name), expected = outcome(bytes, 1);
    for (const char* const end : {"\n", "\r", "\r\n"}) {
      const std::string other = with_line_ends(bytes, end);
      for (const std::string& text : {other, utf16(other), utf8_from_ansi(other),
                                      "\xEF\xBB\xBF" + utf8_from_ansi(other), other + "\x1A\x1A"})
        EXPECT_EQ(outcome(text, 1), expected) << text;
    }
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
    const std::size_t start = bytes.find("\r\n", 100);
    for (std::size_t size = start; size < bytes.size(); ++size) {
      Project cut = empty_project();
      const std::string_view part = std::string_view(bytes).substr(0, size);
      ASSERT_EQ(test::breach_of_foreign_law(part), "") << part;
      if (read(part, 1, cut, sets)) continue;
      ++well;
      ASSERT_EQ(cut.data(1).rows.size(), whole.data(1).rows.size()) << part;
      ASSERT_LE(cut.fits(1).nFits, whole.fits(1).nFits);
    }
    EXPECT_GT(well, 5) << name;
    EXPECT_LT(well, 400) << name;
  }
}

}  // namespace
}  // namespace tavlo
