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
  if (const auto fault = read_data_rows(bytes, common.reading, data))
    return file + ":" + std::to_string(fault->line) + ": " + fault->what +
           (fault->comma_in_doubt ? "; say which: --decimal comma or --decimal point" : "");
  return std::nullopt;
}

}  // namespace tavlo::cli
