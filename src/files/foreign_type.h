// Foreign type: which program a file that is to be opened comes from. Its first lines
// tell; only where they say nothing does the ending of its name.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tavlo {

enum class FileType {
  project = -1,
  unknown = 0,
  old_data = 1,       ///< "tavlo data", of earlier versions
  quelplot = 2,       ///< data of QuelPlot
  quelplot_html = 3,  ///< the same in a web page
  macro = 4
};

/// The type of a file; its content goes before the ending of `path`. Empty lines in front
/// don't count, nor does the case of letters.
FileType file_type(std::string_view bytes, const std::string& path);

/// The most bytes of a file of that type.
std::uint64_t largest_file(FileType type);

}  // namespace tavlo
