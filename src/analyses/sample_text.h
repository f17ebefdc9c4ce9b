// SampleText: a drawn sample in the data notation.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "analyses/monte_carlo.h"

namespace tavlo {

/// A time as "0.000E+00", rounded half away from zero on its 15 decimal digits.
void append_time(std::string& text, double time);

/// The time that "0.000E+00" leaves of one.
float written_time(float time);

/// Rows of a sheet as lines, times in as few digits as tell them; for the rest see
/// `write_points`.
void write_rows(const std::vector<SampleRow>& rows, std::string_view mark,
                std::string_view line_end, const std::function<bool(std::string_view)>& write);

/// Gives the lines of a sample to `write`, a part at a time, as long as it says yes. `mark`
/// stands before a suspension, `line_end` behind each line.
void write_points(const DrawnPoints& points, std::string_view mark, std::string_view line_end,
                  const std::function<bool(std::string_view)>& write);

}  // namespace tavlo
