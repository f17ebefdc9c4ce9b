#include "files/path_test.h"

namespace tavlo {

namespace {

constexpr const char* probe_text = "This test file can be deleted\r\n";
constexpr int most_probes = 20;

/// The name of a probe file; where the first is taken, another is tried.
std::string probe_name(int attempt) {
  return "QMTempTestFile2011" + (attempt == 0 ? "" : "-" + std::to_string(attempt)) + ".txt";
}

bool can_make_files(const PathWorld& world, const std::string& folder) {
  for (int attempt = 0; attempt < most_probes; ++attempt) {
    const std::string probe = world.system.join(folder, probe_name(attempt));
    const FileResult made = world.files.try_out(probe, probe_text);
    if (made.fault != FileFault::exists_already) return static_cast<bool>(made);
  }
  return false;
}

}  // namespace

PathTest fn_PathTest(const PathWorld& world, std::string& path, bool skip) {
  path = world.system.normal_form(path, world.environment);
  FileFacts facts;
  if (path.empty() || skip || !world.files.look_up(path, facts)) return {};
  return {.exists = facts.is_folder || !world.system.wants_folders,
          .writable = facts.is_folder && can_make_files(world, path)};
}

}  // namespace tavlo
