#include "actions/starts_sentence.h"

#include "numerics/number_text.h"

namespace tavlo {
namespace {

std::string runner_up(const StartsReport& starts, bool likelihood) {
  constexpr int digits = 6;
  if (!starts.runner_up) return "; no other that stands up was found.";
  return std::string("; the best other one has ") + (likelihood ? "Ln(L) " : "r^2 ") +
         number_text(*starts.runner_up, digits) + ".";
}

}  // namespace

std::string starts_sentence(const FitResult& fit) {
  if (!fit.starts || fit.starts->tried < 2) return "";
  if (fit.proof && fit.proof->kind == Proof::Kind::flat)
    return "No better optimum from " + std::to_string(fit.starts->tried) + " starts.";
  return std::to_string(fit.starts->agreed) + " of " + std::to_string(fit.starts->tried) +
         " starts ended at this optimum" + runner_up(*fit.starts, fit.Method == method_code::mle);
}

}  // namespace tavlo
