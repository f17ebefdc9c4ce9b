// Version words: what stands for the program's version in its settings and project files.
#pragma once

#include <string_view>

namespace tavlo {

/// The version of the forms of these files, as other readers of them expect it.
inline constexpr std::string_view file_version = "5.0DJ";

}  // namespace tavlo
