#include "files/path_system.h"

#include "files/plain_lines.h"

namespace tavlo {

namespace {

UserFolders windows_folders(const Environment& environment) {
  const std::string drive = environment("HOMEDRIVE");
  const std::string path = environment("HOMEPATH");
  return {.settings = environment("APPDATA"),
          .temp = environment("TEMP"),
          .tmp = environment("TMP"),
          .documents = path.empty() ? std::string() : drive + path + "\\MYDOCU~1",
          .home = drive + "\\"};
}

/// A relative XDG_CONFIG_HOME counts as none, as its rules say.
UserFolders posix_folders(const Environment& environment) {
  const std::string home = environment("HOME");
  const std::string settings = environment("XDG_CONFIG_HOME");
  const auto at_home = [&](const char* name) { return home.empty() ? home : home + name; };
  return {.settings = settings.starts_with('/') ? settings : at_home("/.config"),
          .temp = environment("TMPDIR"),
          .tmp = "/tmp",
          .documents = at_home("/Documents"),
          .home = home + "/"};
}

}  // namespace

const PathSystem windows_paths = {.separator = '\\',
                                  .case_matters = false,
                                  .wants_folders = false,
                                  .makes_settings_folder = false,
                                  .normal_form = NormalFormWindows,
                                  .user_folders = windows_folders};

const PathSystem posix_paths = {.separator = '/',
                                .case_matters = true,
                                .wants_folders = true,
                                .makes_settings_folder = true,
                                .normal_form = NormalFormPosix,
                                .user_folders = posix_folders};

std::string PathSystem::join(const std::string& folder, const std::string& name) const {
  return folder.ends_with(separator) ? folder + name : folder + separator + name;
}

bool PathSystem::are_same(const std::string& left, const std::string& right) const {
  return case_matters ? left == right : lower_case(left) == lower_case(right);
}

}  // namespace tavlo
