#include "files/replace_keeping_former.h"

namespace tavlo {

FileResult replace_keeping_former(FileSystem& files, const std::string& path,
                                  std::string_view bytes) {
  const FileResult kept = files.back_up(path);
  return kept ? files.write_whole(path, bytes) : kept;
}

}  // namespace tavlo
