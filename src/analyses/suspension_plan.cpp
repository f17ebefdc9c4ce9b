#include "analyses/suspension_plan.h"

#include <algorithm>
#include <utility>

#include "numerics/rounding.h"

namespace tavlo {

namespace {

/// Points are numbered from 1. Not every suspension lowers the number of failures that are
/// known to be left, and a point may be suspended twice: samples that are to be repeated depend
/// on both.
class Suspender {
 public:
  Suspender(std::int32_t size, bool by_likelihood)
      : size_(size), left_(size), by_likelihood_(by_likelihood) {
    result_.is_suspended.resize(static_cast<std::size_t>(size));
  }

  void left_tail(std::int32_t n) {
    if (n < 1 || left_ - n < 2) return;
    left_ -= n;
    for (std::int32_t k = 1; k <= n; ++k) suspend(k);
  }

  void by_number(const std::vector<std::int32_t>& points) {
    for (const std::int32_t k : points) {
      if (k < 1 || k > size_) continue;
      if (left_ < 2 || (left_ < 3 && !(by_likelihood_ && any_from(k)))) return;
      suspend(k);
    }
  }

  void right_tail(std::int32_t n, bool at_last_failure) {
    if (n < 1 || n >= left_ || (left_ - n < 2 && !by_likelihood_)) return;
    left_ -= n;
    for (std::int32_t k = size_ - n + 1; k <= size_; ++k) suspend(k);
    if (!at_last_failure) return;
    result_.is_suspended.resize(static_cast<std::size_t>(size_ - n + 1));
    result_.collapsed = n;
  }

  void by_chance(std::int32_t n, WichmannHill random, Entropy& chance) {
    const auto& s = random.states();
    random = WichmannHill({s[1] / 2 + 1, s[2] / 2 + 1, s[3] / 2 + 1, s[0] / 2 + 1});
    auto open = std::count(result_.is_suspended.begin(), result_.is_suspended.end(), false);
    auto draws = 1000 + 100 * std::int64_t{size_};
    while (n > 0 && open > 0 && draws-- > 0) {
      const double u = random.next(chance);
      const std::int32_t k = std::clamp(ToInt32(u * size_), 1, size_);
      if (is_suspended(k)) continue;
      if (left_ < 3) return last_by_chance(k, n);
      --left_;
      --n;
      --open;
      suspend(k);
    }
  }

  SuspendedPoints result() { return std::move(result_); }

 private:
  /// What a shortened sample has lost counts as suspended.
  bool is_suspended(std::int32_t k) const {
    return k > result_.size() || result_.is_suspended[static_cast<std::size_t>(k) - 1];
  }
  bool any_from(std::int32_t k) const {
    return std::find(result_.is_suspended.begin() + k - 1, result_.is_suspended.end(), true) !=
           result_.is_suspended.end();
  }
  void mark(std::int32_t k) {
    if (k <= result_.size()) result_.is_suspended[static_cast<std::size_t>(k) - 1] = true;
  }
  void suspend(std::int32_t k) {
    mark(k);
    ++result_.count;
  }

  /// A likelihood takes one failure; the last point then is a suspension.
  void last_by_chance(std::int32_t k, std::int32_t n) {
    if (left_ < 2 || !by_likelihood_) return;
    if (k == size_ || (n != size_ - 1 && is_suspended(size_))) {
      --left_;
      suspend(k);
    } else {
      mark(size_);
    }
  }

  std::int32_t size_;
  std::int32_t left_;  ///< failures
  bool by_likelihood_;
  SuspendedPoints result_;
};

}  // namespace

SuspendedPoints suspend(std::int32_t size, const SuspensionPlan& plan, bool by_likelihood,
                        const WichmannHill& random, Entropy& chance) {
  Suspender points(size, by_likelihood);
  points.left_tail(plan.left);
  points.by_number(plan.points);
  points.right_tail(plan.right, plan.right_at_last_failure);
  points.by_chance(plan.random, random, chance);
  return points.result();
}

}  // namespace tavlo
