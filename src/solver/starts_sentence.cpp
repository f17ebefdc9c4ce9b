#include "solver/starts_sentence.h"

#include "life/models.h"
#include "numerics/number_text.h"

namespace tavlo {
namespace {

std::string counts(const OldStartsReport& starts) {
  const std::string tried = std::to_string(starts.tried);
  return std::to_string(starts.agreed) + " of " + tried + " starts ended at this optimum";
}

std::string runner_up(const OldStartsReport& starts, bool likelihood) {
  if (!starts.has_runner_up) return "; no other that stands up was found.";
  return std::string("; the best other one has ") + (likelihood ? "Ln(L) " : "r^2 ") +
         number_text(starts.runner_up, 6) + ".";
}

}  // namespace

std::string starts_sentence(const FitResult& fit) {
  if (!fit.starts) return "";
  const OldStartsReport& starts = *fit.starts;
  if (!starts.interior_maximum)
    return "The likelihood has no maximum with a minimum life below the first time; "
           "compare with the regression.";
  if (starts.tried < 2) return "";
  return counts(starts) + runner_up(starts, fit.Method == method_code::mle);
}

}  // namespace tavlo
