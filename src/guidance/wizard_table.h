// Wizard table: the flow chart that leads to a life model, a method or a kind of confidence
// bounds, as data. Steps bear the numbers of the drawn chart, whose texts are kept as they are.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "life/models.h"

namespace tavlo {

/// An answer leads to `next`, or to `next_below` with fewer failures than class `below`.
struct WizardAnswer {
  const char* text = "";
  int next = 0;
  int below = 0;  ///< 0: failures don't matter
  int next_below = 0;
};

/// A model of this program that a step names; its method where the step names that too.
struct WizardAdvice {
  std::int16_t model = 0;
  std::optional<std::int16_t> method;
};

/// An action has a check button, which leads on once the person has done what it says. A jump
/// goes on at once.
enum class StepKind { question, end, action, jump };

struct WizardStep {
  int number = 0;
  StepKind kind = StepKind::question;
  const char* frame = "";  ///< text of the frame around the answers
  const char* text = "";   ///< below the frame; lines
  std::vector<WizardAnswer> answers = {};
  int after_check = 0;
  std::optional<WizardAdvice> advice = {};
  const char* lacks = "";  ///< what the step names and the program has not got
};

/// Null for numbers that the chart has no step for.
const WizardStep* find_wizard_step(int number);

/// All, in ascending order.
std::span<const WizardStep> wizard_steps();

}  // namespace tavlo
