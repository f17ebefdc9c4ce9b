#include "actions/sample.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <sstream>

#include "actions/compare.h"
#include "actions/fit_world.h"
#include "actions/intake.h"
#include "actions/undo.h"
#include "project/fit_records.h"
#include "support/case_list.h"

namespace tavlo {
namespace {

struct SampleWorld : test::FitWorld {
  SampleWorld() : FitWorld({{17}, {28}, {33}}) { session.history.restart(session.project); }

  /// "98 3=1000 4=2": the model and its boxes.
  SampleForm form(const std::string& text, const std::string& size) {
    SampleForm made;
    std::istringstream words(text);
    words >> made.model;
    for (std::string word; words >> word;)
      made.parameters[std::stoul(word)] = word.substr(word.find('=') + 1);
    made.size = size;
    made.seeds = {"1", "2", "3", "4"};
    return made;
  }

  void make(SampleForm made) { make_sample_project(session, made); }

  std::vector<SampleRow> rows() {
    std::vector<SampleRow> all;
    for (std::size_t i = 0; i < data().rows.size(); ++i) {
      const SheetRow& row = data().rows[i];
      all.push_back({row.time, row.failures, row.suspensions});
    }
    return all;
  }
};

// What the sheet holds is what the clipboard's text says, and the log repeats the sample.
TEST(Sample, TakesThePlaceOfTheProjectUntilUndo) {
  SampleWorld world;
  world.fit();
  end_step(world.session);
  const Project before = world.session.project;
  SampleForm form = world.form("482 2=15 3=100 4=4 6=85 7=5000 8=1 10=80 11=1000 12=3", "40");
  form.suspensions = {"2", "7 9", "3", "4"};
  form.right_at_last_failure = true;
  form.method = method_code::mle;
  world.make(form);
  const auto first = world.rows();
  const std::string text = world.clipboard.plain;
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), static_cast<long>(first.size()));
  EXPECT_NE(world.log().find("Monte Carlo Sample  N40/S11"), std::string::npos);
  EXPECT_NE(world.log().find("Seeds: 1"), std::string::npos);
  EXPECT_EQ(world.record(1).request.method, method_code::mle);
  EXPECT_EQ(world.grid().text(1, fit_column::quality), "given");
  EXPECT_EQ(world.panel().nMethod, method_code::mle);
  double suspended = 0;
  for (const SampleRow& row : first) suspended += row.suspensions;
  EXPECT_EQ(suspended, 11);
  world.make(form);
  EXPECT_EQ(world.clipboard.plain, text) << "by the same seeds";
  end_step(world.session);
  EXPECT_TRUE(undo(world.session));
  EXPECT_EQ(world.session.project, before);
}

TEST(Sample, RefusesWithoutTouchingTheProject) {
  for (const auto& row : test::case_list("refused_samples.txt")) {
    SampleWorld world;
    SampleForm form = world.form(row[0], row[1]);
    form.runs = row[2];
    form.group = row[3];
    const Project before = world.session.project;
    world.prompts.expect_box("Monte Carlo", row[4]);
    world.make(form);
    world.prompts.verify();
    EXPECT_EQ(world.session.project, before) << row[0];
  }
}

// The life that was given is no fit: who asks for one gets it, and so does a comparison.
TEST(Sample, TheGivenLifeAnswersNoRequest) {
  for (const bool compares : {false, true}) {
    SampleWorld world;
    world.prompts.accept_all();
    world.make(world.form("98 3=1000 4=2", "25"));
    EXPECT_EQ(world.record(1).Rows(1).Shape, 2);
    world.panel().nModel = model_code::weibull2;
    world.panel().nMethod = method_code::x_on_y;
    if (compares)
      Dist_Analysis(world.session, 1, method_code::x_on_y, std::array{model_code::weibull2});
    else
      CheckAndFit(world.session, 1);
    EXPECT_FALSE(world.record(2).is_given);
    EXPECT_GT(world.record(2).Quality, 0.8);
    EXPECT_NE(world.record(2).Rows(1).Shape, 2);
    world.session.gDataForm(1)->enter(1, sheet_column::x,
                                      "17");  // other data: the life stands as it was given
    CheckAndFit(world.session, 1);
    EXPECT_TRUE(world.record(1).is_given && is_current(world.record(1), world.data()));
    EXPECT_EQ(world.record(1).Rows(1).Shape, 2);
  }
}

// A regression finds the life again that the boxes begin with.
TEST(Sample, EveryModelIsSampledFromTheNumbersThatItBeginsWith) {
  for (const SampledModel& model : sampled_models()) {
    if (model.log_name[0] == '\0') continue;
    SampleWorld world;
    world.prompts.accept_all();
    SampleForm form = world.form(std::to_string(model.code), "60");
    form.is_precise = true;
    for (const ParameterBox& box : model.boxes)
      form.parameters[static_cast<std::size_t>(box.index)] = box.value;
    world.make(form);
    ASSERT_EQ(world.rows().size(), 60U) << model.caption;
    const Life given = life_of(world.record(1));
    world.fit(model.code, method_code::x_on_y);
    const Life found = life_of(world.record(2));
    EXPECT_GT(world.record(2).Quality, 0.9999) << model.caption;
    for (const double p : {0.1, 0.5, 0.9})
      EXPECT_NEAR(*quantile(found, p) / *quantile(given, p), 1, 0.01) << model.caption;
  }
}

TEST(Sample, TellsWhatTheNotationCannotSay) {
  SampleWorld world;
  world.make(world.form("857 3=10 4=20", "30"));
  const auto rows = world.rows();
  EXPECT_EQ(world.session.settings.NegativeSuspension, true);
  EXPECT_TRUE(std::all_of(rows.begin(), rows.end(), [](const auto& row) { return row.time > 0; }));
  const auto& said = world.views.said;
  EXPECT_TRUE(std::any_of(said.begin(), said.end(), [](const std::string& words) {
    return words.find(" negative times were read as suspensions") != std::string::npos;
  }));
  world.session.settings.NegativeSuspension = false;
  world.make(world.form("857 3=10 4=20", "30"));
  EXPECT_LT(world.rows().front().time, 0);
}

// Kept on purpose: what is not sampled gives numbered points, and a size below 1 an empty sheet.
TEST(Sample, NumbersThePointsOfModelsThatAreNotSampled) {
  SampleWorld world;
  world.prompts.expect_box("", "sample not programmed in cmd_sample.click");
  world.make(world.form("674", "-5"));
  world.prompts.verify();
  ASSERT_EQ(world.rows().size(), 5U);
  EXPECT_EQ(world.rows().back().time, 5);
  EXPECT_EQ(world.fits().nFits, 0);
  world.make(world.form("418", "3"));
  EXPECT_EQ(world.rows().back().time, 3);
  world.make(world.form("98 3=1000 4=2", "0.4"));
  EXPECT_TRUE(world.rows().empty());
  EXPECT_NE(world.log().find("Monte Carlo Sample  N0"), std::string::npos);
}

TEST(Sample, SeedsAreThoseOfTheBoxes) {
  SampleWorld world;
  world.make(world.form("98 3=1000 4=2", "5"));
  EXPECT_EQ(world.clipboard.plain,
            "1.195E+01\r\n2.765E+02\r\n1.195E+03\r\n1.479E+03\r\n1.549E+03\r\n")
      << "as the command line draws it";
  SampleForm form = world.form("98 3=1000 4=2", "3");
  form.seeds = {"-7", "3e9", "2,147,483,645", "0"};
  make_sample_project(world.session, form);
  EXPECT_EQ(form.seeds[0], "-7");
  EXPECT_EQ(form.seeds[1], "2147483646");
  const auto at = world.log().find("Seeds: 7");
  EXPECT_NE(at, std::string::npos) << world.log();
  const auto now = present_seeds(world.session);
  EXPECT_NE(next_seeds(world.session), now);
  for (const char* bad : {"", "0", "0.9", "-4", "x"}) EXPECT_FALSE(is_seed(world.session, bad));
  EXPECT_TRUE(is_seed(world.session, "1"));
}

}  // namespace
}  // namespace tavlo
