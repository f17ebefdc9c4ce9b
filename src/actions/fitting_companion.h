// FittingCompanion: stands between a fit and the person at the windows. A doubt becomes
// a box that comes once in a run, a fault the box with Retry and Cancel.
#pragma once

#include "fit/companion.h"
#include "project/session.h"

namespace tavlo {

class FittingCompanion : public Companion {
 public:
  /// For one fit of the model. What the run remembers of its boxes is the session's.
  FittingCompanion(Session& session, const Model& model) : session_(session), model_(model) {}

  /// One turn of the event loop at most each 15 ms: the port sees to that.
  void turn() override { session_.ports.event_loop.yield(); }
  bool stop_wanted() override { return cancelled_ || session_.ports.progress.stop_wanted(); }

  /// No box for the run-time error of the last one within 5 seconds of its answer.
  bool fault(const char* where, const RunTimeError& error) override;
  bool doubt(Doubt code) override;

 private:
  bool accepts_few_failures();
  bool accepts_minimum_life();

  Session& session_;
  const Model& model_;
  bool cancelled_ = false;
};

}  // namespace tavlo
