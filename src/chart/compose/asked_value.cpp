#include "chart/compose/asked_value.h"

#include <algorithm>

#include "chart/compose/reading_text.h"
#include "chart/parts/fit_line.h"
#include "chart/parts/legend.h"
#include "chart/parts/plot_sets.h"
#include "life/life_answers.h"
#include "life/mean_life.h"
#include "numerics/number_text.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

constexpr double percent = 100.0;

/// "B10" asks for what "10%" asks for.
bool take_share_sign(std::string& text) {
  const bool is_b_life = text.starts_with('B') || text.starts_with('b');
  const bool has_sign = text.ends_with('%');
  if (has_sign) text.pop_back();
  if (is_b_life) text.erase(0, 1);
  return is_b_life || has_sign;
}

std::string without_blanks(std::string text) {
  std::erase_if(text, [](char c) { return c == ' ' || c == '\t'; });
  return text;
}

ReadQuestion refused(const std::string& why) { return {std::nullopt, why}; }

/// Closer to the ends a share loses its digits.
ReadQuestion asked_share(double value) {
  constexpr double nearest = 1e-8;
  if (!(value > 0.0 && value < percent)) return refused("A share lies between 0 % and 100 %.");
  if (value < nearest || value > percent - nearest)
    return refused("That is too close to 0 % or 100 % for a sure answer.");
  return {AskedValue{Asked::share, value / percent}, {}};
}

std::string name_of(const Session& session, const std::vector<PlotSet>& sets, const PlotSet& set) {
  const std::string fit = fit_name(*set.fit);
  return show_one_data_set(sets) ? fit : set_title(session, set) + ", " + fit;
}

FitSaying saying_of(const Life& life, const Readout& readout, const AskedValue& asked) {
  FitSaying saying;
  switch (asked.kind) {
    case Asked::share:
      saying.answer = b_life(life, asked.value);
      if (!saying.answer) saying.no_answer = why_no_b_life(life, asked.value);
      break;
    case Asked::mean:
      saying.answer = mean_life(life);
      if (!saying.answer) saying.no_answer = "not known";
      break;
    case Asked::time:
      saying.answer = fraction_failed(life, asked.value);
      saying.left = surviving_share(life, asked.value);
      saying.place = readout.place_of({asked.value, *saying.answer});
      return saying;
  }
  if (saying.answer)
    saying.place = readout.place_of({*saying.answer, asked.kind == Asked::share
                                                         ? asked.value
                                                         : fraction_failed(life, *saying.answer)});
  return saying;
}

}  // namespace

ReadQuestion read_question(const std::string& typed, const NumberPunctuation& punctuation) {
  std::string text = without_blanks(typed);
  if (text.empty()) return refused("Type a percentage such as 10%, or a time such as 500.");
  const bool is_share = take_share_sign(text);
  const auto value = parse_number(with_decimal_point(text, punctuation));
  if (!value)
    return refused("\"" + typed + "\" is no percentage such as 10% and no time such as 500.");
  return is_share ? asked_share(*value) : ReadQuestion{AskedValue{Asked::time, *value}, {}};
}

std::vector<FitSaying> sayings(const Session& session, const Chart& chart, const Readout& readout,
                               const AskedValue& asked) {
  std::vector<FitSaying> found;
  const std::vector<PlotSet> sets = plot_sets(session, chart);
  for (const PlotSet& set : sets) {
    if (!set.fit || !has_line(*set.marker)) continue;
    if (is_out_of_date(*set.fit, session.project.data(set.data_index))) continue;
    const Life life = life_of(*set.fit);
    if (lacks_a_mode(life)) continue;
    found.push_back(saying_of(life, readout, asked));
    found.back().fit = name_of(session, sets, set);
    found.back().label = label_of(*set.fit);
    found.back().data_id = set.marker->DataId;
  }
  return found;
}

std::string why_nothing_said(const Session& session, const Chart& chart) {
  const std::vector<PlotSet> sets = plot_sets(session, chart);
  const auto shown = std::find_if(sets.begin(), sets.end(), [](const PlotSet& set) {
    return set.fit && has_line(*set.marker);
  });
  if (shown == sets.end()) return "The chart shows no fit.";
  return is_out_of_date(*shown->fit, session.project.data(shown->data_index))
             ? "The fits are out of date. Calculate them again."
             : "A failure mode has no fit: the life of all together is not known.";
}

std::string saying_text(const AskedValue& asked, const FitSaying& saying, int digits) {
  if (asked.kind == Asked::time)
    return "at " + number_text(asked.value) + ": F = " + percent_text(*saying.answer, digits) +
           ", R = " + percent_text(saying.left, digits);
  const std::string name =
      asked.kind == Asked::mean ? "Mean life" : "B" + number_text(percent * asked.value, 10);
  return name + " = " + (saying.answer ? number_text(*saying.answer, digits) : saying.no_answer);
}

std::string named_saying_text(const AskedValue& asked, const FitSaying& saying, int digits) {
  return saying_text(asked, saying, digits) + "   (" + saying.fit + ")";
}

std::string sayings_text(const AskedValue& asked, const std::vector<FitSaying>& sayings,
                         int digits) {
  std::string text;
  for (const FitSaying& saying : sayings)
    text += (text.empty() ? "" : "\n") + named_saying_text(asked, saying, digits);
  return text;
}

}  // namespace tavlo
