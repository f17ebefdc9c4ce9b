// The law of foreign files: a fault has words, a line and a number of its own and leaves the
// project as it was; what is read is finite, of text, and not more than the bytes can hold.
#pragma once

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <string_view>

#include "files/foreign_old_data.h"
#include "files/foreign_quelplot.h"
#include "files/foreign_type.h"
#include "project/code_page.h"

namespace tavlo::test {

inline Project empty_project() {
  Project project;
  project.data.push_back(fuStandardData());
  project.fits.push_back(fuStandard_Fit());
  project.charts.push_back(fuStandard_Chart());
  return project;
}

inline bool is_sound(const SheetRow& row) {
  return std::isfinite(row.time) && row.time >= 0 && std::isfinite(row.failures) &&
         std::isfinite(row.suspensions) && std::min(row.failures, row.suspensions) == 0 &&
         row.has(sheet_column::x);
}

inline bool is_sound(const FitResult& fit) {
  return std::isfinite(fit.Quality) && fit.nRows == fit.Rows.bound() && fit.nRows > 0 &&
         std::all_of(fit.Rows.begin(), fit.Rows.end(), [](const FitParam& row) {
           return std::isfinite(row.Scale + row.Fraction + row.Shape + row.T0);
         });
}

inline std::string breach_in(const Project& project, std::size_t bytes) {
  const auto& rows = project.data(1).rows;
  if (rows.size() > bytes / 4) return "more points than bytes";
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (!is_sound(rows[i])) return "unsound row";
  for (int i = 1; i <= project.fits(1).nFits; ++i)
    if (!is_sound(project.fits(1).Fits(i))) return "unsound fit";
  for (const ChartItem& item : project.charts(1).Boxes)
    if (!is_utf8(item.Text2)) return "a title is no text";
  return project.fits(1).nFits > 15 ? "more fits than there are" : "";
}

using ForeignReader = std::function<std::optional<NumberedFault>(std::string_view, Project&)>;

/// What breaks the law where `read` reads these bytes.
inline std::string breach_of_foreign_law(std::string_view bytes, const ForeignReader& read) {
  const Project before = empty_project();
  Project project = before;
  const auto fault = read(bytes, project);
  if (!fault) return breach_in(project, bytes.size());
  constexpr int numbers[] = {6, 9, 11, 13, 14, 62};
  if (!(project == before)) return "a fault has changed the project";
  if (std::find(std::begin(numbers), std::end(numbers), fault->error_number) == std::end(numbers))
    return "error " + std::to_string(fault->error_number);
  return fault->fault.what.empty() || fault->fault.line < 1 ? "a fault without words" : "";
}

/// All sets at once begin with the first one, and none of them is unsound.
inline std::string breach_of_sets_law(std::string_view bytes) {
  int sets = 0;
  std::vector<Project> projects;
  if (read_quelplot_sets(bytes, empty_project(), projects))
    return projects.empty() ? "" : "a fault leaves sets";
  if (count_quelplot_sets(bytes, sets) || sets != static_cast<int>(projects.size()))
    return "counted wrong";
  std::string breach;
  for (const Project& project : projects) breach += breach_in(project, bytes.size());
  Project alone = empty_project();
  const bool read = !read_quelplot(bytes, 1, alone);
  const bool same = alone.data(1).rows == projects.front().data(1).rows;
  return breach + (read && !same ? "another set" : "");
}

/// Every reader must bear every text.
inline std::string breach_of_foreign_law(std::string_view bytes) {
  file_type(bytes, "name.vkm");
  std::string breach = breach_of_foreign_law(bytes, read_old_data) + breach_of_sets_law(bytes);
  for (const int set : {1, 2, 100})
    breach += breach_of_foreign_law(bytes, [set](std::string_view text, Project& project) {
      return read_quelplot(text, set, project);
    });
  return breach;
}

}  // namespace tavlo::test
