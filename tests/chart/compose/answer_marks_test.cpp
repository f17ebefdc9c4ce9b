#include "chart/compose/answer_marks.h"

#include <gtest/gtest.h>

#include <random>

#include "chart/chart_world.h"
#include "chart/parts/boxes.h"
#include "chart/parts/marks.h"

namespace tavlo {

using drawing::Rectangle;

namespace {

struct MarkedWorld : test::SetsWorld {
  MarkedWorld() : SetsWorld(2) {
    draw();
    const Readout readout(session, chart());
    for (const AskedValue& asked : questions)
      for (const FitSaying& saying : sayings(session, chart(), readout, asked))
        add_answer_mark(chart(), asked, saying);
    add_answer_mark(chart(), questions.front(),
                    sayings(session, chart(), readout, questions.front()).front());
    EXPECT_EQ(chart().nTexts, 6) << "what stands there stands once";
    place();
  }
  void place() { answered = with_answers(session, chart()); }
  const ChartItem& mark(int index) { return answered.Texts(index); }

  Chart answered;

  const std::vector<AskedValue> questions = {
      {Asked::share, 0.1}, {Asked::time, 150}, {Asked::mean, 0}};
};

// Weibull with slope 2: Rig 1 has eta 100, Rig 2 has 200.
double failed_by(double x, double eta) { return -std::expm1(-std::pow(x / eta, 2)); }
double answer_of(const AskedValue& asked, double eta) {
  if (asked.kind == Asked::share) return eta * std::sqrt(-std::log(1 - asked.value));
  return asked.kind == Asked::time ? asked.value : eta * std::sqrt(std::acos(-1.0)) / 2;
}

TEST(AnswerMarks, LieOnTheLinesOfTheirFitsWhateverTheAxes) {
  MarkedWorld here;
  std::mt19937_64 random(11);
  std::uniform_real_distribution<double> part(0, 1);
  int shown = 0, hidden = 0;
  for (int trial = 0; trial < 300; ++trial) {
    ChartAxis& across = here.chart().Axes(0);
    ChartAxis& up = here.chart().Axes(1);
    across.Min = 20 + 100 * part(random);
    across.Max = across.Min + 20 + 400 * part(random);
    up.Min = 0.001 + 0.2 * part(random);
    up.Max = up.Min + 0.1 + (0.75 - up.Min) * part(random);
    across.ScaleType = trial % 2 == 0 ? x_scale::log : x_scale::linear;
    here.place();
    const ChartItem& plot = here.chart().Boxes(chart_item::plot_box);
    const AxisMap x = AxisMap::x(here.session.errors, plot, across);
    const AxisMap y = AxisMap::y(here.session.errors, plot, up);
    for (int i = 1; i <= here.chart().nTexts; ++i) {
      const double eta = i % 2 == 1 ? 100 : 200;
      const double time = answer_of(here.questions[static_cast<std::size_t>(i - 1) / 2], eta);
      const double F = failed_by(time, eta);
      const bool inside = time > across.Min && time < across.Max && F > up.Min && F < up.Max;
      ASSERT_EQ(is_shown(here.mark(i)), inside) << i << " at " << time << ", " << F;
      (inside ? shown : hidden) += 1;
      if (!inside) continue;
      const auto way = points_of_mark(here.mark(i));
      ASSERT_EQ(way.size(), 3u);
      EXPECT_LE(std::abs(way[1].x - x(time)), 1);
      EXPECT_LE(std::abs(way[1].y - y(F)), 1);
      EXPECT_EQ(way[0].x, way[1].x);
      EXPECT_EQ(way[2].y, way[1].y);
    }
  }
  EXPECT_GT(shown, 100);
  EXPECT_GT(hidden, 100);
}

TEST(AnswerMarks, WordsStandInThePlotAndKeepOffOneAnother) {
  MarkedWorld here;
  std::mt19937_64 random(12);
  std::uniform_real_distribution<double> part(0, 1);
  TextMeasure& measure = here.session.ports.text_measure;
  const Rectangle plot = area_of(here.chart().Boxes(chart_item::plot_box));
  int pairs = 0;
  for (int trial = 0; trial < 100; ++trial) {
    here.chart().Axes(0).Min = 1 + 30 * part(random);
    here.chart().Axes(0).Max = 180 + 2000 * part(random);
    here.place();
    for (int i = 1; i <= here.chart().nTexts; ++i) {
      if (!is_shown(here.mark(i))) continue;
      const Rectangle words = words_bounds(measure, here.mark(i));
      EXPECT_TRUE(words.left >= plot.left && words.right <= plot.right && words.top >= plot.top &&
                  words.bottom <= plot.bottom);
      for (int k = 1; k < i; ++k) {
        if (!is_shown(here.mark(k))) continue;
        const Rectangle other = words_bounds(measure, here.mark(k));
        EXPECT_TRUE(words.left > other.right || words.right < other.left ||
                    words.top > other.bottom || words.bottom < other.top)
            << here.mark(i).Text2 << " on " << here.mark(k).Text2;
        ++pairs;
      }
    }
  }
  EXPECT_GT(pairs, 300);
}

TEST(AnswerMarks, SayWhatTheFitSaysNowAndNothingWithoutIt) {
  MarkedWorld here;
  EXPECT_TRUE(here.mark(1).Text2.starts_with("B10 = 32.4593   (Rig 1, W"));
  move_mark(here.chart().Texts(1), 100, -50);
  here.place();
  const auto words_beside = [&] {
    return std::pair(static_cast<float>(here.mark(1).Left) - here.mark(1).PointsX(1),
                     static_cast<float>(here.mark(1).Top) - here.mark(1).PointsY(1));
  };
  const auto beside = words_beside();
  FitSet& fits = here.session.project.fits(1);
  const FitResult before = fits.Fits(1);
  fits.Fits(1) = test::fit_of(model_code::weibull2, {{1 / 150.0, 1, 2, 0, 1}});
  here.place();
  EXPECT_TRUE(here.mark(1).Text2.starts_with("B10 = 48.6889   (Rig 1, W"));
  EXPECT_EQ(words_beside(), beside);
  fits.Fits(1) = test::fit_of(model_code::lognormal, {{100, 1, 2, 0, 1}});
  here.place();
  EXPECT_FALSE(is_shown(here.mark(1))) << "another model is another fit";
  EXPECT_TRUE(is_shown(here.mark(2)));
  fits.Fits(1) = before;
  here.place();
  EXPECT_TRUE(here.mark(1).Text2.starts_with("B10 = 32.4593   (Rig 1, W"));
  EXPECT_EQ(words_beside(), beside);
  std::string unknown = here.mark(2).Text1;
  unknown.replace(unknown.find("share"), 5, "age");
  for (const std::string& junk :
       {std::string("answer "), std::string("answer share"), std::string("answer share x 1 W2P"),
        std::string("answer share 0.1 1e99 W"), std::string("answer share nan 1 W2P/rr"),
        unknown}) {
    here.chart().Texts(2) = here.mark(1);  // a file may hold a place and words too
    here.chart().Texts(2).Text1 = junk;
    here.place();
    EXPECT_FALSE(is_shown(here.mark(2))) << junk;
  }
  EXPECT_TRUE(test::has_text(here.draw(), here.mark(1).Text2));
}

}  // namespace
}  // namespace tavlo
