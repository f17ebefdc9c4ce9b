// Answered session: a session that holds the rows of one file and the answers that were
// found for them, for charts and logs, which read a session.
#pragma once

#include "cli/cli_ports.h"
#include "cli/fitting.h"
#include "files/point_list.h"
#include "project/session.h"

namespace tavlo::cli {

class AnsweredSession {
 public:
  /// Data set 1 holds the rows, fit set 1 every fit that was made. `log` goes on with an
  /// entry for each of them.
  AnsweredSession(const std::string& file, DataRows data, const FitQuestions& questions,
                  const std::vector<FitOutcome>& outcomes, RichText log);

  Session& session() { return session_; }

 private:
  void add(const FitOutcome& outcome);

  CliWorld world_;
  Session session_;
};

}  // namespace tavlo::cli
