#include "actions/life_table.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "actions/copied_table.h"
#include "actions/reports.h"
#include "actions/words.h"
#include "chart/parts/plain_words.h"
#include "life/life_answers.h"
#include "life/mean_life.h"
#include "numerics/digit.h"
#include "numerics/elementary.h"
#include "numerics/number_text.h"
#include "project/fit_records.h"
#include "project/grid.h"

namespace tavlo {

namespace {

constexpr std::size_t most_questions = 100;

std::string shown(Session& session, double value) {
  return number_text(fd_Round(session.errors, value, session.settings.DigitsFit).value);
}

/// What a life says of itself; empty rows where it may not be asked.
class Answers {
 public:
  Answers(Session& session, const Life& life)
      : session_(session), life_(life), reach_(share_that_fails(life)) {}

  void by_percentage(LifeAnswer& row) const {
    const double p = row.asked / 100;
    row.tip = "Time by which " + number_text(row.asked) + " % have failed";
    const auto x = b_life(life_, p);
    row.answer = x ? shown(session_, *x) : why_no_b_life(life_, p);
    row.time = x;
    if (p >= reach_)
      row.tip += ".\nOnly " + number_text(100 * reach_, 4) + " % of the units ever fail.";
    if (x) warn_below_zero(row, *x);
  }

  void reliability(LifeAnswer& row) const {
    row.tip = "Share that survives the time " + number_text(row.asked) + " (1 is all)";
    row.answer = text_beside(surviving_share(life_, row.asked), 1,
                             std::max<int>(session_.settings.DigitsFit, 1));
    row.time = row.asked;
  }

  void mean(LifeAnswer& row) const {
    row.tip = "Mean time to failure of all units";
    const auto mean = mean_life(life_);
    row.answer = !mean ? "not known" : std::isfinite(*mean) ? shown(session_, *mean) : "infinite";
    if (mean && std::isfinite(*mean)) row.time = mean;
    if (row.answer == "infinite")
      row.tip +=
          reach_ < 1 ? ".\nA part of the units never fails." : ".\nIt is beyond all numbers.";
    if (row.time) warn_below_zero(row, *row.time);
  }

 private:
  static void warn_below_zero(LifeAnswer& row, double x) {
    if (x < 0) row.tip += std::string(".\n") + below_zero;
  }

  Session& session_;
  const Life& life_;
  double reach_;
};

std::vector<LifeAnswer> questions_of(const LifeQuestions& asked) {
  std::vector<LifeAnswer> rows;
  for (const double p : asked.percents)
    rows.push_back({LifeAnswerKind::b_life, p, "B" + number_text(p), {}, {}, {}});
  for (const double x : asked.times)
    rows.push_back({LifeAnswerKind::reliability, x, "R(" + number_text(x) + ")", {}, {}, {}});
  rows.push_back({LifeAnswerKind::mean, 0, "Mean life", {}, {}, {}});
  return rows;
}

void answer(const Answers& answers, LifeAnswer& row) {
  switch (row.kind) {
    case LifeAnswerKind::b_life: return answers.by_percentage(row);
    case LifeAnswerKind::reliability: return answers.reliability(row);
    case LifeAnswerKind::mean: return answers.mean(row);
  }
}

bool is_by_mode(const FitResult& fit) {
  return (fit.ModelCode & model_mask) == model_code::by_failure_mode;
}

/// Why the fit can't be asked; empty when it can.
std::string refusal(const FitResult& fit, const DataSet& data, const Life& life) {
  if (const std::string why = why_out_of_date(fit, data); !why.empty())
    return "Out of date: " + why + " Press Calculate Fit.";
  if (life.rows.empty()) return "This fit has no numbers.";
  if (lacks_a_mode(life))
    return "A failure mode has no fit: the life of all together is not known.";
  return {};
}

std::string remark(const FitResult& fit, const DataSet& data, const Life& life) {
  if (fit.is_given) return sentence(given_words);
  if (leaves_suspensions_out(data.sample(), fit.request))
    return left_out_sentence(data.sample().total_suspensions);
  if (is_by_mode(fit)) return "All failure modes act together on every unit.";
  if (fit.request.slope) return "The slope was given, not fitted.";
  const double reach = share_that_fails(life);
  return reach < 1 ? "Only " + number_text(100 * reach, 4) + " % of the units ever fail." : "";
}

/// The pieces of a list. A comma parts them where it is no decimal sign.
std::vector<std::string> pieces(const std::string& typed, const NumberPunctuation& punctuation) {
  std::vector<std::string> found(1);
  for (const char c : typed) {
    const bool parts =
        c == ';' || c == ' ' || c == '\t' || (c == ',' && punctuation.DecimalPoint != ',');
    if (parts)
      found.emplace_back();
    else
      found.back() += c;
  }
  std::erase_if(found, [](const std::string& piece) { return piece.empty() || piece == "%"; });
  return found;
}

/// "1,5" where the comma is no decimal sign: one number for who typed it, perhaps two.
bool has_doubtful_comma(const std::string& typed, const NumberPunctuation& punctuation) {
  const auto is_digit_at = [&](std::size_t at) { return at < typed.size() && is_digit(typed[at]); };
  for (std::size_t at = 1; at < typed.size(); ++at)
    if (typed[at] == ',' && is_digit_at(at - 1) && is_digit_at(at + 1))
      return punctuation.DecimalPoint != ',';
  return false;
}

std::optional<double> typed_number(std::string piece, const NumberPunctuation& punctuation) {
  if (!piece.empty() && (piece.front() == 'B' || piece.front() == 'b')) piece.erase(0, 1);
  if (!piece.empty() && piece.back() == '%') piece.pop_back();
  return parse_number(with_decimal_point(piece, punctuation));
}

std::string ask(const Session& session, std::vector<double>& list, const std::string& typed,
                const std::function<bool(double)>& is_sensible, const char* reason) {
  std::vector<double> more = list;
  const auto parts = pieces(typed, session.settings.punctuation);
  if (parts.empty()) return "Type a number.";
  if (has_doubtful_comma(typed, session.settings.punctuation))
    return "A comma between digits may mean two things: type 1.5, or 1; 5.";
  for (const std::string& piece : parts) {
    const auto number = typed_number(piece, session.settings.punctuation);
    if (!number) return "\"" + piece + "\" is not a number.";
    if (!is_sensible(*number)) return reason;
    more.push_back(*number);
  }
  std::sort(more.begin(), more.end());
  more.erase(std::unique(more.begin(), more.end()), more.end());
  if (more.size() > most_questions) return "That is too much for one table.";
  list = std::move(more);
  return {};
}

}  // namespace

LifeTable life_table(Session& session, int fit_index, int grid_row) {
  const FitSet& fits = session.project.fits(fit_index);
  const DataSet& data = session.project.data(data_of_fits(session.project, fit_index));
  LifeTable table{0,
                  {},
                  "No fit yet. Enter times, choose a model and press Calculate Fit.",
                  questions_of(session.life_questions)};
  const int slot = fit_at(session, fit_index, grid_row).slot;
  table.slot = slot == 0 ? fits.nFits : slot;
  if (table.slot == 0) return table;
  const FitResult& fit = fits.Fits(table.slot);
  const Life life = life_of(fit);
  table.fit = fit.is_given ? "given" : label_of(fit);
  table.remark = refusal(fit, data, life);
  if (!table.remark.empty()) return table;
  table.remark = remark(fit, data, life);
  const Answers answers(session, life);
  for (LifeAnswer& row : table.rows) {
    answer(answers, row);
    const bool is_life = row.kind != LifeAnswerKind::reliability;
    if (is_life && row.time && *row.time < 0 && table.remark.empty()) table.remark = below_zero;
  }
  return table;
}

std::string ask_percents(Session& session, const std::string& typed) {
  return ask(
      session, session.life_questions.percents, typed, [](double p) { return p > 0 && p < 100; },
      "A percentage lies above 0 and below 100.");
}

std::string ask_times(Session& session, const std::string& typed) {
  return ask(
      session, session.life_questions.times, typed, [](double) { return true; }, "");
}

void drop_question(Session& session, const LifeAnswer& answer) {
  if (answer.kind == LifeAnswerKind::b_life)
    std::erase(session.life_questions.percents, answer.asked);
  if (answer.kind == LifeAnswerKind::reliability)
    std::erase(session.life_questions.times, answer.asked);
}

ClipboardText copied(const LifeTable& table, const NumberPunctuation& punctuation) {
  if (table.rows.empty() || table.rows.front().answer.empty()) return {};
  Grid cells(1, 2);
  const auto add = [&cells](const std::string& name, const std::string& answer) {
    const int row = cells.rows() - 1;
    cells.set_text(row, 0, name);
    cells.set_text(row, 1, answer);
    cells.set_rows(row + 2);
  };
  add("Life", table.fit);
  for (const LifeAnswer& row : table.rows) add(row.name, row.answer);
  if (!table.remark.empty()) add(table.remark, "");
  return copied_table(cells, {1, 0, cells.rows() - 2, 1}, punctuation);
}

}  // namespace tavlo
