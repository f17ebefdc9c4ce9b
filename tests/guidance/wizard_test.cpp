#include "guidance/wizard.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

#include "support/case_list.h"

namespace tavlo {
namespace {

/// A step as its line of the list tells it: kind, frame, text and what follows.
using Told = std::vector<std::string>;

std::map<int, Told> told_steps() {
  std::map<int, Told> steps;
  for (auto& row : test::case_list("wizard_steps.txt")) {
    const int number = static_cast<int>(test::number_in(row[0]));
    steps[number] = {row.begin() + 1, row.end()};
  }
  return steps;
}

std::string or_dash(const std::string& text) { return text.empty() ? "-" : text; }

/// "Yes>27" or "No>34, 5, 28": where it leads with so many failures.
int next_of(const std::string& told, int failures) {
  const std::string rule = told.substr(told.rfind('>') + 1);
  int next = 0, below = 0, next_below = 0;
  std::sscanf(rule.c_str(), "%d, %d, %d", &next, &below, &next_below);
  return failures < below ? next_below : next;
}

/// Walks on from a wizard over every answer, and counts the longest way.
class EveryPath {
 public:
  void walk(const Wizard& here, int steps) {
    longest = std::max(longest, steps);
    seen.insert(here.state());
    const Told& told = list.at(here.state());
    const WizardStep& step = here.step();
    EXPECT_EQ(or_dash(step.frame), told[1]) << here.state();
    EXPECT_EQ(or_dash(step.text), told[2]) << here.state();
    const bool is_action = told[0] == "action";
    for (std::size_t i = 3; i < told.size(); ++i) {
      Wizard next = here;
      is_action ? next.check() : next.answer(static_cast<int>(i) - 2);
      EXPECT_EQ(next.state(), next_of(told[i], next.failures())) << here.state() << ": " << told[i];
      if (!is_action) {
        EXPECT_EQ(step.answers[i - 3].text, told[i].substr(0, told[i].rfind('>')));
      }
      walk(next, steps + 1);
    }
    EXPECT_EQ(step.answers.size(), is_action ? 0 : told.size() - 3) << here.state();
    EXPECT_EQ(step.kind == StepKind::end, told[0] == "end") << here.state();
  }

  std::map<int, Told> list = told_steps();
  std::set<int> seen;
  int longest = 0;
};

TEST(Wizard, EveryPathMeetsItsTexts) {
  EveryPath paths;
  paths.walk({}, 0);
  const std::set<int>& met = paths.seen;
  EXPECT_EQ(met.size(), 62u);
  EXPECT_EQ(paths.longest, 10) << "eleven steps";
  for (const auto& [state, told] : paths.list)
    EXPECT_EQ(met.count(state) == 0,
              state == 14 || state == 41 || state == 64 || state == 73 || state == 76)
        << state;
  for (const WizardStep& step : wizard_steps()) EXPECT_EQ(paths.list.count(step.number), 1u);
  EXPECT_EQ(wizard_steps().size(), paths.list.size());
}

/// Answers by their places, "c" for the check button, "<" and ">" for back and forward.
Wizard walked(const std::string& way) {
  Wizard wizard;
  for (const char each : way) {
    if (each == 'c')
      wizard.check();
    else if (each == '<')
      wizard.back();
    else if (each == '>')
      wizard.forward();
    else
      wizard.answer(each - '0');
  }
  return wizard;
}

TEST(Wizard, GoesBackAndForwardAsItAlwaysDid) {
  const std::tuple<const char*, int, int> cases[] = {
      // the way, the state and the depth that it leads to
      {"", 0, 0},          {"<", 0, 0},    {">", 0, 0},     {"1", 1, 1},       {"1<", 1, 1},
      {"1>", 1, 1},        {"11", 6, 2},   {"11<", 0, 1},   {"11<>", 1, 2},    {"11<>>", 1, 2},
      {"11<<", 0, 1},      {"114", 25, 3}, {"114c", 26, 3}, {"114c2", 28, 4},  {"115c2", 34, 4},
      {"116c2", 34, 4},    {"114<", 1, 2}, {"114<<", 0, 1}, {"114<<>>", 6, 3}, {"11<2", 70, 2},
      {"11<2>", 70, 2},    {"9", 0, 0},    {"0", 0, 0},     {"11c", 1, 2},     {"c", 0, 0},
      {"115c2c2c", 35, 5},
  };
  for (const auto& [way, state, depth] : cases) {
    const Wizard wizard = walked(way);
    EXPECT_EQ(wizard.state(), state) << way;
    EXPECT_EQ(wizard.depth(), depth) << way;
  }
  EXPECT_EQ(walked("116c2c11c2").state(), 42) << "more than 100 failures";
  EXPECT_EQ(walked("115c2c11c2").state(), 43);
  EXPECT_EQ(walked("116<").failures(), 6) << "going back does not take it back";
  Wizard by_wheel = walked("11");
  by_wheel.turn_wheel(1);
  EXPECT_EQ(by_wheel.state(), 0);
  by_wheel.turn_wheel(0);
  EXPECT_EQ(by_wheel.state(), 1);
}

// Answer, answer, back makes the history deeper by one each time.
TEST(Wizard, OutlastsAnyWalk) {
  Wizard wizard;
  for (int i = 0; i < 300; ++i) {
    wizard.answer(1);
    wizard.answer(1);
    wizard.back();
  }
  EXPECT_LE(wizard.depth(), 89);
  std::vector<int> asked;  // the last answers are remembered, whatever was forgotten
  for (const int place : {1, 2, 1}) {
    asked.push_back(wizard.state());
    wizard.answer(place);
  }
  for (const std::size_t question : {1U, 0U}) {
    wizard.back();
    EXPECT_EQ(wizard.state(), asked[question]);
  }
  std::mt19937 random(3);
  for (int i = 0; i < 100000; ++i) {
    const auto act = random() % 12;
    if (act < 7)
      wizard.answer(static_cast<int>(random() % 7));
    else if (act < 9)
      wizard.back();
    else if (act < 10)
      wizard.forward();
    else
      wizard.check();
    ASSERT_TRUE(wizard.depth() >= 0 && wizard.depth() <= 89);
    ASSERT_NE(find_wizard_step(wizard.state()), nullptr) << wizard.state();
    if (wizard.step().kind == StepKind::end && random() % 2 == 0) wizard = {};
  }
}

TEST(Wizard, AdvisesModelsThatTheProgramHas) {
  int advised = 0;
  for (const WizardStep& step : wizard_steps()) {
    if (!step.advice) continue;
    ++advised;
    EXPECT_EQ(step.kind, StepKind::end);
    EXPECT_NE(find_model(step.advice->model), nullptr);
    EXPECT_EQ(std::string(step.lacks), "") << step.number;
  }
  EXPECT_EQ(advised, 10);
}

}  // namespace
}  // namespace tavlo
