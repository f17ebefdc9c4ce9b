#include "actions/starts_words.h"

#include "numerics/number_text.h"

namespace tavlo {
namespace {

std::string runner_up(const StartsReport& starts, bool likelihood) {
  constexpr int digits = 6;
  if (!starts.runner_up) return "; no other that stands up was found";
  const double quality = *starts.runner_up;
  return "; the best other one has " + (likelihood ? "ln L " + format_number(quality, "0.00")
                                                   : "r squared " + number_text(quality, digits));
}

}  // namespace

std::string starts_words(const StartsReport& starts, const std::optional<Proof>& proof,
                         bool likelihood) {
  const std::string tried = std::to_string(starts.tried);
  if (starts.tried < 1) return "too few failures for a search of other populations";
  if (proof && proof->kind == Proof::Kind::flat)
    return "no better optimum from " + tried + (starts.tried == 1 ? " start" : " starts");
  return std::to_string(starts.agreed) + " of " + tried + " starts ended at this optimum" +
         runner_up(starts, likelihood);
}

}  // namespace tavlo
