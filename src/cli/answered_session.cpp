#include "cli/answered_session.h"

#include <utility>

#include "actions/reports.h"
#include "project/fit_records.h"
#include "project/ranking.h"

namespace tavlo::cli {

AnsweredSession::AnsweredSession(const std::string& file, DataRows data,
                                 const FitQuestions& questions,
                                 const std::vector<FitOutcome>& outcomes, RichText log)
    : world_(questions.strict, file), session_(world_.ports()) {
  const bool benard = questions.ranks == RankKind::benard;
  session_.project.log = std::move(log);
  session_.settings.Benard = benard;
  fill_data_set(std::move(data), session_.project.data(1));
  Make_Ranks(session_.errors, benard, session_.project.data(1));
  for (const FitOutcome& outcome : outcomes) add(outcome);
}

void AnsweredSession::add(const FitOutcome& outcome) {
  const Fit* const fit = outcome.answer.fit();
  FitSet& fits = session_.project.fits(1);
  if (!fit || find_slot(fits, outcome.request) != 0) return;
  fits.Fits.push_back(
      record_of(outcome.request, *fit, outcome.answer.notes, session_.project.data(1).revision));
  fits.nFits = fits.Fits.bound();
  PostFitLog(session_, fits.nFits, 1, 1);
}

}  // namespace tavlo::cli
