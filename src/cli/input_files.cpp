#include "cli/input_files.h"

#include <unistd.h>

#include <utility>
#include <vector>

#include "cli/output.h"
#include "files/data_text.h"
#include "files/disk_files.h"
#include "files/foreign_old_data.h"
#include "files/foreign_quelplot.h"
#include "files/foreign_type.h"
#include "files/project_file.h"

namespace tavlo::cli {

namespace {

/// The name of a file doesn't tell what it is.
FileType type_of(std::string_view bytes) { return file_type(bytes, ""); }

StreamLimit limit_of(std::string_view start) {
  const FileType type = type_of(start);
  return {largest_file(type), type == FileType::project};
}

std::string words_of(const std::string& file, int error_number, const ReadFault& fault) {
  const std::string place = fault.line > 0 ? file + ":" + std::to_string(fault.line) : file;
  if (error_number == run_time::out_of_memory)
    return place + ": there is not enough memory for this file";
  return place + ": " + (fault.what.empty() ? run_time_description(error_number) : fault.what);
}

/// A project as a data file of another program is read into it.
Project empty_project() {
  Project project;
  project.data.push_back(fuStandardData());
  project.fits.push_back(fuStandard_Fit());
  project.charts.push_back(fuStandard_Chart());
  return project;
}

/// The data sets of all in one, whose titles are those of the first.
Project joined(std::vector<Project> parts) {
  Project project = std::move(parts.front());
  for (std::size_t i = 1; i < parts.size(); ++i) {
    project.data.push_back(std::move(parts[i].data(1)));
    project.fits.push_back(std::move(parts[i].fits(1)));
  }
  return project;
}

std::optional<NumberedFault> read_foreign_file(std::string_view bytes, FileType type,
                                               Project& project) {
  if (type == FileType::old_data) {
    project = empty_project();
    return read_old_data(bytes, project);
  }
  std::vector<Project> parts;
  auto fault = read_quelplot_sets(bytes, empty_project(), parts);
  if (!fault) project = joined(std::move(parts));
  return fault;
}

std::optional<std::string> read_text(const CommonArguments& common, const std::string& file,
                                     std::string_view bytes, DataRows& rows) {
  const auto fault = read_data_rows(bytes, common.reading, rows);
  if (!fault) {
    if (const std::string words = words_of_unused(rows); !words.empty()) warn(file, words);
    return std::nullopt;
  }
  return file + ":" + std::to_string(fault->line) + ": " + fault->what +
         (fault->comma_in_doubt ? "; say which: --decimal comma or --decimal point" : "");
}

std::optional<std::string> read_bytes(const CommonArguments& common, const std::string& file,
                                      std::string_view bytes, InputFile& input) {
  const FileType type = type_of(bytes);
  if (type == FileType::unknown) return read_text(common, file, bytes, input.rows);
  if (type != FileType::project) {
    input.kind = InputFile::Kind::foreign;
    const auto fault = read_foreign_file(bytes, type, input.project);
    return fault ? std::optional(words_of(file, fault->error_number, fault->fault)) : std::nullopt;
  }
  input.kind = InputFile::Kind::project;
  const auto fault = read_project(bytes, input.project);
  return fault ? std::optional(words_of(file, fault->error_number, fault->fault)) : std::nullopt;
}

}  // namespace

std::optional<std::string> read_file(const CommonArguments& common, const std::string& file,
                                     InputFile& input) {
  input = {};
  std::string bytes;
  const FileResult read =
      file == "-" ? read_stream(STDIN_FILENO, limit_of, bytes) : read_stream(file, limit_of, bytes);
  if (!read) return file + ": " + read.message;
  input.is_utf8 = bytes.starts_with("\xEF\xBB\xBF");
  if (auto fault = read_bytes(common, file, bytes, input)) return fault;
  if (common.set > input.sets())
    return file + ": there is no data set " + std::to_string(common.set) + ": the file holds " +
           (input.sets() == 1 ? "only one" : std::to_string(input.sets()));
  return std::nullopt;
}

}  // namespace tavlo::cli
