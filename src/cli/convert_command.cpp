#include "actions/export_data.h"
#include "cli/commands.h"
#include "cli/file_titles.h"
#include "cli/made_project.h"
#include "cli/output.h"
#include "files/data_notation.h"
#include "files/lost_in_export.h"
#include "files/separated_writer.h"

namespace tavlo::cli {

namespace {

ExitCode file_fault(const std::string& words) {
  complain(words);
  return ExitCode::file_fault;
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
  return text;
}

/// What the file that was written can't say.
void tell_lost(const std::string& out, const std::vector<std::string>& lost) {
  if (!lost.empty()) warn(out, "it can't hold " + joined(lost));
}

ExitCode write_data(const ConvertArguments& arguments, SetWork& work) {
  const std::string& out = arguments.out;
  const bool is_table = is_table_file_name(out);
  const DataSet& data = work.data_set();
  const std::string bytes = is_table ? write_separated_text(data) : write_notation(data);
  if (!holds_rows(bytes, is_table))
    return file_fault(work.subject() + ": there are no rows to write");
  if (const auto fault = write_keeping_former(out, bytes)) return file_fault(*fault);
  tell_lost(out, (is_table ? lost_in_separated_text : lost_in_notation)(*work.origin, work.number));
  return ExitCode::done;
}

/// Fits that another program made are made anew, as the window does when it opens its file.
void fit_anew(SetWork& work) {
  if (work.kind != InputFile::Kind::foreign) return;
  const FitSet& fits = work.origin->fits(work.number);
  for (int slot = 1; slot <= fits.nFits; ++slot) {
    const FitResult& fit = fits.Fits(slot);
    FitQuestions question;
    question.choices = {{find_model(fit.ModelCode), find_method(fit.request.method)}};
    question.slope = fit.request.slope;
    question.ranks = work.ranks;
    if (!question.choices.front().model || !question.choices.front().method) continue;
    for (FitOutcome& outcome : fit_all(work.sample, question))
      work.outcomes.push_back(std::move(outcome));
  }
  tell_messages(work.subject(), work.report({}));
}

ExitCode write_sets(const ConvertArguments& arguments, std::vector<SetWork> works) {
  const CommonArguments& common = arguments.common;
  MadeProject made(arguments.out, false);
  for (SetWork& work : works) {
    work.rank(true);
    if (work.fault) return file_fault(*work.fault);
    fit_anew(work);
    made.add(work, set_name(work, file_titles(common.files)));
  }
  if (const auto fault = made.write()) return file_fault(*fault);
  if (works.front().kind == InputFile::Kind::project)
    warn(arguments.out, "it has data set " + std::to_string(common.set) +
                            " and its fits, not the other sets, the charts and the log of " +
                            works.front().file);
  return ExitCode::done;
}

ExitCode write_whole_project(const ConvertArguments& arguments, const InputFile& input) {
  if (asks_for_other_ranks(arguments.common, input.project))
    warn(arguments.common.files.front(),
         "--ranks is not applied: the project is written as it was saved");
  const auto fault = write_project_file(arguments.out, input.project, input.is_utf8);
  return fault ? file_fault(*fault) : ExitCode::done;
}

}  // namespace

ExitCode run(const ConvertArguments& arguments) {
  const CommonArguments& common = arguments.common;
  InputFile input;
  if (const auto fault = read_file(common, common.files.front(), input)) return file_fault(*fault);
  const bool is_data = is_data_file_name(arguments.out);
  if (is_data && input.sets() > 1 && common.set == 0) {
    complain(common.files.front() + " holds " + std::to_string(input.sets()) + " data sets, and '" +
             arguments.out + "' can have one: say which with --set N");
    return ExitCode::wrong_usage;
  }
  const bool is_project = input.kind == InputFile::Kind::project;
  const bool is_whole = common.set == 0 || input.sets() == 1;
  if (!is_data && is_project && is_whole) return write_whole_project(arguments, input);
  std::vector<SetWork> works = works_of(common, 0, std::move(input));
  return is_data ? write_data(arguments, works.front()) : write_sets(arguments, std::move(works));
}

}  // namespace tavlo::cli
