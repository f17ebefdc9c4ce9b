// ReporterTest: a test of routines that report what they can't do.
#pragma once

#include <gtest/gtest.h>

#include "support/test_world.h"

namespace tavlo::test {

struct ReporterTest : ::testing::Test {
  ScriptedPrompts prompts;
  TestClock clock;
  ErrorReporter reporter{prompts, clock};
};

}  // namespace tavlo::test
