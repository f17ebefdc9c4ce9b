#include "files/private_folder.h"

#include <sys/stat.h>
#include <unistd.h>

namespace tavlo {

namespace {

/// A link is not followed: it may lead to a folder that the person has for other things.
bool is_private_folder(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
         status.st_uid == ::geteuid() && (status.st_mode & 07777) == 0700;
}

bool have_private_folder(const std::string& path) {
  return ::mkdir(path.c_str(), 0700) == 0 || is_private_folder(path);
}

}  // namespace

std::string private_temp_folder(const std::string& session_folder, const std::string& temp) {
  constexpr int most_names = 10;
  if (session_folder.starts_with('/') && is_private_folder(session_folder))
    if (std::string folder = session_folder + "/tavlo"; have_private_folder(folder)) return folder;
  const std::string start =
      (temp.starts_with('/') ? temp : "/tmp") + "/tavlo-" + std::to_string(::geteuid());
  for (int attempt = 0; attempt < most_names; ++attempt)
    if (std::string folder = start + (attempt == 0 ? "" : "-" + std::to_string(attempt));
        have_private_folder(folder))
      return folder;
  return {};
}

}  // namespace tavlo
