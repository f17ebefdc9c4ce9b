// File titles: what data files are called on a chart, which has more room for a name than
// for a path, and must still tell two files of one name apart.
#pragma once

#include <string>
#include <vector>

namespace tavlo::cli {

/// One for each file, in order: its name without folder and ending, or its whole path where
/// two would be called alike; with its number where one is given twice. Fit to be shown.
std::vector<std::string> file_titles(const std::vector<std::string>& files);

/// The same for small room: where titles are long, what all of them begin or end with
/// is an ellipsis, as in "\u2026north\u2026" and "\u2026south\u2026".
std::vector<std::string> short_titles(std::vector<std::string> titles);

/// "pumps, motors", or "pumps, motors, seals and 9 more" where that is too long for a title.
std::string joined_titles(const std::vector<std::string>& titles);

/// Where data come from.
struct FileSource {
  std::string folder;  ///< the whole path of the innermost one that holds all the files
  std::string names;   ///< from there on: "pumps.txt, motors.txt"
};
FileSource source_of(const std::vector<std::string>& files);

}  // namespace tavlo::cli
