// What the runs of a planned test leave in a project.
#include "actions/planned_test.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>

#include "actions/fit_world.h"
#include "actions/runs_records.h"
#include "actions/save_project.h"
#include "actions/undo.h"
#include "analyses/sample_text.h"
#include "files/project_file.h"
#include "fit/door/fit.h"
#include "life/shown_parameters.h"
#include "numerics/number_text.h"
#include "project/plot_rows.h"
#include "support/case_list.h"

namespace tavlo {
namespace {

const FitRequest w2p_rr{model_code::weibull2, method_code::x_on_y, {}, RankKind::benard, false, {}};

RunPlan plan_of(Life life, std::int32_t size, std::int32_t runs,
                const std::vector<std::pair<std::int16_t, std::int16_t>>& fits) {
  RunPlan plan;
  plan.sample.life = std::move(life);
  plan.sample.size = size;
  plan.runs = runs;
  for (const auto& [model, method] : fits)
    plan.fits.push_back({model, method, {}, RankKind::benard, false, {}});
  return plan;
}

const Life weibull{model_code::weibull2, {{0.001, 1, 2, 0, 1}}};
const Life early_and_late{model_code::weibull5c, {{0.01, 0.3, 4, 0, 1}, {0.001, 0.7, 3, 0, 3}}};
const Life guaranteed{model_code::weibull3, {{0.001, 1, 2, 500, 1}}};

/// A project that holds the sample of a plan, in the middle of the command that drew it.
struct PlanWorld : test::FitWorld {
  explicit PlanWorld(const RunPlan& the_plan) : FitWorld({}), plan(the_plan) {
    session.history.restart(session.project);
    WichmannHill first = random;
    std::vector<test::Point> points;
    for (const float time : draw_points(plan.sample, first, entropy).times)
      points.push_back({written_time(time)});
    put(points);
    session.step = "Sample";
  }

  void make() {
    make_planned_test(session, plan, random);
    announce(session);
    end_step(session);
  }

  std::vector<double> values(int index) const {
    std::vector<double> all;
    const auto& rows = session.project.data(index).rows;
    for (std::size_t i = 0; i < rows.size(); ++i) all.push_back(double{rows[i].time});
    return all;
  }

  /// The numbers of the log's tables by "name label", as "eta 1 W5C/MLE".
  std::map<std::string, std::vector<std::string>> tables() const {
    std::map<std::string, std::vector<std::string>> found;
    std::istringstream lines(log());
    std::string line, label;
    while (std::getline(lines, line)) {
      std::vector<std::string> cells;
      std::istringstream texts(line);
      for (std::string cell; std::getline(texts, cell, '\t');) cells.push_back(cell);
      if (cells.size() != 7) continue;
      if (cells[1] == "true") label = cells[0];
      found[cells[0] + " " + label] = {cells.begin() + 1, cells.end()};
    }
    return found;
  }

  RunPlan plan;
  WichmannHill random{{1, 2, 3, 4}};
};

double percentile(const std::vector<double>& ordered, double p) {
  const double at = p * (static_cast<double>(ordered.size()) - 1);
  const double below = ordered[static_cast<std::size_t>(at)];
  return below + (at - std::floor(at)) * (ordered[static_cast<std::size_t>(std::ceil(at))] - below);
}

// Every set is told in the log as it is, stands on the chart of its name alone, and begins with
// the fit of the sample that the project holds.
TEST(PlannedTest, LogSetsAndChartsTellTheSame) {
  PlanWorld world(plan_of(early_and_late, 25, 40, {{354, 1}, {98, 0}, {98, 1}}));
  world.make();
  const Project& project = world.session.project;
  ASSERT_EQ(project.data.bound(), 1 + 6 + 2 + 2);
  ASSERT_EQ(project.charts.bound(), 1 + 3);
  const auto tables = world.tables();
  for (int i = 2; i <= project.data.bound(); ++i) {
    const std::string& title = project.data(i).Title;
    std::vector<double> all = world.values(i);
    double sum = 0, squares = 0;
    for (const double each : all) sum += each;
    const double count = static_cast<double>(all.size()), mean = sum / count;
    for (const double each : all) squares += (each - mean) * (each - mean);
    std::sort(all.begin(), all.end());
    const double expected[] = {mean, std::sqrt(squares / (count - 1)), percentile(all, 0.05),
                               percentile(all, 0.5), percentile(all, 0.95)};
    for (std::size_t k = 0; k < 5; ++k)
      EXPECT_NEAR(test::number_in(tables.at(title)[k + 1]) / expected[k], 1, 2e-5) << title << k;
    int shown = 0;
    for (int k = 1; k <= project.charts.bound(); ++k) {
      if (!shows_set(project, project.charts(k), i)) continue;
      ++shown;
      const std::string& of_runs = project.charts(k).Boxes(chart_item::main_title).Text2;
      EXPECT_TRUE(of_runs.ends_with(" of 40 runs") && of_runs[0] == title[0]) << of_runs;
      EXPECT_FALSE(shows_set(project, project.charts(k), 1));
    }
    EXPECT_EQ(shown, 1) << title;
  }
  EXPECT_NE(world.log().find(": eta on Chart2, beta on Chart3, u % on Chart4\n"),
            std::string::npos);
  Companion nobody;
  const FitAnswer first = fit(world.data().sample(), w2p_rr, nobody);
  const ShownParameters numbers = shown_parameters(98, first.fit()->life.rows[0]);
  const auto found = std::find_if(project.data.begin(), project.data.end(),
                                  [](const DataSet& data) { return data.Title == "eta W/rr"; });
  EXPECT_NEAR(double{found->rows[0].time} / *numbers.first, 1, 1e-6);
  EXPECT_EQ(tables.at("B10 W5C/MLE")[0], number_text(*quantile(early_and_late, 0.1), 6));
  EXPECT_EQ(tables.at("u % 1 W5C/MLE")[0], "30");
}

TEST(PlannedTest, IsPartOfOneStepAndComesBackFromAFile) {
  PlanWorld world(plan_of(guaranteed, 12, 60, {{162, 0}, {98, 1}}));
  const Project before = world.session.history.now();
  world.make();
  ASSERT_TRUE(save_project_as(world.session, "/data/plan.tavlo"));
  const Project& now = world.session.project;
  Project read;
  ASSERT_FALSE(read_project(world.files.files.at("/data/plan.tavlo"), read));
  ASSERT_EQ(read.data.bound(), now.data.bound());
  for (int i = 2; i <= now.data.bound(); ++i)
    EXPECT_TRUE(same_content(read.data(i), now.data(i))) << i;
  EXPECT_EQ(read.charts, now.charts);
  EXPECT_EQ(read.log.plain(), now.log.plain());
  EXPECT_TRUE(undo(world.session));
  EXPECT_EQ(world.session.project, before);
  EXPECT_FALSE(undo(world.session));
}

TEST(PlannedTest, EscapeKeepsTheRunsMade) {
  for (const std::size_t stop_at : {1U, 3U}) {
    PlanWorld world(plan_of(weibull, 10, 100000, {{98, 0}}));
    WichmannHill behind = world.random;
    world.progress.stop_at = stop_at;
    world.make();
    const bool none = stop_at == 1;
    EXPECT_NE(
        world.log().find(none ? "stopped before the first of 100,000 runs" : "stopped after "),
        std::string::npos)
        << world.log();
    ASSERT_EQ(world.session.project.data.bound(), none ? 1 : 3);
    EXPECT_FALSE(is_busy(world.session));
    const std::size_t made = none ? 0 : world.values(2).size();
    EXPECT_LT(made, 100000U);
    for (std::size_t i = 0; i < made; ++i) draw_points(world.plan.sample, behind, world.entropy);
    EXPECT_EQ(world.random.states(), behind.states()) << "the next sample goes on from there";
  }
}

// One run in twenty has its best minimum life far below 0: the others are seen, and it is told.
TEST(PlannedTest, FarOutAndTooManyValuesAreTold) {
  PlanWorld world(plan_of(guaranteed, 10, 300, {{162, 0}}));
  world.make();
  const Chart& chart = world.session.project.charts(4);
  const ChartAxis& axis = chart.Axes(0);
  const std::vector<double> lives = world.values(4);
  const auto beyond = std::count_if(lives.begin(), lives.end(),
                                    [&](double x) { return x < axis.Min || x > axis.Max; });
  EXPECT_GT(beyond, 0);
  EXPECT_LT(beyond, 60);
  const std::string& sub_title = chart.Boxes(chart_item::sub_title).Text2;
  EXPECT_TRUE(sub_title.ends_with(", " + std::to_string(beyond) + " values beyond the axis"))
      << sub_title;
  EXPECT_EQ(world.session.project.charts(2).Axes(0).ScaleType, x_scale::log);
  RunsReport report{300, {RunsOfFit{}}};
  report.fits[0].request = w2p_rr;
  report.fits[0].parameters = {{ParameterKind::first, "eta", 1, {}, lives, {}}};
  add_run_records(world.session, world.plan, report, 100);
  std::vector<double> ordered = lives, kept = world.values(world.session.project.data.bound());
  std::sort(ordered.begin(), ordered.end());
  ASSERT_EQ(kept.size(), 100U);
  for (std::size_t i = 0; i < kept.size(); ++i) EXPECT_EQ(kept[i], ordered[3 * i + 1]);
  EXPECT_NE(world.log().find("100 of up to 300 values"), std::string::npos);
}

TEST(PlannedTest, WhatCantBeFittedOrHeldIsTold) {
  PlanWorld refused(plan_of(weibull, 10, 20, {{857, 1}}));
  refused.make();
  EXPECT_NE(refused.log().find("no run was fitted, refused 20; the first one: this model is not"),
            std::string::npos)
      << refused.log();
  EXPECT_EQ(refused.session.project.data.bound(), 1);
  PlanWorld beyond(plan_of({model_code::weibull2, {{1e-36, 1, 0.1, 0, 1}}}, 1, 500, {{98, 0}}));
  beyond.make();
  EXPECT_NE(beyond.log().find("given up, as a time of"), std::string::npos) << beyond.log();
  EXPECT_EQ(beyond.session.project.charts.bound(), 1);
}

}  // namespace
}  // namespace tavlo
