#include "actions/mode_ranks.h"

#include <vector>

#include "actions/adjusted_rank.h"
#include "solver/mixture_functions.h"

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

}  // namespace

void rank_failure_modes(DataSet& data) {
  if (data.nModes < 1) return;
  DataPoint* rows = data.Points.data();
  ModeRanks ranks(data.nModes, rows[0].Fails + rows[0].Susps);
  for (int i = 1; i <= data.Count; ++i) {
    DataPoint& row = rows[i];
    if (row.Fails > 0 && row.Mode >= 1 && row.Mode <= data.nModes)
      row.YT[2] = fd_WblY(ranks.fail(row.Mode, row.Fails));
    // Only failures above 0 leave; a negative count, which nothing excludes, stays out.
    ranks.hold_back(row.Susps + (row.Fails > 0 ? row.Fails : 0.0));
    if (i < data.Count && rows[i + 1].X != row.X) ranks.move_on();
  }
}

}  // namespace tavlo
