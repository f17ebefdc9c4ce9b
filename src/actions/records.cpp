#include "actions/records.h"

#include <algorithm>
#include <vector>

#include "actions/shown_fits.h"
#include "project/plot_rows.h"

namespace tavlo {

namespace {

constexpr std::size_t longest_title = 200;  // bytes

/// The name on one line without blanks around it, cut where no letter is.
std::string as_title(const std::string& typed) {
  std::string title;
  for (const char c : typed) title += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
  const auto first = title.find_first_not_of(' ');
  if (first == title.npos) return {};
  title = title.substr(first, title.find_last_not_of(' ') - first + 1);
  if (title.size() <= longest_title) return title;
  std::size_t end = longest_title;
  while (end > 0 && (static_cast<unsigned char>(title[end]) & 0xC0) == 0x80) --end;
  return title.substr(0, end);
}

template <class Record>
bool rename(Session& session, Slots<Record>& records, int index, const std::string& typed) {
  const std::string title = as_title(typed);
  if (title.empty() || index < 1 || index > records.bound()) return false;
  records(index).Title = title;
  session.step = "Rename";
  return true;
}

bool is_last_one(Session& session, int count, const char* words) {
  if (count > 1) return false;
  session.ports.views.status(words);
  return true;
}

/// The charts that follow a fit.
std::vector<int> charts_following(const Project& project, int fit_index, int slot) {
  std::vector<int> found;
  for (int i = 1; i <= project.charts.bound(); ++i) {
    const int row = following_row(project, project.charts(i), fit_index);
    if (row != 0 && project.charts(i).Markers(row).FitNumber == slot) found.push_back(i);
  }
  return found;
}

}  // namespace

bool rename_data(Session& session, int index, const std::string& title) {
  return rename(session, session.project.data, index, title);
}

bool rename_fits(Session& session, int index, const std::string& title) {
  return rename(session, session.project.fits, index, title);
}

bool delete_set(Session& session, int index) {
  Project& project = session.project;
  if (is_busy(session) || index < 1 || index > project.data.bound()) return false;
  if (is_last_one(session, project.data.bound(),
                  "The last data set stays; its rows can be deleted."))
    return false;
  for (int i = 1; i <= project.charts.bound(); ++i)
    forget_data(project.charts(i), project.data(index).UniqueId);
  project.data.erase(index);
  if (index <= project.fits.bound()) project.fits.erase(index);
  follow_records(session);
  session.step = "Delete Data/Fit";
  return true;
}

bool delete_chart(Session& session, int index) {
  Slots<Chart>& charts = session.project.charts;
  if (is_busy(session) || index < 1 || index > charts.bound()) return false;
  if (is_last_one(session, charts.bound(), "The last chart stays.")) return false;
  charts.erase(index);
  session.step = "Delete Chart";
  return true;
}

bool delete_fit(Session& session, int fit_index, int slot) {
  Project& project = session.project;
  FitSet& fits = project.fits(fit_index);
  if (is_busy(session) || slot < 1 || slot > std::min(fits.nFits, fits.Fits.bound())) return false;
  const std::vector<int> following = charts_following(project, fit_index, slot);
  for (int i = 1; i <= project.charts.bound(); ++i)
    forget_fit(project, project.charts(i), fit_index, slot);
  fits.Fits.erase(slot);
  --fits.nFits;
  // Where a chart followed the fit that has gone it follows the last one that is left.
  for (const int chart : following)
    if (fits.nFits > 0 && session.settings.ShowLast)
      follow_on_chart(project, project.charts(chart), fit_index, fits.nFits);
  session.step = "Delete Fit";
  return true;
}

}  // namespace tavlo
