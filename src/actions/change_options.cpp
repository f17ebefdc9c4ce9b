#include "actions/change_options.h"

#include <algorithm>
#include <cmath>

#include "actions/reports.h"
#include "files/text_lines.h"
#include "numerics/number_text.h"
#include "numerics/rounding.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

constexpr double most_digits = 15;

/// Many ranks are the same by both kinds: those beside suspensions, and those of large sets.
bool changes_ranks(const DataSet& data, RankKind kind) {
  const DataReading& reading = data.reading;
  return data.is_read() && !data.own_ranks && reading.ranks() != kind &&
         reading.sample_with(kind).rank != reading.sample().rank;
}

void follow_ranks(Session& session) {
  const RankKind kind = session.settings.Benard ? RankKind::benard : RankKind::exact;
  for (int i = 1; i <= session.project.data.bound(); ++i) {
    DataSet& data = session.project.data(i);
    if (!changes_ranks(data, kind)) continue;
    mark_changed(data);
    session.step = "Ranks";
  }
}

}  // namespace

int digits_of(const std::string& typed, const NumberPunctuation& punctuation) {
  const std::string number_typed = with_decimal_point(typed, punctuation);
  const double number = parse_number(trimmed(number_typed)).value_or(0.0);
  return static_cast<int>(std::min(round_half_even(std::fabs(number)), most_digits));
}

void change_options(Session& session, const Settings& chosen) {
  const bool ranks_differ = chosen.Benard != session.settings.Benard;
  session.settings = chosen;
  if (ranks_differ) follow_ranks(session);
  const Project& project = session.project;
  for (int i = 1; i <= project.data.bound(); ++i) session.ports.views.sheet_changed(i);
  for (int i = 1; i <= project.fits.bound(); ++i) Load_Fit(session, i);
  for (int i = 1; i <= project.charts.bound(); ++i) session.ports.views.chart_changed(i);
}

}  // namespace tavlo
