// Language file: captions of the main window in another language, one a line.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ports/file_system.h"

namespace tavlo {

/// The captions 1 to 58; all are empty where no file "VKLnn*.txt" with the number of the
/// language stands in the folder. The case of its name does not count. A file that ends
/// early, or can't be read, leaves the rest empty. Captions end at 200 characters.
std::vector<std::string> LoadLanguage(FileSystem& files, const std::string& folder,
                                      std::int32_t language);

/// A language that can be chosen.
struct Language {
  std::int32_t number = 0;
  std::string file;  ///< its name without ".txt"
};

/// The languages whose files stand in the folder, in the order of their numbers; of two
/// files with one number the one that is read.
std::vector<Language> find_languages(FileSystem& files, const std::string& folder);

}  // namespace tavlo
