// Answered session: a session that holds the rows of data files and the answers that were
// found for them, for charts and logs, which read a session.
#pragma once

#include "cli/cli_ports.h"
#include "cli/set_work.h"
#include "project/session.h"

namespace tavlo::cli {

class AnsweredSession {
 public:
  /// `subject` is what the boxes are about, `ranks` those of the plotted points.
  AnsweredSession(const std::string& subject, bool strict, RankKind ranks);

  /// The rows of the file become the next data set, from 1, and every fit that was made the
  /// fit set of the same index. The log goes on with an entry for each fit.
  void add(SetWork& work);

  Session& session() { return session_; }

 private:
  void add(const FitOutcome& outcome);

  CliWorld world_;
  Session session_;
  int sets_ = 0;
};

}  // namespace tavlo::cli
