#include "cli/answered_session.h"

#include <algorithm>
#include <utility>

#include "actions/reports.h"
#include "project/fit_records.h"

namespace tavlo::cli {

namespace {

/// Other ranks make the fits that are there out of date.
void rank(DataSet& data, RankKind ranks) {
  if (data.is_read() && !data.own_ranks && data.reading.ranks() != ranks) mark_changed(data);
  data.reading = DataReading(data.rows, ranks, data.own_ranks, data.ModeNames.bound());
  data.read_revision = data.revision;
}

}  // namespace

AnsweredSession::AnsweredSession(const std::string& subject, bool strict)
    : world_(strict, subject), session_(world_.ports()) {}

int AnsweredSession::add_data(SetWork& work) {
  if (++sets_ > session_.project.data.bound()) {
    New_frm_Data(session_);
    New_frm_Fit(session_);
  }
  DataSet& data = session_.project.data(sets_);
  DataSet from = work.data_set();
  from.UniqueId = data.UniqueId;
  from.Title = data.Title;
  data = std::move(from);
  return sets_;
}

void AnsweredSession::add_answers(const SetWork& work, int set) {
  rank(session_.project.data(set), work.ranks);
  const std::vector<FitOutcome>& outcomes = work.outcomes;
  for (auto outcome = outcomes.begin(); outcome != outcomes.end(); ++outcome) {
    const auto is_same = [&](const FitOutcome& other) { return other.request == outcome->request; };
    if (std::none_of(outcomes.begin(), outcome, is_same)) keep(*outcome, set);
  }
}

void AnsweredSession::keep(const FitOutcome& outcome, int set) {
  const Fit* const fit = outcome.answer.fit();
  if (!fit) return;
  FitSet& fits = session_.project.fits(set);
  int slot = find_slot(fits, outcome.request);
  if (slot == 0) {
    fits.Fits.push_back({});
    slot = fits.nFits = fits.Fits.bound();
  }
  fits.Fits(slot) =
      record_of(outcome.request, *fit, outcome.answer.notes, session_.project.data(set).revision);
  PostFitLog(session_, slot, set, set);
}

}  // namespace tavlo::cli
