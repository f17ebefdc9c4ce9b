// Random projects: whatever a window may hold, drawn from a seed: several sets with blank
// rows, modes, comments and lists, every model and method, charts with marks, a log.
#pragma once

#include "project/project.h"
#include "support/random_samples.h"

namespace tavlo::test {

struct ProjectKinds {
  bool beyond_code_page = false;  ///< text that only UTF-8 can hold
  /// What no file can hold as it is: cells that can't be read, line breaks in texts, numbers
  /// of more digits than the file's, fits that are infinite.
  bool unsaveable = false;
};

Project random_project(RandomNumbers& random, const ProjectKinds& kinds);

/// One set, one fit and one chart without boxes beyond those that a drawing needs.
Project small_project();

}  // namespace tavlo::test
