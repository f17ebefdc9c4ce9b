// Size limits: how much the program takes in of what others have made. They bound its memory:
// what is larger is refused with words before it is held whole.
#pragma once

namespace tavlo {

/// The most rows of one data set that is read from a text, or typed.
inline constexpr int most_data_rows = 10'000'000;

/// The most rows of a paste by hand, which is more often a mistake than data.
inline constexpr int most_pasted_rows = 1'000'000;

}  // namespace tavlo
