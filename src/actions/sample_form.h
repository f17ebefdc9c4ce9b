// SampleForm: what the window of samples holds, as it was typed: the model with its parameters,
// the seeds, the suspensions, and the runs of a planned test.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "analyses/planned_runs.h"
#include "project/rtf_table.h"
#include "project/session.h"

namespace tavlo {

/// A box for one number of a model.
struct ParameterBox {
  int index;  ///< of SampleForm::parameters
  const char* label;
  const char* value;    ///< that it begins with
  bool is_set = false;  ///< by each choice of the model, whatever was typed
};

/// A model that can be chosen for a sample, in the order of the options.
struct SampledModel {
  const char* caption;
  std::int16_t code;
  const char* log_name;
  std::span<const ParameterBox> boxes;
};
std::span<const SampledModel> sampled_models();

struct SampleForm {
  static constexpr std::size_t left = 0, points = 1, random = 2, right = 3;

  std::int16_t model = model_code::weibull4;
  std::int16_t method = method_code::x_on_y;  ///< of the panel that the sample is made for
  bool is_precise = false;
  std::string size;
  /// "tzero", and of population k (0, 1, 2) "u %" at 2 + 4k, "eta" at 3 + 4k, "beta" at 4 + 4k.
  std::array<std::string, 13> parameters;
  std::array<std::string, WichmannHill::streams> seeds;
  std::array<std::string, 4> suspensions;
  bool right_at_last_failure = false;
  std::string runs;   ///< empty is 1
  std::string group;  ///< empty is none
  std::vector<FitRequest> fits;
};

/// The plan of a form. Nothing, after a box, for what can't be sampled. A form whose model is
/// shown and not sampled gives a life without rows.
std::optional<RunPlan> plan_of(Session& session, const SampleForm& form);

/// Tells in a box why no sample is made.
void refuse_sample(Session& session, const std::string& why);

/// Enters the seeds into the generator. The texts become the numbers that were read.
void enter_seeds(Session& session, std::array<std::string, WichmannHill::streams>& seeds,
                 WichmannHill& random);

/// True for a seed that stays as it was typed: a number from 1 on.
bool is_seed(Session& session, const std::string& text);

/// The model with its parameters as typed, one row a population.
TableRows table_of(Session& session, const SampleForm& form);

}  // namespace tavlo
