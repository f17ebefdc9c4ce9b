#include <cmath>

#include "numerics/pack_math.h"
#include "solver/mixture_terms.h"
#include "solver/residuals.h"
#include "solver/rows.h"

namespace tavlo {
namespace {

constexpr const char* where = "in Y on X Function routine";

/// The ordinate of the model of K parameters on Weibull paper.
template <int K>
struct Ordinate {
  SolverParams q;

  template <class T>
  T operator()(T x) const {
    const Distances<T> d = distances<K>(q, x);
    Hazards<T> h;
    h.A = held(d.a * q.BetaA);
    if constexpr (has_b(K)) h.B = held(d.b * q.BetaB);
    if constexpr (has_c(K)) {
      h.C = held(d.c * q.BetaC);
      return normal_ln(bounded(smallest_risk, total_risk<K>(q, h), largest_risk));
    }
    return normal_ln(common_risk<K>(h));
  }

  template <class T>
  static T held(T exponent) {
    return exp_within(-exponent_limit, exponent, exponent_limit);
  }
};

template <>
struct Ordinate<2> {
  SolverParams q;

  template <class T>
  T operator()(T x) const {
    return (x - q.LnEtaA) * q.BetaA;
  }
};

template <>
struct Ordinate<3> {
  SolverParams q;

  template <class T>
  T operator()(T x) const {
    return (ln(exp(x) - q.Extra) - q.LnEtaA) * q.BetaA;
  }
};

/// One evaluation of the residual over rows.
template <int K>
class VerticalPass {
 public:
  VerticalPass(Solver& solver, double* fvec)
      : solver_(solver), fvec_(fvec), tame_(is_tame(solver.params)) {}

  void operator()(const RowBlock& block) {
    RowBlock::Values ordinates{};
    if (tame_ && is_tame(block)) {
      block.evaluate(formula_, ordinates);
      if (block.is_sound(ordinates)) return keep(block, ordinates);
    }
    for (int k = 0; k < block.count; ++k)
      step(solver_, where, [&] { keep_checked(block.row(k), block.x[RowBlock::at(k)]); });
  }

 private:
  void keep(const RowBlock& block, const RowBlock::Values& ordinates) {
    const double* Ys = solver_.data.Ys.data();
    double sum = 0;
    for (int k = 0; k < block.count; ++k) {
      const int i = block.row(k);
      fvec_[i] = ordinates[RowBlock::at(k)] - Ys[i];
      sum += fvec_[i] * fvec_[i];
    }
    solver_.params.SumSq += sum;
  }

  void keep_checked(int i, Real x) {
    SolverParams& q = solver_.params;
    if constexpr (K == 3) {
      if (exp(x) - q.Extra < 0) return restart_sum(i);
    }
    fvec_[i] = (formula_(x) - solver_.data.Ys(i)).value();
    q.SumSq = (Real(q.SumSq) + Real(fvec_[i]) * fvec_[i]).value();
  }

  // A time below t0 has no ordinate. That the sum starts anew is kept on purpose:
  // the quality then judges the rows behind t0 alone.
  void restart_sum(int i) {
    fvec_[i] = (-300 - Real(solver_.params.Extra)).value();
    solver_.params.SumSq = 0;
  }

  Solver& solver_;
  double* fvec_;
  Ordinate<K> formula_{solver_.params};
  bool tame_;
};

template <int K>
void vertical_rows(Solver& solver, int n, std::vector<double>& fvec) {
  const RowSelection rows = rows_of(n);
  step(solver, where, [&] {
    if (rows.last >= static_cast<int>(fvec.size()) || rows.last > solver.data.Ys.bound())
      throw RunTimeError(run_time::subscript);
    walk_blocks(solver, rows, solver.data.Xs, VerticalPass<K>(solver, fvec.data()));
  });
}

}  // namespace

void YonXFn(Solver& solver, int n, int K, ParameterVector&, std::vector<double>& fvec) {
  SolverParams& q = solver.params;
  switch (K) {
    case 2: return vertical_rows<2>(solver, n, fvec);
    case 3:
      step(solver, where, [&] { q.LnEtaA = ln(Real(q.EtaA)).value(); });
      return vertical_rows<3>(solver, n, fvec);
    case 4: return vertical_rows<4>(solver, n, fvec);
    case 5: return vertical_rows<5>(solver, n, fvec);
    case 7: return vertical_rows<7>(solver, n, fvec);
    default: return;
  }
}

}  // namespace tavlo
