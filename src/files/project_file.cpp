#include "files/project_file.h"

#include <algorithm>
#include <limits>
#include <new>
#include <set>
#include <utility>

#include "chart/scales/chart_view.h"
#include "files/chart_section.h"
#include "files/column_names.h"
#include "files/disk_files.h"
#include "files/fit_section.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

constexpr ProjectText::Place file_place = {"File Read/Write error: ", "RW_Project routine:"};

constexpr std::string_view magic_line = "Tavlo 1.5 alpha 01 Oct 2011";
constexpr std::string_view magic = "tavlo 1.5";

struct Numbers {
  std::int16_t charts = 1;
  std::int16_t data = 1;
  std::int16_t fits = 1;
};

// --- reading

std::int16_t at_least_one(ProjectReader& file, const char* of_what) {
  std::int16_t number = 0;
  file.value(number);
  if (number < 1)
    file.refuse(run_time::subscript, "Count out of range in file: " + std::to_string(number) + " " +
                                         of_what + ", where there must be 1 or more");
  return number;
}

Numbers read_head(ProjectReader& file) {
  file.skip_empty_lines();
  std::string line;
  file.text(line);
  if (!is_magic_line(line))
    file.refuse(run_time::type_mismatch,
                "a project begins with \"" + std::string(magic_line) + "\", this file does not");
  Numbers numbers;
  numbers.charts = at_least_one(file, "charts");
  numbers.data = at_least_one(file, "data sets");
  numbers.fits = at_least_one(file, "fit sets");
  return numbers;
}

/// True where the group of rich text with which the text begins ends in it.
bool has_whole_group(std::string_view rtf) {
  if (!rtf.starts_with("{\\rtf")) return false;
  int depth = 0;
  for (std::size_t i = 0; i < rtf.size(); ++i) {
    if (rtf[i] == '\\')
      ++i;  // with what it stands for
    else if (rtf[i] == '{')
      ++depth;
    else if (rtf[i] == '}' && --depth <= 0)
      return depth == 0;
  }
  return false;
}

/// Where the head counts less records than there are, the next one's first line passes for the
/// length of the log: the records behind it would be lost without a word.
void require_end(ProjectReader& file, std::string_view log) {
  file.skip_empty_lines();
  if (file.rest().empty() || has_whole_group(log)) return;
  file.refuse(run_time::type_mismatch,
              "this is no length of a log with which the file ends: more follows than the numbers "
              "of records say");
}

/// A program that changes line ends or letters on the file's way leaves the log with other bytes
/// than were counted. Its last brace shows that it is all that is left.
std::string_view read_log_text(ProjectReader& file, std::int64_t length) {
  if (length == 0) return {};
  const std::string_view rest = file.rest();
  const auto left = static_cast<std::int64_t>(rest.size());
  const bool is_miscounted =
      length > left ? length - left <= std::count(rest.begin(), rest.end(), '\n')
                    : !has_whole_group(rest.substr(0, static_cast<std::size_t>(length)));
  return file.raw(is_miscounted && has_whole_group(rest) ? left : length);
}

void read_log(ProjectReader& file, RichText& log) {
  std::int32_t length = 0;
  file.value(length);
  const std::string_view text = read_log_text(file, length);
  require_end(file, text);
  log = text.empty() ? RichText() : RichText::from_rtf(text);
}

void read_sections(ProjectReader& file, Project& project, UnstatedRanks& unstated) {
  const Numbers numbers = read_head(file);
  for (int i = 0; i <= numbers.charts; ++i) {
    Chart chart = fuStandard_Chart();
    read_chart_section(file, chart);
    if (i > 0)
      project.charts.push_back(std::move(chart));
    else
      project.charts(0) = std::move(chart);
  }
  for (int i = 1; i <= numbers.data; ++i) {
    project.data.push_back(fuStandardData());
    if (!RW_Data(file, project.data(i), unstated.kind) && project.data(i).rows.size() > 0)
      unstated.sets.push_back(project.data(i).Title);
  }
  for (int i = 1; i <= numbers.fits; ++i) {
    project.fits.push_back(fuStandard_Fit());
    RW_Fit(file, project.fits(i));
  }
  read_log(file, project.log);
}

// --- what a file may leave out or contradict

class Identities {
 public:
  /// Those that stand are nobody else's.
  template <class Records>
  explicit Identities(const Records& records) {
    for (int i = 1; i <= records.bound(); ++i) stand_.insert(records(i).UniqueId);
  }

  /// The identity, or another one where it is 0 or taken.
  std::int32_t unique(std::int32_t wanted) {
    if (wanted != 0 && taken_.insert(wanted).second) return wanted;
    while (stand_.count(next_) != 0 || !taken_.insert(next_).second) ++next_;
    return next_;
  }

 private:
  std::set<std::int32_t> stand_;
  std::set<std::int32_t> taken_;
  std::int32_t next_ = 1000;  // charts have small numbers of their own before they show fits
};

/// Every data set has fits at its place, and the reverse.
void complete(Project& project) {
  while (project.data.bound() < project.fits.bound()) {
    project.data.push_back(fuStandardData());
    project.data(project.data.bound()).Title = "Data" + std::to_string(project.data.bound());
  }
  while (project.fits.bound() < project.data.bound()) {
    project.fits.push_back(fuStandard_Fit());
    project.fits(project.fits.bound()).Title = "Fit" + std::to_string(project.fits.bound());
  }
}

/// Records of different kinds may share an identity: whoever names one says of what.
template <class Records>
void make_unique(Records& records) {
  Identities identities(records);
  for (int i = 1; i <= records.bound(); ++i)
    records(i).UniqueId = identities.unique(records(i).UniqueId);
}

/// Fits belong to the data set at their place, whichever one they name.
void tie(Project& project) {
  for (int i = 1; i <= project.fits.bound(); ++i) {
    FitSet& fits = project.fits(i);
    if (fits.nDataIds < 1) {
      fits.nDataIds = 1;
      fits.DataIds.resize(1);
    }
    fits.DataIds(1) = project.data(i).UniqueId;
    tie_fits(fits, project.data(i));
  }
}

// --- writing

/// Charts, and the parts of a project that no section has.
Numbers numbers_of(ProjectWriter& file, const Project& project) {
  const int most = std::numeric_limits<std::int16_t>::max();
  const int highest =
      std::max({project.charts.bound(), project.data.bound(), project.fits.bound()});
  if (highest > most)
    file.refuse(run_time::overflow, "a file holds no more than 32767 records of a kind");
  return {static_cast<std::int16_t>(project.charts.bound()),
          static_cast<std::int16_t>(project.data.bound()),
          static_cast<std::int16_t>(project.fits.bound())};
}

const DataSet& data_of(const Project& project, int fit_index) {
  return project.data(data_of_fits(project, fit_index));
}

bool are_fits_current(const Project& project, int data_index) {
  if (data_index > project.fits.bound()) return true;
  const FitSet& fits = project.fits(data_index);
  return std::none_of(fits.Fits.begin() + 1, fits.Fits.end(), [&](const FitResult& fit) {
    const DataSet& data = project.data(data_index);
    return is_out_of_date(fit, data);
  });
}

void write_log(ProjectWriter& file, const RichText& log) {
  const std::string text = log.rtf();
  if (text.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
    file.refuse(run_time::overflow, "the log is too long for the file");
  file.values(static_cast<std::int32_t>(text.size()));
  file.raw(text);
}

/// What can't be opened again must not take the place of what can.
void require_readable(ProjectWriter& file) {
  if (file.bytes().size() > largest_project_file)
    file.refuse(run_time::overflow, too_large(largest_project_file).message);
}

void write_sections(ProjectWriter& file, const Project& project, Ranking ranking) {
  const ProjectText::AtWork at_work(file, file_place);
  file.raw(magic_line);
  const Numbers numbers = numbers_of(file, project);
  file.values(numbers.charts, numbers.data, numbers.fits);
  for (Chart chart : project.charts) {
    end_zoom(chart);
    write_chart_section(file, chart);
  }
  for (int i = 1; i <= project.data.bound(); ++i)
    RW_Data(file, project.data(i), are_fits_current(project, i), ranking);
  for (int i = 1; i <= project.fits.bound(); ++i)
    RW_Fit(file, project.fits(i), data_of(project, i));
  write_log(file, project.log);
  require_readable(file);
}

ProjectFault fault_of(const ProjectText& file, int error_number) {
  const bool named = !file.fault().what.empty();
  return {error_number, file.fault(), named ? file.failed_at() : file_place};
}

}  // namespace

bool is_magic_line(std::string_view line) {
  return equal_in_any_case(line.substr(0, magic.size()), magic);
}

std::optional<ProjectFault> read_project(std::string_view bytes, Project& project,
                                         UnstatedRanks* unstated) {
  UnstatedRanks none;
  ProjectReader file(bytes);
  const ProjectText::AtWork at_work(file, file_place);
  try {
    Project read;
    read_sections(file, read, unstated ? *unstated : none);
    complete(read);
    make_unique(read.data);
    make_unique(read.fits);
    make_unique(read.charts);
    tie(read);
    project = std::move(read);
    return std::nullopt;
  } catch (const RunTimeError& error) {
    return fault_of(file, error.number());
  } catch (const std::bad_alloc&) {
    return fault_of(file, run_time::out_of_memory);
  }
}

std::optional<ProjectFault> write_project(const Project& project, ProjectBytes& written,
                                          Ranking ranking) {
  for (const auto encoding : {ProjectWriter::Encoding::ansi, ProjectWriter::Encoding::utf8}) {
    ProjectWriter file(encoding);
    try {
      write_sections(file, project, ranking);
    } catch (const RunTimeError& error) {
      return fault_of(file, error.number());
    } catch (const std::bad_alloc&) {
      return fault_of(file, run_time::out_of_memory);
    }
    if (!file.lost().empty()) continue;
    written = {file.take(), encoding == ProjectWriter::Encoding::utf8};
    return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace tavlo
