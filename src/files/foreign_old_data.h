// Foreign old data: the plain text file "tavlo data" of earlier versions: sections of
// points, of fitted parameters and of chart titles, up to a line "end".
#pragma once

#include <optional>
#include <string_view>

#include "files/read_fault.h"
#include "project/project.h"

namespace tavlo {

/// Reads the whole file into data set 1, fit set 1 and the titles of chart 1, which must be
/// there; what it doesn't bring stays. A point whose y is no fraction between 0 and 1 is a
/// suspension. The set is ranked anew, so ranks of the file are not kept. The line "end" may
/// be missing behind points. On a fault `project` stays as it was: 62 where the file ends too
/// early, 13 for what is no number, 6 for one out of range, 9 for a count or an index that
/// can't be, 11 for a scale of 1 / 0.
std::optional<NumberedFault> read_old_data(std::string_view bytes, Project& project);

}  // namespace tavlo
