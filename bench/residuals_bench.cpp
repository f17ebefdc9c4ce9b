// One pass of the solver over its rows: residuals and Jacobian of each model and
// method. A fit makes some hundreds of them.
#include <benchmark/benchmark.h>

#include <cmath>

#include "solver/residuals.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

ParameterVector usual_parameters(int K) {
  switch (K) {
    case 4: return {0, 3, 1500, 0.9, 900};
    case 5: return {0, 3, 1500, 1.2, 60, 0.2};
    case 7: return {0, 3, 1500, 0.9, 4000, 1.2, 60, 0.2};
    default: return {0, 1.8, 900, 0.001};
  }
}

/// n failures on the curve of a bathtub near the parameters above, with their
/// median ranks.
void load_points(Solver& solver, int n, int K, int method) {
  SolverData& data = solver.data;
  data.Xs = data.Ys = data.Xhat = Slots<double>(n);
  data.N = data.M = n;
  data.K = K;
  data.Method = method;
  for (int i = 1; i <= n; ++i) {
    const double y = std::log(-std::log(1 - (i - 0.3) / (n + 0.4)));
    data.Ys(i) = y;
    data.Xs(i) = 6.8 + (y > 0 ? y / 3 : y / 1.2) + 0.05 * std::sin(0.7 * i);
  }
  solver.params.InvSpreadA = solver.params.InvSpreadB = 1.0 / n;
}

void pass(benchmark::State& state, int request) {
  const int K = static_cast<int>(state.range(0));
  const int method = static_cast<int>(state.range(1));
  const int n = static_cast<int>(state.range(2));
  test::TestWorld world;
  world.prompts.accept_all();
  Session& session = world.session;
  Solver solver{session.solver, session.errors, world.prompts, world.event_loop, world.clock};
  load_points(solver, n, K, method);
  ParameterVector X = usual_parameters(K);
  std::vector<double> fvec(static_cast<std::size_t>(n) + 1);
  JacobianMatrix fjac(n, K);
  int iflag = residual_request::residuals;
  ResidualFn(solver, n, K, X, fvec, fjac, iflag);
  for (auto _ : state) {
    iflag = request;
    ResidualFn(solver, n, K, X, fvec, fjac, iflag);
    benchmark::DoNotOptimize(X[0]);
  }
  if (!world.prompts.shown().empty()) state.SkipWithError("a box was shown");
  state.SetItemsProcessed(state.iterations() * n);
}

void every_model_and_method(benchmark::internal::Benchmark* bench) {
  bench->ArgNames({"K", "method", "n"})->Unit(benchmark::kMillisecond);
  for (const int n : {10'000, 1'000'000})
    for (const int method : {solver_method::x_on_y, solver_method::mle, solver_method::y_on_x})
      for (const int K : {2, 3, 4, 5, 7}) bench->Args({K, method, n});
}
BENCHMARK_CAPTURE(pass, residuals, residual_request::residuals)->Apply(every_model_and_method);
BENCHMARK_CAPTURE(pass, jacobian, residual_request::jacobian)->Apply(every_model_and_method);

}  // namespace
}  // namespace tavlo
