#include "cli/input_files.h"

#include <unistd.h>

#include "files/data_text.h"
#include "files/disk_files.h"

namespace tavlo::cli {

std::optional<std::string> read_rows(const CommonArguments& common, const std::string& file,
                                     DataRows& data) {
  std::string bytes;
  const FileResult read = file == "-" ? read_stream(STDIN_FILENO, largest_data_file, bytes)
                                      : read_stream(file, largest_data_file, bytes);
  if (!read) return file + ": " + read.message;
  const ReadOptions options{.negative_is_value = common.negative_is_value, .comments = false};
  if (const auto fault = read_data_rows(bytes, options, data))
    return file + ":" + std::to_string(fault->line) + ": " + fault->what;
  return std::nullopt;
}

}  // namespace tavlo::cli
