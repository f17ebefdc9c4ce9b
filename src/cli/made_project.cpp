#include "cli/made_project.h"

#include "actions/new_project.h"
#include "actions/shown_fits.h"
#include "actions/work.h"
#include "cli/output.h"
#include "files/project_file.h"

namespace tavlo::cli {

MadeProject::MadeProject(const std::string& path, bool strict)
    : path_(path), answered_(path, strict) {
  session().project = begun_project(session());
  follow_records(session());
}

void MadeProject::go_on_with(const Project& project) {
  goes_on_ = true;
  session().project = project;
  follow_records(session());
}

void MadeProject::add(SetWork& work, const std::string& name) {
  const int set = goes_on_ ? work.number : answered_.add_data(work);
  if (!goes_on_) {
    const bool has_own_name = work.kind == InputFile::Kind::project;
    session().project.data(set).Title = has_own_name ? work.title() : name;
    take_fits(work, set);
    if (set == 1 && work.kind == InputFile::Kind::foreign) take_titles(*work.origin);
  }
  // A set that nothing is asked of stays as it was saved.
  if (work.kind != InputFile::Kind::project || !work.outcomes.empty())
    answered_.add_answers(work, set);
  const int last = session().project.fits(set).nFits;
  if (last > 0 && !(goes_on_ && work.outcomes.empty())) pick_fit(session(), set, last);
}

void MadeProject::take_fits(const SetWork& work, int set) {
  const FitSet& from = work.origin->fits(work.number);
  FitSet& fits = session().project.fits(set);
  fits.Fits = from.Fits;
  fits.nFits = from.nFits;
  if (work.kind == InputFile::Kind::project) fits.Title = from.Title;
}

void MadeProject::take_titles(const Project& from) {
  const Chart standard = fuStandard_Chart();
  Chart& chart = session().project.charts(1);
  for (const int item :
       {chart_item::main_title, chart_item::sub_title, chart_item::x_title, chart_item::y_title}) {
    const std::string& title = from.charts(1).Boxes(item).Text2;
    if (title != standard.Boxes(item).Text2) chart.Boxes(item).Text2 = title;
  }
}

std::optional<std::string> MadeProject::write() {
  show_file_name(session().project, "", path_);
  return write_project_file(path_, session().project, false);
}

std::optional<std::string> write_keeping_former(const std::string& path, std::string_view bytes) {
  const FileResult done = SafeFiles().write_keeping_former(path, bytes);
  return done ? std::nullopt : std::optional(path + ": " + done.message);
}

std::optional<std::string> write_project_file(const std::string& path, const Project& project,
                                              bool was_utf8) {
  ProjectBytes written;
  if (const auto fault = write_project(project, written))
    return path + ": " +
           (fault->fault.what.empty() ? run_time_description(fault->error_number)
                                      : fault->fault.what);
  if (auto fault_of_file = write_keeping_former(path, written.bytes)) return fault_of_file;
  if (written.is_utf8 && !was_utf8) warn(path, utf8_words);
  return std::nullopt;
}

}  // namespace tavlo::cli
