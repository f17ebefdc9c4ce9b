// Path system: how a system writes its paths and where its people keep what, so that one
// search for the program's folders serves every system.
#pragma once

#include <string>

#include "files/path_form.h"

namespace tavlo {

/// Folders of the person who runs the program; empty where the environment names none.
struct UserFolders {
  std::string settings;   ///< for the settings of all programs
  std::string temp;       ///< for temporary files, the first choice
  std::string tmp;        ///< the second
  std::string documents;  ///< the last resort for temporary files
  std::string home;       ///< what a path is suggested to begin with
};

struct PathSystem {
  char separator;
  bool case_matters;
  /// Whether a path is there only if it is a folder; a plain file counts too otherwise.
  bool wants_folders;
  /// Whether the folder of all settings is made where it is missing, as the desktop's
  /// rules ask.
  bool makes_settings_folder;
  std::string (*normal_form)(std::string_view path, const Environment& environment);
  UserFolders (*user_folders)(const Environment& environment);

  /// `name` in `folder`.
  std::string join(const std::string& folder, const std::string& name) const;

  /// Whether two normal forms name the same place.
  bool are_same(const std::string& left, const std::string& right) const;
};

extern const PathSystem windows_paths;
extern const PathSystem posix_paths;

}  // namespace tavlo
