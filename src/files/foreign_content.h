// Foreign content: what the data file of another program brings: points, fits and the
// titles of a chart. It is gathered before the project sees any of it, so that a fault
// in the last line leaves the project as it was.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/project_reader.h"
#include "files/read_fault.h"
#include "fit/sample.h"
#include "project/project.h"

namespace tavlo {

/// What a file does not bring stays as it is in the project.
struct ForeignContent {
  std::optional<std::vector<SampleRow>> points;  ///< in the order of the file
  std::optional<std::vector<FitResult>> fits;
  std::map<int, std::string> titles;  ///< by their item in the chart's boxes
};

/// Makes the content that of data set 1, fit set 1 and chart 1. The fits count as stale,
/// since the points are ranked anew.
void store(ForeignContent content, Project& project);

/// Lets `read` loose on a text in any encoding that people have: UTF-8, UTF-16 or the ANSI
/// code page. A Ctrl-Z at the very end, as old editors left it, is dropped.
std::optional<NumberedFault> read_foreign(std::string_view bytes,
                                          const std::function<void(ProjectReader&)>& read);

/// Refuses a number of `things` that is negative or for which the bytes that are left don't
/// do, if each takes `least_bytes`.
void require_room(ProjectReader& file, std::int32_t number, std::size_t least_bytes,
                  const std::string& things);

/// Refuses the line that was read behind the last point if it holds one point more: the
/// number of points is wrong then, and points would be lost.
void refuse_point_too_many(ProjectReader& file, std::string_view line);

/// Words of a file as UTF-8.
std::string foreign_words(std::string_view bytes);

/// A fit that a file names, by standard regression: stale, without a label.
FitResult foreign_fit(const Life& life);

}  // namespace tavlo
