#include "solver/fit_line.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "solver/fit_world.h"
#include "solver/mixture_functions.h"

namespace tavlo {
namespace {

using test::all_methods;
using test::FitWorld;
using test::mixture_of;
using test::mixtures;
using test::random_sample;
using test::relative_difference;
using test::TrueMixture;
using test::usual_mixture;

DataSet data_at(const std::vector<double>& times) {
  std::vector<test::Point> points;
  for (const double time : times) points.push_back({.x = time});
  DataSet data = test::make_data(points);
  for (int i = 1; i <= data.Count; ++i)
    data.Points(i).Y = static_cast<float>((i - 0.3) / (data.Count + 0.4));
  data.Points(0).Fails = data.Count;
  return data;
}

DataSet scaled(DataSet data, double factor) {
  for (int i = 1; i <= data.Count; ++i)
    data.Points(i).X = static_cast<float>(static_cast<double>(data.Points(i).X) * factor);
  return data;
}

void expect_equal_mixtures(const TrueMixture& a, const TrueMixture& b, double tolerance) {
  const double first[] = {a.beta_a, a.eta_a, a.beta_b, a.eta_b, a.beta_c, a.eta_c, a.share};
  const double second[] = {b.beta_a, b.eta_a, b.beta_b, b.eta_b, b.beta_c, b.eta_c, b.share};
  for (int i = 0; i < 7; ++i) {
    const auto slot = static_cast<std::size_t>(i);
    EXPECT_LE(relative_difference(first[slot], second[slot]), tolerance)
        << "parameter " << i << ": " << first[slot] << " and " << second[slot];
  }
}

/// A and B of W7P play the same part; the steeper one stands first.
TrueMixture steeper_first(TrueMixture mixture) {
  if (mixture.K != 5 && mixture.beta_b > mixture.beta_a) {
    std::swap(mixture.beta_a, mixture.beta_b);
    std::swap(mixture.eta_a, mixture.eta_b);
  }
  return mixture;
}

TEST(FitLine, RegressionRecoversTheTruthFromPointsOnItsCurve) {
  for (const std::int16_t model : mixtures)
    for (const std::int16_t method : {method_code::x_on_y, method_code::y_on_x}) {
      SCOPED_TRACE(fs_ModelNames(model, method).short_name);
      FitWorld world(precise_sample(usual_mixture(model), 150));
      const FitResult fit = world.fit(model, method);
      ASSERT_EQ(fit.Status, FitStatus::calculated);
      EXPECT_GT(fit.Quality, 1 - 1e-9);
      expect_equal_mixtures(steeper_first(mixture_of(fit)), usual_mixture(model), 2e-3);
    }
}

TEST(FitLine, LikelihoodIsThatOfTheStoredFitAndNotBelowTheTruth) {
  for (const std::int16_t model : mixtures) {
    SCOPED_TRACE(model);
    const DataSet data = random_sample(usual_mixture(model), {.n = 120, .seed = 5});
    FitWorld world(data);
    world.prompts.accept_all();
    const FitResult fit = world.fit(model, method_code::mle);
    ASSERT_EQ(fit.Status, FitStatus::calculated);
    double stored = 0, truth = 0;
    for (int i = 1; i <= data.Count; ++i) {
      const double t = static_cast<double>(data.Points(i).X);
      const double h = 1e-5 * t;
      const double rise =
          Fd_YofX(world.session.errors, fit, t + h) - Fd_YofX(world.session.errors, fit, t - h);
      stored += std::log(rise / (2 * h));
      truth += std::log(usual_mixture(model).density(t));
    }
    EXPECT_NEAR(fit.Quality, stored, 1e-3);
    EXPECT_GE(fit.Quality, truth);
  }
}

TEST(FitLine, RowsStandAsStoredFitsDo) {
  struct Layout {
    std::int16_t model;
    std::vector<std::int32_t> applies;
    std::vector<bool> has_fraction;
    const char* label;
  };
  const Layout layouts[] = {
      {model_code::weibull2, {1}, {true}, "W/rr 2 Par"},
      {model_code::weibull3, {1}, {true}, "W3T/rr 3 Par"},
      {model_code::weibull4, {1, 1}, {true, false}, "W4P/rr 4 Par"},
      {model_code::weibull5c, {1, 3}, {true, true}, "W5C/rr 5c "},
      {model_code::weibull7, {1, 3, 3}, {true, true, false}, "W7P/rr 7 Par"},
  };
  for (const Layout& layout : layouts) {
    SCOPED_TRACE(layout.label);
    FitWorld world(random_sample(usual_mixture(model_code::weibull7), {.n = 100, .seed = 3}));
    world.prompts.accept_all();
    world.fit(layout.model, method_code::x_on_y);
    const FitResult fit = world.fit(layout.model, method_code::x_on_y);  // labels don't grow
    ASSERT_EQ(fit.Status, FitStatus::calculated);
    EXPECT_EQ(fit.Label, layout.label);
    ASSERT_EQ(fit.nRows, static_cast<int>(layout.applies.size()));
    double fractions = 0;
    for (int row = 1; row <= fit.nRows; ++row) {
      const auto at = static_cast<std::size_t>(row) - 1;
      EXPECT_EQ(fit.Rows(row).Applies, layout.applies[at]);
      EXPECT_EQ(fit.Rows(row).Fraction > 0, layout.has_fraction[at]);
      fractions += fit.Rows(row).Fraction;
    }
    EXPECT_DOUBLE_EQ(fractions, 1);
    EXPECT_EQ(fit.starts.has_value(), layout.model != model_code::weibull2);
  }
}

struct Request {
  std::int16_t model;
  std::int16_t method;
};

std::vector<Request> all_requests() {
  std::vector<Request> requests;
  for (const std::int16_t model : {model_code::weibull2, model_code::weibull3, model_code::weibull4,
                                   model_code::weibull5c, model_code::weibull7})
    for (const std::int16_t method : all_methods) requests.push_back({model, method});
  return requests;
}

TEST(FitLine, AnswersDoNotDependOnTheOrderOfTheFits) {
  const DataSet data = random_sample(usual_mixture(model_code::weibull7), {.n = 60, .seed = 8});
  std::vector<Request> requests = all_requests();
  std::vector<FitResult> alone;
  for (const Request& request : requests) {
    FitWorld world(data);
    world.prompts.accept_all();
    alone.push_back(world.fit(request.model, request.method));
  }

  std::vector<std::size_t> order(requests.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::mt19937_64 random(11);
  for (int round = 0; round < 6; ++round) {
    std::shuffle(order.begin(), order.end(), random);
    FitWorld world(data);
    world.prompts.accept_all();
    for (int pass = 0; pass < 2; ++pass)  // the second fits unchanged data once more
      for (const std::size_t i : order) {
        const FitResult fit = world.fit(requests[i].model, requests[i].method);
        ASSERT_NEAR(fit.Quality, alone[i].Quality, 1e-6 * std::max(1.0, std::fabs(fit.Quality)))
            << fit.Label << " in round " << round << ", pass " << pass;
        ASSERT_EQ(fit.nRows, alone[i].nRows);
        for (int row = 1; row <= fit.nRows; ++row)
          ASSERT_LE(relative_difference(fit.Rows(row).Shape, alone[i].Rows(row).Shape), 1e-6)
              << fit.Label;
      }
  }
}

TEST(FitLine, NewPointsForgetTheOldSolutions) {
  const DataSet first = random_sample(usual_mixture(model_code::weibull5c), {.n = 80, .seed = 1});
  const DataSet second = random_sample(usual_mixture(model_code::weibull4), {.n = 80, .seed = 2});
  for (const Request& request : all_requests()) {
    FitWorld fresh(second);
    FitWorld used(first);
    fresh.prompts.accept_all();
    used.prompts.accept_all();
    used.fit(request.model, request.method);
    used.session.gData(1) = second;
    EXPECT_EQ(used.fit(request.model, request.method).Quality,
              fresh.fit(request.model, request.method).Quality);
  }
}

TEST(FitLine, TheUnitOfTimeOnlyMovesLivesAndLikelihood) {
  const DataSet data = random_sample(usual_mixture(model_code::weibull5c), {.n = 80, .seed = 4});
  for (const std::int16_t method : all_methods) {
    const FitResult hours = FitWorld(data).fit(model_code::weibull5c, method);
    const FitResult minutes = FitWorld(scaled(data, 64)).fit(model_code::weibull5c, method);
    const double shift = method == method_code::mle ? -80 * std::log(64.0) : 0.0;
    EXPECT_NEAR(minutes.Quality, hours.Quality + shift, 1e-3);
    EXPECT_NEAR(minutes.Rows(2).Shape / hours.Rows(2).Shape, 1, 1e-2);
    EXPECT_NEAR(hours.Rows(2).Scale / minutes.Rows(2).Scale, 64, 0.64);
  }
}

TEST(FitLine, SuspensionsTakePartInTheLikelihoodOnRequest) {
  const TrueMixture truth = usual_mixture(model_code::weibull4);
  const DataSet data = random_sample(truth, {.n = 400, .seed = 2, .censored = 1});
  FitWorld world(data);
  const FitResult without = world.fit(model_code::weibull4, method_code::mle);
  EXPECT_NE(world.last_status().find("suspensions are not in this likelihood"), std::string::npos);
  world.fit(model_code::weibull4, method_code::x_on_y);
  EXPECT_EQ(world.last_status().find("suspensions"), std::string::npos);

  world.session.solver.data.CensoredLikelihood = true;
  const FitResult with = world.fit(model_code::weibull4, method_code::mle);
  EXPECT_EQ(world.last_status().find("suspensions"), std::string::npos);
  EXPECT_EQ(with.Label, "W4P/MLEc 4 Par");
  EXPECT_EQ(without.Label, "W4P/MLE 4 Par");
  double ln_likelihood = 0, of_truth = 0;
  const TrueMixture fitted = mixture_of(with);
  for (int i = 1; i <= data.Count; ++i) {
    const double t = static_cast<double>(data.Points(i).X);
    const bool failed = data.Points(i).Fails > 0;
    ln_likelihood += std::log(failed ? fitted.density(t) : fitted.reliability(t));
    of_truth += std::log(failed ? truth.density(t) : truth.reliability(t));
  }
  EXPECT_NEAR(with.Quality, ln_likelihood, 1e-6 * std::fabs(ln_likelihood));
  EXPECT_GT(with.Quality, of_truth);
  EXPECT_NEAR(fitted.reliability(300), truth.reliability(300), 0.06);
}

TEST(FitLine, ARefusedAnswerTellsWhyAndLeavesRowsAlone) {
  const DataSet small =
      scaled(random_sample(usual_mixture(model_code::weibull4), {.n = 60, .seed = 2}), 1e-9);
  FitWorld world(small);
  world.prompts.accept_all();
  FitSet& fits = world.session.gFit(1);
  FitResult old = fits.Fits(0);
  old.ModelCode = model_code::weibull4;
  old.Method = method_code::mle;
  old.Status = FitStatus::stale;
  old.nRows = 1;
  old.Rows = Slots<FitParam>(1);
  old.Rows(1).Shape = 1.25;
  fits.Fits.push_back(old);
  fits.nFits = 1;
  const FitResult refused = world.fit(model_code::weibull4, method_code::mle);
  EXPECT_GT(refused.Quality, 0);
  EXPECT_EQ(refused.Status, FitStatus::stale);
  ASSERT_EQ(refused.nRows, 1);
  EXPECT_EQ(refused.Rows(1).Shape, 1.25);
  EXPECT_NE(world.last_status().find("smaller unit"), std::string::npos);

  FitWorld falling(data_at({100, 90, 80, 70, 60, 50, 40, 30, 20, 10}));
  falling.prompts.accept_all();
  EXPECT_NE(falling.fit(model_code::weibull4, method_code::y_on_x).Status, FitStatus::calculated);
  EXPECT_NE(falling.last_status().find("refused"), std::string::npos);
}

TEST(FitLine, HostilePointsEndInBoxesOrARefusal) {
  const std::vector<std::pair<const char*, std::vector<double>>> samples = {
      {"fewer than parameters", {10, 20, 30}},
      {"one", {10}},
      {"ties", std::vector<double>(30, 50.0)},
      {"outlier", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 1e12}},
      {"tiny", {1e-300, 2e-300, 3e-300, 4e-300, 5e-300, 6e-300, 7e-300, 8e-300}},
      {"smallest singles", {1e-38, 2e-38, 3e-38, 4e-38, 5e-38, 6e-38, 7e-38, 8e-38}},
      {"largest singles", {1e37, 2e37, 3e37, 4e37, 5e37, 6e37, 1e38, 3e38}},
      {"zero", {0, 1, 2, 3, 4, 5, 6, 7, 8}},
      {"negative", {-3, -2, -1, 4, 5, 6, 7, 8, 9}},
      {"wide", {1e-30, 1e-20, 1e-10, 1, 1e10, 1e20, 1e30, 2e30, 3e30}},
  };
  for (const auto& [name, times] : samples)
    for (const Request& request : all_requests()) {
      SCOPED_TRACE(std::string(name) + " " +
                   fs_ModelNames(request.model, request.method).short_name);
      FitWorld world(data_at(times));
      world.prompts.accept_all();
      const FitResult fit = world.fit(request.model, request.method);
      if (fit.Status != FitStatus::calculated) continue;
      for (int row = 1; row <= fit.nRows; ++row) {
        EXPECT_TRUE(std::isfinite(fit.Rows(row).Scale));
        EXPECT_TRUE(std::isfinite(fit.Rows(row).Shape));
      }
    }
}

TEST(FitLine, NothingToFitIsSaid) {
  DataSet empty = fuStandardData();
  FitWorld world(empty);
  world.prompts.expect_box("", "'D ebug. Need check here");
  EXPECT_EQ(world.fit(model_code::weibull4, method_code::mle).nRows, 0);
  FitWorld other(data_at({1, 2, 3}));
  other.prompts.expect_box("", "model not programmed");
  other.fit(model_code::weibull5x, method_code::mle);

  DataSet suspensions = test::make_data({{10, 0, 1}, {20, 0, 2}});
  suspensions.Points(0).Susps = 3;
  FitWorld suspended(suspensions);
  suspended.prompts.accept_all();
  suspended.fit(model_code::weibull4, method_code::x_on_y);
  EXPECT_FALSE(suspended.prompts.shown().empty());
  EXPECT_EQ(suspended.session.gFit(1).nFits, 0);

  DataSet many = test::make_data({{10, 1e15, 0}, {20, 1, 0}});
  many.Points(0).Fails = 1e15;
  FitWorld crowd(many);
  crowd.prompts.expect_box("", "Fit line Error");
  crowd.fit(model_code::weibull4, method_code::x_on_y);
}

/// Says Cancel at the n-th box.
class CancelAt : public Prompts {
 public:
  explicit CancelAt(int n) : n_(n) {}
  int shown = 0;

  BoxAnswer show(const Box& box) override {
    const bool cancel = ++shown == n_;
    if (box.buttons == BoxButtons::retry_cancel)
      return cancel ? BoxAnswer::cancel : BoxAnswer::retry;
    return cancel && box.buttons == BoxButtons::ok_cancel ? BoxAnswer::cancel : BoxAnswer::ok;
  }
  std::optional<std::string> ask_line(const std::string&, const std::string&,
                                      const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> choose_file(const FileRequest&) override { return std::nullopt; }

 private:
  int n_;
};

/// A clock that never lets two equal errors pass without a box.
class HurryingClock : public test::TestClock {
 public:
  double steady_seconds() override {
    advance(6);
    return test::TestClock::steady_seconds();
  }
};

TEST(FitLine, ACancelAtAnyBoxLeavesTheRecords) {
  // Times below 1 give densities above 1: many boxes in a likelihood.
  const DataSet data =
      scaled(random_sample(usual_mixture(model_code::weibull4), {.n = 40, .seed = 6}), 1e-4);
  for (const std::int16_t model : {model_code::weibull3, model_code::weibull4}) {
    int boxes = 0;
    for (int n = 1; n <= 25; ++n) {
      test::TestWorld world;
      CancelAt prompts(n);
      HurryingClock clock;
      const Ports own{prompts,       world.event_loop, clock,
                      world.entropy, world.clipboard,  world.text_measure,
                      world.files,   world.host,       world.views};
      Session session(own);
      New_frm_Data(session);
      New_frm_Fit(session);
      session.gData(1) = data;
      Fit_Line(session, 1, 1, model, method_code::mle);
      if (prompts.shown < n) break;  // the fit has no n-th box
      boxes = n;
      EXPECT_EQ(session.gFit(1).nFits, 0) << "model " << model << ", box " << n;
      EXPECT_TRUE(session.solver.loaded.empty());
      // The next fit is not stopped by the cancel of this one.
      session.gData(1) = scaled(data, 1e4);
      session.solver.minimum_life_warned = true;
      Fit_Line(session, 1, 1, model, method_code::x_on_y);
      EXPECT_EQ(session.gFit(1).nFits, 1);
    }
    EXPECT_GE(boxes, 1) << "no box to cancel";
  }
}

}  // namespace
}  // namespace tavlo
