#include "fit/starts/start_comparison.h"

#include <algorithm>
#include <cmath>

#include "fit/parallel.h"

namespace tavlo {

bool are_alike(const MixturePoint& a, const MixturePoint& b, double near) {
  for (std::size_t i = 0; i < a.populations.size(); ++i)
    if (!(std::fabs(a.q[i] - b.q[i]) <= near)) return false;
  return true;
}

StartComparison::StartComparison(const MixtureRows& rows, Populations populations,
                                 std::size_t most_rows)
    : rows_(thinned(rows, most_rows)), objective_(make_objective(rows_, populations)) {}

void StartComparison::add(MixturePoint point) {
  order_risks(point);
  all_.push_back({point, 0});
}

void StartComparison::evaluate() {
  constexpr std::size_t block = 32;
  for_each_index((all_.size() + block - 1) / block, [&](std::size_t part) {
    const std::size_t end = std::min(all_.size(), (part + 1) * block);
    for (std::size_t i = part * block; i < end; ++i)
      all_[i].value = objective_->rough_value_at(all_[i].point.q);
  });
  std::erase_if(all_, [](const Candidate& candidate) { return !std::isfinite(candidate.value); });
}

template <class Alike>
std::vector<MixturePoint> StartComparison::best_unlike(std::size_t most, Alike&& alike) {
  evaluate();
  std::stable_sort(all_.begin(), all_.end(),
                   [](const Candidate& a, const Candidate& b) { return a.value < b.value; });
  std::vector<MixturePoint> chosen;
  for (const Candidate& candidate : all_) {
    if (chosen.size() >= most) break;
    const auto like = [&](const MixturePoint& other) { return alike(candidate.point, other); };
    if (std::none_of(chosen.begin(), chosen.end(), like)) chosen.push_back(candidate.point);
  }
  return chosen;
}

std::vector<MixturePoint> StartComparison::best(std::size_t most) {
  constexpr double near = 0.5;
  return best_unlike(
      most, [](const MixturePoint& a, const MixturePoint& b) { return are_alike(a, b, near); });
}

std::vector<MixturePoint> StartComparison::best_of_places(std::size_t most) {
  constexpr double near = 0.1;
  return best_unlike(most, [](const MixturePoint& a, const MixturePoint& b) {
    for (std::size_t i = 1; i < 2 * a.populations.count(); i += 2)
      if (!(std::fabs(a.q[i] - b.q[i]) <= near)) return false;
    return true;
  });
}

}  // namespace tavlo
