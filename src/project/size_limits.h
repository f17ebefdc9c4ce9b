// Size limits: how much the program takes in of what others have made. They bound its memory:
// what is larger is refused with words before it is held whole.
#pragma once

#include <cstdint>

namespace tavlo {

/// The largest file that is read as data, in bytes.
inline constexpr std::uint64_t largest_data_file = std::uint64_t{256} << 20;

/// The largest project: its parts are counted in 32 bits.
inline constexpr std::uint64_t largest_project_file = std::uint64_t{2} << 30;

inline constexpr std::uint64_t largest_settings_file = std::uint64_t{4} << 20;
inline constexpr std::uint64_t largest_language_file = std::uint64_t{1} << 20;
inline constexpr std::uint64_t largest_paths_file = std::uint64_t{64} << 10;

/// The longest text that is taken from the clipboard, in bytes.
inline constexpr std::uint64_t largest_pasted_text = std::uint64_t{64} << 20;

/// The most rows of one data set that is read from a text, or typed.
inline constexpr int most_data_rows = 10'000'000;

/// The most rows of a paste by hand, which is more often a mistake than data.
inline constexpr int most_pasted_rows = 1'000'000;

}  // namespace tavlo
