#include "solver/jacobians.h"

#include <gtest/gtest.h>

#include <functional>

#include "residual_world.h"

namespace tavlo {
namespace {

constexpr int rows = 131;  // two blocks and an odd rest

using Column = std::vector<double>;

double norm(const Column& column) {
  double sum = 0;
  for (const double value : column) sum += value * value;
  return std::sqrt(sum);
}

double cosine(const Column& a, const Column& b) {
  double sum = 0;
  for (std::size_t i = 0; i < a.size(); ++i) sum += a[i] * b[i];
  return sum / norm(a) / norm(b);
}

struct JacobiansTest : testing::Test, test::ResidualWorld {
  std::mt19937_64 random{17};

  Column jacobian_column(int j) {
    evaluate(data().M);  // X on Y: the Jacobian is taken at its model times
    evaluate(data().M, residual_request::jacobian);
    const double* column = fjac.column_data(j);
    return Column(column + 1, column + 1 + data().M);
  }

  /// Central differences of the residuals by slot j, extrapolated from two steps.
  Column difference_column(int j) {
    Column wide = differences(j, 2e-4), narrow = differences(j, 1e-4);
    for (std::size_t i = 0; i < wide.size(); ++i) narrow[i] += (narrow[i] - wide[i]) / 3;
    return narrow;
  }

  Column differences(int j, double relative_step) {
    double& x = X[static_cast<std::size_t>(j)];
    const double centre = x;
    const double h = relative_step * std::max(std::fabs(centre), 0.1);
    Column result(static_cast<std::size_t>(data().M));
    for (const double sign : {1.0, -1.0}) {
      x = centre + sign * h;
      evaluate(data().M);
      for (std::size_t i = 0; i < result.size(); ++i) result[i] += sign * fvec[i + 1] / (2 * h);
    }
    x = centre;
    return result;
  }

  /// Largest difference of a row, by the root mean square of the column.
  static double worst(const Column& a, const Column& b) {
    double largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i) largest = std::max(largest, std::fabs(a[i] - b[i]));
    return largest / (norm(b) / std::sqrt(static_cast<double>(b.size())) + 1e-12);
  }

  /// Whether no row lies in the bounds of the ordinate, nor has a positive log density.
  bool is_regular() {
    evaluate(data().M);
    const test::BookModel model{q(), data().K};
    for (int i = 1; i <= data().M; ++i) {
      const double x = data().Xs(i);
      if (data().Method == solver_method::mle
              ? model.log_density(x) > -1e-3 || model.risk(x) > 700 || model.risk(x) < 1e-9
              : model.risk(x) > 24 || model.risk(x) < 1e-9)
        return false;
    }
    return true;
  }

  void compare_with_differences(int K, int method, int trans_mode,
                                const std::function<bool(int)>& is_exact) {
    set_model(K, method, trans_mode);
    int compared = 0;
    for (int round = 0; round < 400 && compared < 25; ++round) {
      set_random_points(rows, random);
      if (method == solver_method::mle) suspend_every_third_row();
      set_random_parameters(random);
      if (!is_regular()) continue;
      ++compared;
      for (int j = 1; j <= K; ++j) {
        if (!is_exact(j)) continue;
        EXPECT_LT(worst(jacobian_column(j), difference_column(j)), 3e-7)
            << "K " << K << " method " << method << " mode " << trans_mode << " column " << j;
      }
    }
    EXPECT_EQ(compared, 25) << K << method;
  }
};

// The exceptions are approximations that are kept; tests of their own bound them.
TEST_F(JacobiansTest, columns_are_the_derivatives_of_the_residuals) {
  const auto every = [](int) { return true; };
  for (const int trans_mode : {1, 2}) {
    for (const int K : test::all_models) {
      const auto but_for_t0 = [K](int j) { return K != 3 || j != 3; };
      compare_with_differences(K, solver_method::y_on_x, trans_mode,
                               trans_mode == 1 ? std::function<bool(int)>(every) : but_for_t0);
      if (K <= 4) compare_with_differences(K, solver_method::x_on_y, trans_mode, but_for_t0);
      if (trans_mode == 1) compare_with_differences(K, solver_method::mle, trans_mode, every);
    }
  }
}

TEST_F(JacobiansTest, t0_column_of_x_on_y_is_taken_at_the_estimated_time) {
  set_model(3, solver_method::x_on_y);
  set_random_points(rows, random);
  set_random_parameters(random);
  evaluate(rows);
  const Column ours = jacobian_column(3), exact = difference_column(3);
  for (int i = 1; i <= rows; ++i) {
    const std::size_t row = static_cast<std::size_t>(i - 1);
    EXPECT_NEAR(ours[row] * (std::exp(data().Xhat(i)) - q().Extra), 1, 1e-9);
    EXPECT_NEAR(exact[row] * (std::exp(data().Xs(i)) - q().Extra), 1, 1e-3);
  }
}

TEST_F(JacobiansTest, t0_column_under_logarithms_is_t0_times_too_large) {
  for (const int method : {solver_method::x_on_y, solver_method::y_on_x}) {
    set_random_points(rows, random);
    set_model(3, method, 1);
    set_random_parameters(random);
    evaluate(rows);
    Column plain = jacobian_column(3);
    const double t0 = X[3];
    X = {0, std::log(X[1]), std::log(X[2]), t0};
    data().TransMode = 2;
    for (double& value : plain) value *= t0;
    EXPECT_LT(worst(jacobian_column(3), plain), 1e-12);
  }
}

/// R of the exclusive mixture that JacXonY differentiates for K = 5 and 7.
long double exclusive_reliability(const test::BookModel& model, long double x) {
  const long double p = model.q.Extra;
  return p * std::exp(-model.C(x)) + (1 - p) * std::exp(-model.A(x) - model.B(x));
}

// dx = -(dR/dslot) / (dR/dx), both by differences in long double.
double exclusive_derivative(test::BookModel model, double SolverParams::*slot, double x) {
  const auto reliability = [&](double change, long double at) {
    test::BookModel moved = model;
    moved.q.*slot += change;
    return exclusive_reliability(moved, at);
  };
  const double h = 1e-6 * model.q.*slot;
  const long double lower = model.q.*slot - h, upper = model.q.*slot + h;
  const long double by_slot =
      (reliability(h, x) - reliability(-h, x)) /
      (static_cast<long double>(static_cast<double>(upper)) - static_cast<double>(lower));
  const long double step = 1e-6L;
  const long double by_x = (reliability(0, x + step) - reliability(0, x - step)) / (2 * step);
  return static_cast<double>(-by_slot / by_x);
}

TEST_F(JacobiansTest, x_on_y_of_mixtures_differentiates_the_exclusive_form) {
  using Q = SolverParams;
  const std::vector<double Q::*> five{&Q::BetaA, &Q::EtaA, &Q::BetaC, &Q::EtaC, &Q::Extra};
  const std::vector<double Q::*> seven{&Q::BetaA, &Q::EtaA, &Q::BetaB, &Q::EtaB,
                                       &Q::BetaC, &Q::EtaC, &Q::Extra};
  for (const auto& slots : {five, seven}) {
    const int K = static_cast<int>(slots.size());
    set_model(K, solver_method::x_on_y);
    for (int round = 0; round < 10; ++round) {
      set_random_points(rows, random);
      set_random_parameters(random);
      if (!is_regular()) continue;
      evaluate(rows);
      for (int j = 1; j <= K; ++j) {
        const Column ours = jacobian_column(j);
        Column exclusive;
        for (int i = 1; i <= rows; ++i)
          exclusive.push_back(exclusive_derivative({q(), K}, slots[static_cast<std::size_t>(j - 1)],
                                                   data().Xhat(i)));
        EXPECT_LT(worst(ours, exclusive), 1e-5) << "K " << K << " column " << j;
      }
    }
  }
}

TEST_F(JacobiansTest, x_on_y_of_separated_populations_is_near_the_true_derivative) {
  for (const int K : {5, 7}) {
    set_model(K, solver_method::x_on_y);
    set_random_points(rows, random);
    X = K == 5 ? ParameterVector{0, 3, 2000, 1.5, 60, 0.3}
               : ParameterVector{0, 4, 2500, 1, 3000, 1.5, 40, 0.3};
    evaluate(rows);
    for (int j = 1; j <= K; ++j)
      EXPECT_GT(cosine(jacobian_column(j), difference_column(j)), 0.97) << K << " column " << j;
  }
}

TEST_F(JacobiansTest, closed_forms) {
  set_model(2, solver_method::y_on_x, 2);
  set_points({std::log(30), std::log(50), std::log(90)}, {-1, 0, 1});
  X = {0, std::log(2.5), std::log(50.0)};
  for (const double entry : jacobian_column(2)) EXPECT_DOUBLE_EQ(entry, -2.5);
  set_model(2, solver_method::mle);
  X = {0, 2.5, 50};
  const double root = std::sqrt(1 - std::log(2.5) + std::log(50));  // A = 1 in row 2
  EXPECT_NEAR(jacobian_column(1)[1], 0.5 / root / 2.5, 1e-15);
}

TEST_F(JacobiansTest, minimum_life_above_a_failure_moves_below_it) {
  set_model(3, solver_method::mle);
  set_points({std::log(10), std::log(20), std::log(40)}, {-1, 0, 1});
  X = {0, 2, 50, 15};
  evaluate(3, residual_request::jacobian);
  EXPECT_DOUBLE_EQ(X[3], 9.999);
  EXPECT_EQ(q().Extra, X[3]);
  // The row goes on with u = -5 in place of ln u.
  const double a = -5 - std::log(50), A = std::exp(2 * a);
  const double W = 0.5 / std::sqrt(A - 2 * a - std::log(2) - 5);
  EXPECT_NEAR(fjac(1, 1), (a * (1 - A) + 0.5) * W, 1e-14);
  EXPECT_NEAR(fjac(1, 3), (2 / -5.0 * (A - 1) + 1 / -5.0) * W, 1e-14);
  // The rows behind it are those of the minimum life moved.
  const double second = fjac(2, 3), third = fjac(3, 3);
  const Column moved = jacobian_column(3);
  EXPECT_EQ(second, moved[1]);
  EXPECT_EQ(third, moved[2]);
}

TEST_F(JacobiansTest, a_row_that_fails_is_left_without_a_box) {
  set_model(7, solver_method::x_on_y);
  set_points({0, 1, 2}, {-1, 0, 1});
  // Slopes of 0: no reliability changes with time.
  X = {0, 0, 10, 0, 10, 0, 10, 0.5};
  fjac = JacobianMatrix(3, 7);
  fjac(2, 5) = 4;
  evaluate(3, residual_request::jacobian);
  EXPECT_TRUE(world.prompts.shown().empty());
  EXPECT_EQ(fjac(2, 5), 4);
  set_model(6, solver_method::x_on_y);
  evaluate(3, residual_request::jacobian);
  EXPECT_EQ(fjac(2, 5), 4);
}

}  // namespace
}  // namespace tavlo
