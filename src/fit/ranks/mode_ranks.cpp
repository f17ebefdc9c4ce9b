#include "fit/ranks/mode_ranks.h"

#include <cmath>
#include <vector>

#include "fit/ranks/adjusted_rank.h"
#include "numerics/infinity.h"

namespace tavlo {
namespace {

/// The rank of one mode. Its own failures leave the risk set at once, by whole
/// units; `departed` counts every row in full once X has moved on. `own` is
/// the difference of the two.
struct ModeRank {
  double rank = 0;
  double own = 0;
  double own_now = 0;  ///< failures at the present X, not yet among the departed
  int time = 0;        ///< the number of distinct X that `own_now` belongs to
};

/// All modes in one walk over the rows, however many modes there are.
class ModeRanks {
 public:
  ModeRanks(int modes, double units) : modes_(static_cast<std::size_t>(modes) + 1), units_(units) {}

  double fail(int mode, double fails) {
    ModeRank& state = modes_[static_cast<std::size_t>(mode)];
    settle(state);
    const double steps = whole_steps(fails);
    const double at_risk_and_one = units_ - departed_ + state.own + 1;
    if (steps >= 1) state.rank = rank_after(state.rank, steps, at_risk_and_one, units_ + 1);
    if (steps >= 1) state.own -= steps;
    state.own_now += fails;
    return benard_rank(state.rank, units_);
  }

  void hold_back(double units) { pending_ += units; }

  void move_on() {
    departed_ += pending_;
    pending_ = 0;
    ++time_;
  }

 private:
  void settle(ModeRank& state) const {
    if (state.time == time_) return;
    state.own += state.own_now;
    state.own_now = 0;
    state.time = time_;
  }

  std::vector<ModeRank> modes_;
  double units_;
  double departed_ = 0;
  double pending_ = 0;
  int time_ = 0;
};

double ordinate_of(double rank) {
  if (!(rank > 0)) return -infinity;
  return rank < 1 ? std::log(-std::log1p(-rank)) : infinity;
}

}  // namespace

void rank_failure_modes(Sample& sample) {
  const std::size_t rows = sample.mode.size();
  if (rows == 0) return;
  sample.mode_ordinate.assign(rows, 0.0);
  ModeRanks ranks(sample.modes, sample.total_failures + sample.total_suspensions);
  for (std::size_t i = 0; i < rows; ++i) {
    const int mode = sample.mode[i];
    if (sample.failures[i] > 0 && mode >= 1 && mode <= sample.modes)
      sample.mode_ordinate[i] = ordinate_of(ranks.fail(mode, sample.failures[i]));
    ranks.hold_back(sample.suspensions[i] + sample.failures[i]);
    if (i + 1 < rows && sample.time[i + 1] != sample.time[i]) ranks.move_on();
  }
}

}  // namespace tavlo
