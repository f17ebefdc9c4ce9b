// Cost of the minimiser's linear algebra and of the search for a minimum life.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <vector>

#include "solver/minimum_life.h"
#include "solver/qr_factorization.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

struct BenchSolver {
  test::TestWorld world;
  Solver solver{world.session.solver, world.session.errors, world.prompts, world.event_loop,
                world.clock};
};

JacobianMatrix random_matrix(int rows, int columns) {
  std::mt19937_64 random(1);
  std::normal_distribution<double> value;
  JacobianMatrix matrix(rows, columns);
  for (int j = 1; j <= columns; ++j)
    for (int i = 1; i <= rows; ++i) matrix(i, j) = value(random);
  return matrix;
}

/// Rows by 7 columns. The copy that each turn starts from is part of the time.
void qr_factorization(benchmark::State& state) {
  BenchSolver bench;
  const int rows = static_cast<int>(state.range(0));
  const JacobianMatrix matrix = random_matrix(rows, 7);
  JacobianMatrix work = matrix;
  PivotList pivots{};
  VariableVector diagonal{}, norms{};
  for (auto _ : state) {
    work = matrix;
    benchmark::DoNotOptimize(QRFAC(bench.solver, rows, 7, work, pivots, diagonal, norms));
  }
}

/// The copy of qr_factorization alone: what memory allows for 7 columns read and
/// 7 written.
void matrix_copy(benchmark::State& state) {
  const JacobianMatrix matrix = random_matrix(static_cast<int>(state.range(0)), 7);
  JacobianMatrix work = matrix;
  for (auto _ : state) {
    work = matrix;
    benchmark::DoNotOptimize(work.column_data(1));
    benchmark::ClobberMemory();
  }
}

RegressBlock weibull_block(int rows) {
  std::mt19937_64 random(2);
  std::weibull_distribution<double> life(1.7, 1000);
  RegressBlock block;
  block.N = block.Rows = rows;
  block.Weight = Slots<std::int32_t>(rows, 1);
  block.T = block.LnT = block.F = block.Y = Slots<double>(rows);
  for (int i = 1; i <= rows; ++i) {
    block.T(i) = 300 + life(random);
    block.F(i) = (i - 0.3) / (rows + 0.4);
  }
  std::sort(block.T.begin() + 1, block.T.end());
  return block;
}

void minimum_life(benchmark::State& state) {
  BenchSolver bench;
  RegressBlock block = weibull_block(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    T0Trial trial{};
    Findto(bench.solver, block, trial, t0_kind::x_on_y);
    benchmark::DoNotOptimize(trial);
  }
}

BENCHMARK(qr_factorization)->Arg(100)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(matrix_copy)->Arg(1000000)->Unit(benchmark::kMicrosecond);
BENCHMARK(minimum_life)->Arg(100)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tavlo
