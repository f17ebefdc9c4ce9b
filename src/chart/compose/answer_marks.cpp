#include "chart/compose/answer_marks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <sstream>
#include <utility>
#include <vector>

#include "chart/compose/free_words.h"
#include "chart/parts/marks.h"
#include "numerics/number_text.h"

namespace tavlo {

namespace {

using drawing::Place;

constexpr int exact_digits = 17;
constexpr std::int32_t beside = 60;  // units, from the line to its words

constexpr const char* word_of(Asked kind) {
  return kind == Asked::share ? "share" : kind == Asked::time ? "time" : "mean";
}

/// What a mark asks, and whom.
struct Question {
  AskedValue asked;
  std::int32_t data_id = 0;
  std::string fit;
};

/// "answer share 0.1 4711 W2P/mle"
std::string text_of(const Question& question) {
  return std::string(answer_mark_word) + word_of(question.asked.kind) + " " +
         number_text(question.asked.value, exact_digits) + " " + std::to_string(question.data_id) +
         " " + question.fit;
}

std::optional<Question> question_of(const ChartItem& mark) {
  if (!is_answer_mark(mark)) return std::nullopt;
  std::istringstream words(mark.Text1);
  std::string first, kind, value, data_id;
  Question question;
  words >> first >> kind >> value >> data_id >> question.fit;
  constexpr std::array kinds = {Asked::share, Asked::time, Asked::mean};
  const auto known =
      std::find_if(kinds.begin(), kinds.end(), [&](Asked each) { return kind == word_of(each); });
  if (known == kinds.end()) return std::nullopt;
  question.asked.kind = *known;
  const auto number = parse_number(value);
  const auto id = parse_number(data_id);
  if (question.fit.empty() || !number || !id || std::abs(*id) > 2147483647.0) return std::nullopt;
  question.asked.value = *number;
  question.data_id = static_cast<std::int32_t>(*id);
  return question;
}

/// Whatever a file says of its place and words: only a fit may say that.
void clear(ChartItem& mark) {
  mark.nPoints = 0;
  mark.PointsX.resize(0);
  mark.PointsY.resize(0);
  mark.Text2.clear();
}

/// From the time axis up to the line of the fit and across to the percentages.
void place(ChartItem& mark, const ChartItem& plot, Place at) {
  const std::vector<Place> way = {{at.x, plot.Top + plot.Height}, at, {plot.Left, at.y}};
  mark.nPoints = 2;
  mark.PointsX.resize(2);
  mark.PointsY.resize(2);
  for (int i = 0; i <= 2; ++i) {
    mark.PointsX(i) = static_cast<float>(way[static_cast<std::size_t>(i)].x);
    mark.PointsY(i) = static_cast<float>(way[static_cast<std::size_t>(i)].y);
  }
}

/// The words stand where the person has put them, or else where they are in nobody's way.
bool has_moved_words(const ChartItem& mark) {
  return mark.Width != beside || mark.Height != beside;
}

void place_words(ChartItem& mark, TextMeasure& measure, FreeWords& words) {
  const Place at = points_of_mark(mark)[1];
  if (!has_moved_words(mark)) {
    const Place corner = words.place_beside(at, text_size(measure, mark.Text2, mark));
    mark.Width = to_unit(static_cast<double>(corner.x) - at.x);
    mark.Height = to_unit(static_cast<double>(corner.y) - at.y);
  }
  mark.Left = to_unit(static_cast<double>(at.x) + mark.Width);
  mark.Top = to_unit(static_cast<double>(at.y) + mark.Height);
  words.take(words_bounds(measure, mark));
}

/// Those that the person has put somewhere first: the others keep off them, and off all lines of
/// marks.
void place_all_words(std::vector<ChartItem*>& marks, TextMeasure& measure, const Chart& chart,
                     Readout& readout) {
  Obstacles plotted = readout.obstacles();
  for (const ChartItem* mark : marks) plotted.add_line(points_of_mark(*mark));
  FreeWords words(chart.Boxes(chart_item::plot_box), std::move(plotted), beside);
  std::stable_partition(marks.begin(), marks.end(),
                        [](const ChartItem* mark) { return has_moved_words(*mark); });
  for (ChartItem* mark : marks) place_words(*mark, measure, words);
}

void answer(ChartItem& mark, const Question& question, const Session& session, const Chart& chart,
            const Readout& readout) {
  const auto all = sayings(session, chart, readout, question.asked);
  for (const FitSaying& saying : all) {
    if (saying.data_id != question.data_id || saying.label != question.fit || !saying.place)
      continue;
    place(mark, chart.Boxes(chart_item::plot_box), *saying.place);
    const auto say = all.size() > 1 ? named_saying_text : saying_text;
    mark.Text2 = say(question.asked, saying, session.settings.DigitsFit);
    return;
  }
}

}  // namespace

bool has_answer_mark(const Chart& chart, const AskedValue& asked, const FitSaying& saying) {
  const std::string text = text_of({asked, saying.data_id, saying.label});
  return std::any_of(chart.Texts.begin(), chart.Texts.end(),
                     [&](const ChartItem& mark) { return mark.Text1 == text; });
}

void add_answer_mark(Chart& chart, const AskedValue& asked, const FitSaying& saying) {
  if (has_answer_mark(chart, asked, saying)) return;
  ChartItem mark = text_mark({0, 0}, {});
  mark.Text1 = text_of({asked, saying.data_id, saying.label});
  mark.Width = beside;
  mark.Height = beside;
  add_mark(chart, std::move(mark));
}

bool has_answer_marks(const Chart& chart) {
  return std::any_of(chart.Texts.begin(), chart.Texts.end(), is_answer_mark);
}

Chart with_answers(const Session& session, const Chart& chart) {
  Chart answered = chart;
  if (!has_answer_marks(chart)) return answered;
  Readout readout(session, chart);
  std::vector<ChartItem*> shown;
  for (int i = 1; i <= std::min(chart.nTexts, chart.Texts.bound()); ++i) {
    ChartItem& mark = answered.Texts(i);
    if (!is_answer_mark(mark)) continue;
    clear(mark);
    if (const auto question = question_of(mark)) answer(mark, *question, session, chart, readout);
    if (is_shown(mark)) shown.push_back(&mark);
  }
  place_all_words(shown, session.ports.text_measure, chart, readout);
  return answered;
}

}  // namespace tavlo
