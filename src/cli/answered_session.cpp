#include "cli/answered_session.h"

#include <utility>

#include "actions/reports.h"
#include "project/fit_records.h"
#include "project/ranking.h"

namespace tavlo::cli {

AnsweredSession::AnsweredSession(const std::string& subject, bool strict, RankKind ranks)
    : world_(strict, subject), session_(world_.ports()) {
  session_.settings.Benard = ranks == RankKind::benard;
}

void AnsweredSession::add(SetWork& work) {
  if (++sets_ > session_.project.data.bound()) {
    New_frm_Data(session_);
    New_frm_Fit(session_);
  }
  DataSet& data = session_.project.data(sets_);
  fill_data_set(std::move(work.data), data);
  Make_Ranks(session_.errors, session_.settings.Benard, data);
  for (const FitOutcome& outcome : work.outcomes) add(outcome);
}

void AnsweredSession::add(const FitOutcome& outcome) {
  const Fit* const fit = outcome.answer.fit();
  FitSet& fits = session_.project.fits(sets_);
  if (!fit || find_slot(fits, outcome.request) != 0) return;
  fits.Fits.push_back(record_of(outcome.request, *fit, outcome.answer.notes,
                                session_.project.data(sets_).revision));
  fits.nFits = fits.Fits.bound();
  PostFitLog(session_, fits.nFits, sets_, sets_);
}

}  // namespace tavlo::cli
