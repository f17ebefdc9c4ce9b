#include "cli/input_files.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "actions/ranking.h"
#include "files/data_text.h"
#include "files/disk_files.h"

namespace tavlo::cli {

namespace {

FileResult read_standard_input(std::uint64_t limit, std::string& bytes) {
  constexpr std::size_t step = std::size_t{1} << 16;
  for (;;) {
    const std::size_t filled = bytes.size();
    bytes.resize(filled + step);
    const ssize_t got = ::read(STDIN_FILENO, bytes.data() + filled, step);
    bytes.resize(filled + (got > 0 ? static_cast<std::size_t>(got) : 0));
    if (got == 0) return {};
    if (got < 0 && errno != EINTR)
      return {FileFault::device_error, std::string("reading failed: ") + std::strerror(errno)};
    if (bytes.size() > limit) return too_large(limit);
  }
}

FileResult read_input(Session& session, const std::string& file, std::string& bytes) {
  return file == "-" ? read_standard_input(largest_data_file, bytes)
                     : session.ports.file_system.read_whole(file, largest_data_file, bytes);
}

}  // namespace

std::optional<std::string> load_data(Session& session, const CommonArguments& common,
                                     const std::string& file) {
  std::string bytes;
  if (const FileResult read = read_input(session, file, bytes); !read)
    return file + ": " + read.message;
  const ReadOptions options{common.negative_is_value};
  DataSet& data = session.gData(1);
  if (const auto fault = read_data_text(bytes, options, data))
    return file + ":" + std::to_string(fault->line) + ": " + fault->what;
  session.settings.Benard = common.benard;
  session.settings.NegativeSuspension = !common.negative_is_value;
  session.solver.data.CensoredLikelihood = common.censored;
  Make_Ranks(session.errors, common.benard, data);
  return std::nullopt;
}

}  // namespace tavlo::cli
