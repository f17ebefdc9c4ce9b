// The law of foreign files: a fault has words, a line and a number of its own and leaves the
// project as it was; what is read is finite, of text, and not more than the bytes can hold.
#pragma once

#include <cmath>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

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

inline bool is_sound(const Project& project, std::size_t bytes) {
  const auto& rows = project.data(1).rows;
  bool sound = rows.size() <= bytes / 4 && project.fits(1).nFits <= 15;
  for (std::size_t i = 0; i < rows.size(); ++i)
    sound = sound && rows[i].time >= 0 && std::isfinite(rows[i].time) &&
            std::isfinite(rows[i].failures + rows[i].suspensions);
  for (const FitResult& fit : project.fits(1).Fits)
    for (const FitParam& row : fit.Rows)
      sound = sound && std::isfinite(row.Scale + row.Fraction + row.Shape + row.T0);
  for (const ChartItem& item : project.charts(1).Boxes) sound = sound && is_utf8(item.Text2);
  return sound;
}

/// What breaks the law where `read` reads these bytes.
template <class Read>
std::string breach_of_foreign_law(std::string_view bytes, Read read) {
  const Project before = empty_project();
  Project project = before;
  const std::optional<NumberedFault> fault = read(bytes, project);
  if (!fault) return is_sound(project, bytes.size()) ? "" : "unsound";
  if (!(project == before)) return "a fault has changed the project";
  const std::set<int> numbers = {6, 9, 11, 13, 14, 62};
  const bool told = numbers.count(fault->error_number) == 1 && fault->fault.line > 0;
  return told && !fault->fault.what.empty() ? "" : "a fault without words";
}

/// Every reader must bear every text.
inline std::string breach_of_foreign_law(std::string_view bytes) {
  file_type(bytes, "name.vkm");
  std::string breach = breach_of_foreign_law(bytes, read_old_data);
  for (const int set : {1, 2, 100})
    breach += breach_of_foreign_law(bytes, [set](std::string_view text, Project& project) {
      return read_quelplot(text, set, project);
    });
  return breach + breach_of_foreign_law(bytes, [](std::string_view text, Project& project) {
           std::vector<Project> sets;
           auto fault = read_quelplot_sets(text, project, sets);
           if (!fault) project = sets.back();
           return fault;
         });
}

}  // namespace tavlo::test
