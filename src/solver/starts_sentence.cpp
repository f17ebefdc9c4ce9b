#include "solver/starts_sentence.h"

#include "numerics/number_text.h"
#include "project/models.h"

namespace tavlo {
namespace {

std::string counts(const StartsReport& starts) {
  const std::string tried = std::to_string(starts.tried);
  return std::to_string(starts.agreed) + " of " + tried + " starts ended at this optimum";
}

std::string runner_up(const StartsReport& starts, bool likelihood) {
  if (!starts.has_runner_up) return "; no other was found.";
  return std::string("; the best other one has ") + (likelihood ? "Ln(L) " : "r^2 ") +
         number_text(starts.runner_up, 6) + ".";
}

}  // namespace

std::string starts_sentence(const FitResult& fit) {
  if (!fit.starts) return "";
  const StartsReport& starts = *fit.starts;
  if (!starts.interior_maximum)
    return "The likelihood has no maximum with a minimum life below the first time; "
           "compare with the regression.";
  if (starts.tried < 2) return "";
  std::string text = counts(starts) + runner_up(starts, fit.Method == method_code::mle);
  if (!starts.sound)
    text +=
        " The optimum lies where a population holds less than two failures or is a spike: "
        "the model has more parameters than the data support.";
  return text;
}

}  // namespace tavlo
