#include "cli/set_work.h"

#include <algorithm>
#include <new>
#include <utility>

#include "cli/json_text.h"
#include "cli/output.h"
#include "cli/shown_text.h"
#include "numerics/run_time_error.h"
#include "project/fit_records.h"

namespace tavlo::cli {

namespace {

/// The rows of a data set that are in the analysis, and their ranks where it has its own.
void take_rows(const DataSet& from, SetWork& work) {
  const int modes = from.ModeNames.bound();
  for (std::size_t i = 0; i < from.rows.size(); ++i) {
    const SheetRow& row = from.rows[i];
    if (!row.has_point()) continue;
    const bool has_mode = row.mode >= 1 && row.mode <= modes;
    work.data.rows.push_back(
        {row.time, row.failures, row.suspensions, has_mode ? row.mode : std::int16_t{0}});
    if (from.own_ranks) work.own_ranks.push_back(row.rank);
  }
  work.data.mode_names.assign(from.ModeNames.begin() + 1, from.ModeNames.end());
}

RankKind ranks_of(const CommonArguments& common, const SetWork& work) {
  const bool is_project = work.kind == InputFile::Kind::project;
  return common.ranks.value_or(is_project ? work.origin->data(work.number).reading.ranks()
                                          : RankKind::benard);
}

void keep_own_ranks(const std::vector<float>& ranks, Sample& sample) {
  for (std::size_t i = 0; i < sample.size() && !ranks.empty(); ++i)
    sample.rank[i] = ranks[static_cast<std::size_t>(sample.entry[i]) - 1];
}

}  // namespace

bool asks_for_other_ranks(const CommonArguments& common, const Project& project) {
  const auto is_other = [&common](const DataSet& data) {
    return !data.rows.empty() && has_kinds_of_ranks(data) && data.reading.ranks() != *common.ranks;
  };
  return common.ranks && std::any_of(project.data.begin() + 1, project.data.end(), is_other);
}

std::string SetWork::title() const {
  return kind == InputFile::Kind::project ? origin->data(number).Title
                                          : "Data" + std::to_string(number);
}

void SetWork::rank(bool keep_rows) {
  if (fault) return;
  try {
    sample = make_sample(data.rows, ranks, static_cast<int>(data.mode_names.size()));
    keep_own_ranks(own_ranks, sample);
  } catch (const RunTimeError&) {
    fault = subject() + ": its rows can't be ranked";
  } catch (const std::bad_alloc&) {
    fault = subject() + ": there is not enough memory for so many rows";
  }
  if (!keep_rows) std::vector<SampleRow>().swap(data.rows);
}

void SetWork::answer(const FitQuestions& questions) {
  if (fault) return;
  FitQuestions of_set = questions;
  of_set.ranks = ranks;
  outcomes = fit_all(sample, of_set);
}

const DataSet& SetWork::data_set() {
  if (!origin) {
    Project project;
    project.data.push_back(fuStandardData());
    project.fits.push_back(fuStandard_Fit());
    fill_data_set(std::move(data), project.data(1));
    origin = std::make_shared<const Project>(std::move(project));
  }
  return origin->data(number);
}

std::string set_name(const SetWork& work, const std::vector<std::string>& titles) {
  const std::string& file = titles[work.file_number];
  if (work.sets() == 1) return file;
  if (work.kind == InputFile::Kind::foreign) return file + " " + std::to_string(work.number);
  const std::string own = shown_text(work.title());
  return titles.size() == 1 ? own : file + " " + own;
}

std::vector<SetWork> works_of(const CommonArguments& common, std::size_t file_number,
                              InputFile input) {
  SetWork each;
  each.file = common.files[file_number];
  each.file_number = file_number;
  each.kind = input.kind;
  const int sets = input.sets();
  if (input.kind == InputFile::Kind::text)
    each.data = std::move(input.rows);
  else
    each.origin = std::make_shared<const Project>(std::move(input.project));
  std::vector<SetWork> works;
  const bool is_one = common.set > 0;
  for (int i = is_one ? common.set : 1; i <= (is_one ? common.set : sets); ++i) {
    each.number = i;
    SetWork& work = works.emplace_back(i == sets ? std::move(each) : each);
    if (work.origin) take_rows(work.origin->data(i), work);
    work.ranks = ranks_of(common, work);
  }
  return works;
}

bool SetQueue::next(SetWork& work) {
  for (; next_ == works_.size(); ++files_) {
    if (files_ == common_.files.size()) return false;
    InputFile input;
    next_ = 0;
    works_.clear();
    auto fault = read_file(common_, common_.files[files_], input);
    if (!fault) {
      works_ = works_of(common_, files_, std::move(input));
      continue;
    }
    SetWork& faulty = works_.emplace_back();
    faulty.file = common_.files[files_];
    faulty.file_number = files_;
    faulty.fault = std::move(fault);
  }
  work = std::move(works_[next_++]);
  return true;
}

ExitCode tell_fault(const SetWork& work, bool json) {
  complain(*work.fault);
  if (json) print(error_line(work.file, *work.fault));
  return ExitCode::file_fault;
}

}  // namespace tavlo::cli
