// The number of the run-time error that a statement raises.
#pragma once

#include "numerics/run_time_error.h"

namespace tavlo::test {

/// 0 without one.
template <class Statement>
int error_of(Statement statement) {
  try {
    statement();
  } catch (const RunTimeError& error) {
    return error.number();
  }
  return 0;
}

}  // namespace tavlo::test
