// Companion: what a long calculation asks of the world, and no more. Called from the
// thread that called the calculation, never inside parallel work.
#pragma once

#include "numerics/run_time_error.h"

namespace tavlo {

/// What a person is asked before a fit goes on.
enum class Doubt { few_failures, minimum_life_by_likelihood };

class Companion {
 public:
  virtual ~Companion() = default;

  /// Lets the world breathe; costs next to nothing.
  virtual void turn() {}

  /// True once the person wants the calculation to end.
  virtual bool stop_wanted() { return false; }

  /// A statement at `where` has failed; true to go on with the next.
  virtual bool fault(const char* /*where*/, const RunTimeError& /*error*/) { return true; }

  /// True to go on.
  virtual bool doubt(Doubt /*code*/) { return true; }
};

}  // namespace tavlo
