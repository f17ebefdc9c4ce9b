// Answered session: a session that holds data sets and the answers that were found for them,
// for charts, logs and projects, which are made from a session.
#pragma once

#include "cli/cli_ports.h"
#include "cli/set_work.h"
#include "project/session.h"

namespace tavlo::cli {

class AnsweredSession {
 public:
  /// `subject` is what the boxes are about.
  AnsweredSession(const std::string& subject, bool strict);

  /// The data become the next data set, from 1, and every fit that was made one of the fit set
  /// of the same index.
  void add(SetWork& work) { add_answers(work, add_data(work)); }

  /// Adds the data alone; the index of their set.
  int add_data(SetWork& work);

  /// The fits become those of a set that the session has already, in place of those that
  /// answered the same. The set is ranked as the work is. The log goes on with an entry for each.
  void add_answers(const SetWork& work, int set);

  /// The day that its charts and documents are of, instead of today.
  void set_date(const DateTime& day) { world_.clock().stand_on(day); }

  Session& session() { return session_; }

 private:
  void keep(const FitOutcome& outcome, int set);

  CliWorld world_;
  Session session_;
  int sets_ = 0;
};

}  // namespace tavlo::cli
