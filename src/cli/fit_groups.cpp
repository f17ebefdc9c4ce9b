#include "cli/fit_groups.h"

#include <algorithm>
#include <new>
#include <numeric>
#include <thread>

#include "cli/fit_report.h"
#include "cli/input_files.h"
#include "cli/json_text.h"
#include "cli/ordered_work.h"
#include "cli/output.h"
#include "cli/progress_line.h"
#include "numerics/run_time_error.h"

namespace tavlo::cli {

namespace {

/// The rows of a table by their groups.
class Grouping {
 public:
  explicit Grouping(const DataRows& data) : ends_(data.groups.size() + 1), rows_(data.rows.size()) {
    for (const SampleRow& row : data.rows) ++ends_[end_of(row)];
    std::partial_sum(ends_.begin(), ends_.end(), ends_.begin());
    // Each end stands at its group's begin until the group is filled.
    for (std::uint32_t i = 0; i < rows_.size(); ++i)
      rows_[ends_[static_cast<std::size_t>(data.rows[i].group)]++] = i;
  }

  std::size_t groups() const { return ends_.size() - 1; }
  std::size_t begin(std::size_t group) const { return group == 0 ? 0 : ends_[group - 1]; }
  std::size_t end(std::size_t group) const { return ends_[group]; }
  std::uint32_t row(std::size_t place) const { return rows_[place]; }

 private:
  static std::size_t end_of(const SampleRow& row) {
    return static_cast<std::size_t>(row.group) + 1;
  }

  std::vector<std::size_t> ends_;
  std::vector<std::uint32_t> rows_;
};

/// What a group has to say on standard error.
struct GroupTold {
  std::string name;
  Sample sample;
  std::vector<FitOutcome> outcomes;
  std::string fault;
};

/// Some groups that follow each other, on their way.
struct GroupWork {
  std::size_t first = 0, last = 0;
  std::string answers;
  std::vector<GroupTold> told;
};

class FileOfGroups {
 public:
  FileOfGroups(const FitArguments& arguments, const std::string& file, const DataRows& data)
      : arguments_(arguments), file_(file), data_(data), grouping_(data) {}

  ExitCode run() {
    const std::size_t cores = std::max(1U, std::thread::hardware_concurrency());
    works_.resize(2 * cores);
    run_in_order(works_.size(), {.read = [this](std::size_t place) { return read(works_[place]); },
                                 .work = [this](std::size_t place) { answer(works_[place]); },
                                 .write = [this](std::size_t place) { write(works_[place]); }});
    return code_;
  }

 private:
  /// Enough rows that handing them on costs nothing, few enough for all cores to have some.
  bool read(GroupWork& work) {
    constexpr std::size_t rows_of_a_piece = 2000;
    work.first = work.last = next_;
    while (next_ < grouping_.groups() &&
           grouping_.end(next_) - grouping_.begin(work.first) < rows_of_a_piece)
      ++next_;
    if (next_ == work.first && next_ < grouping_.groups()) ++next_;
    work.last = next_;
    return work.first < work.last && output_stands();
  }

  void answer(GroupWork& work) const {
    work.answers.clear();
    work.told.clear();
    for (std::size_t group = work.first; group < work.last; ++group) answer_group(group, work);
  }

  /// Work that is shared between the cores must not throw.
  void answer_group(std::size_t group, GroupWork& work) const {
    const std::size_t start = work.answers.size();
    const auto refuse = [&](const char* what) {
      work.answers.resize(start);
      work.told.push_back({data_.groups[group], {}, {}, what});
      if (!arguments_.common.json) return;
      JsonText json(work.answers);
      open_object(json, group).key("error").string(what).close('}');
      work.answers += '\n';
    };
    try {
      fit_group(group, work);
    } catch (const RunTimeError&) {
      refuse("the rows can't be ranked");
    } catch (const std::bad_alloc&) {
      refuse("there is not enough memory for the group");
    }
  }

  JsonText& open_object(JsonText& json, std::size_t group) const {
    return json.open('{').key("file").string(file_).key("group").string(data_.groups[group]);
  }

  void fit_group(std::size_t group, GroupWork& work) const {
    std::vector<SampleRow> rows;
    rows.reserve(grouping_.end(group) - grouping_.begin(group));
    for (std::size_t i = grouping_.begin(group); i < grouping_.end(group); ++i)
      rows.push_back(data_.rows[grouping_.row(i)]);
    GroupTold told{data_.groups[group], {}, {}, {}};
    const FitQuestions& questions = arguments_.questions;
    told.sample = make_sample(rows, questions.ranks, static_cast<int>(data_.mode_names.size()));
    told.outcomes = fit_all(told.sample, questions);
    const FitReport report{told.sample, data_.mode_names, questions, told.outcomes};
    if (arguments_.common.json) {
      JsonText json(work.answers);
      add_fits(open_object(json, group), report);
      json.close('}');
      work.answers += '\n';
    } else {
      work.answers += (group > 0 ? "\n" : "") + fit_table(subject(told.name), report);
    }
    const bool has_doubts =
        std::any_of(told.outcomes.begin(), told.outcomes.end(),
                    [](const FitOutcome& each) { return !each.doubts.empty(); });
    if (has_doubts || !all_made(told.outcomes)) work.told.push_back(std::move(told));
  }

  std::string subject(const std::string& group) const {
    return file_ + ": " + (group.empty() ? "(" + arguments_.by + " is empty)" : group);
  }

  void write(GroupWork& work) {
    print(work.answers);
    count_progress("groups", grouping_.groups(), work.last - work.first);
    for (const GroupTold& told : work.told) {
      if (!told.fault.empty()) complain(subject(told.name) + ": " + told.fault);
      tell_messages(subject(told.name),
                    {told.sample, data_.mode_names, arguments_.questions, told.outcomes});
      if (!told.fault.empty() || !all_made(told.outcomes)) code_ = ExitCode::fit_refused;
    }
  }

  const FitArguments& arguments_;
  const std::string& file_;
  const DataRows& data_;
  const Grouping grouping_;
  std::vector<GroupWork> works_;
  std::size_t next_ = 0;
  ExitCode code_ = ExitCode::done;
};

/// Once for all groups: they are asked for the same.
void tell_suspensions_left_out(const FitArguments& arguments, const std::string& file,
                               const DataRows& data) {
  const bool has_suspensions = std::any_of(
      data.rows.begin(), data.rows.end(), [](const SampleRow& row) { return row.suspensions > 0; });
  Sample all;
  all.total_suspensions = has_suspensions ? 1 : 0;
  tell_suspensions_left_out(file, all, arguments.questions);
}

ExitCode fit_file(const FitArguments& arguments, const std::string& file) {
  InputFile input;
  auto fault = read_file(arguments.common, file, input);
  if (!fault && input.kind != InputFile::Kind::text)
    fault = file + ": --by takes a table with a line of headings";
  if (!fault && input.rows.groups.empty())
    fault = file + ": there is no line of headings that names the column " + arguments.by;
  if (fault) {
    complain(*fault);
    if (arguments.common.json) print(error_line(file, *fault));
    return ExitCode::file_fault;
  }
  tell_suspensions_left_out(arguments, file, input.rows);
  return FileOfGroups(arguments, file, input.rows).run();
}

}  // namespace

ExitCode fit_groups(const FitArguments& arguments) {
  ExitCode code = ExitCode::done;
  for (const std::string& file : arguments.common.files)
    if (output_stands()) code = worse(code, fit_file(arguments, file));
  return code;
}

}  // namespace tavlo::cli
