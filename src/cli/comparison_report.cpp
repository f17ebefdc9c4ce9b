#include "cli/comparison_report.h"

#include <algorithm>

#include "cli/shown_text.h"
#include "cli/text_table.h"
#include "cli/totals_line.h"
#include "numerics/number_text.h"
#include "project/fit_records.h"

namespace tavlo::cli {

namespace {

/// Goes through the fits with what was found of each.
template <class Take>
void for_each_row(const FitReport& report, const Comparison& comparison, Take take) {
  for (std::size_t i = 0; i < report.outcomes.size(); ++i)
    take(report.outcomes[i], comparison.rows[i]);
}

std::vector<FitWords> notes_of(const FitReport& report, const FitOutcome& outcome,
                               const ComparedRow& row) {
  std::vector<FitWords> notes = notes_of(report, outcome);
  if (row.test == RatioTest::incommensurate)
    notes.push_back({"not-tested",
                     "its likelihood leaves out suspensions that the base takes in, so there is no "
                     "likelihood-ratio test (--censored gives it)"});
  return notes;
}

template <class Value>
std::optional<double> of_straightness(const ComparedRow& row, Value value) {
  return row.straightness ? std::optional(row.straightness.value().*value) : std::nullopt;
}

void add_judgement(JsonText& json, const ComparedRow& row) {
  const bool tested = row.test == RatioTest::tested;
  const auto when_tested = [tested](double value) {
    return tested ? std::optional(value) : std::nullopt;
  };
  add_optional(json, "df", when_tested(row.df));
  add_optional(json, "lr_test", when_tested(row.chance));
  add_optional(json, "critical_r_squared", of_straightness(row, &CriticalRSquared::critical));
  add_optional(json, "pve", of_straightness(row, &CriticalRSquared::pve));
  add_optional(json, "aic", row.aic);
  add_optional(json, "bic", row.bic);
}

void add_row(JsonText& json, const FitReport& report, const FitOutcome& outcome,
             const ComparedRow& row) {
  const Model& model = *outcome.choice.model;
  json.open('{').key("model").string(command_name(model));
  // A refused fit's code is the word that tells why.
  if (outcome.answer.fit()) json.key("code").integer(model.code);
  json.key("name").string(short_label(outcome.request));
  if (outcome.answer.fit()) {
    add_quality(json, outcome);
    add_judgement(json, row);
  } else {
    add_refusal(json, report, outcome);
  }
  add_notes(json, notes_of(report, outcome, row));
  json.close('}');
}

void add_winner(JsonText& json, const FitReport& report, const Comparison& comparison) {
  json.key("winner");
  if (!comparison.winner) {
    json.null();
    return;
  }
  const auto& [row, significance, is_base] = *comparison.winner;
  json.open('{').key("model").string(command_name(*report.outcomes[row].choice.model));
  json.key("significance").number(significance).close('}');
}

std::string percent(double chance) { return format_number(chance, "0.00%"); }

bool is_likelihood(const FitReport& report) {
  return report.outcomes.front().request.method == method_code::mle;
}

std::string words_of(const ComparedRow& row) {
  switch (row.test) {
    case RatioTest::base: return "base";
    case RatioTest::contained: return "?";
    case RatioTest::tested: return percent(row.chance);
    case RatioTest::none:
    case RatioTest::incommensurate: break;
  }
  return "-";
}

void add_likelihood(TextTable& table, const FitOutcome& outcome, const ComparedRow& row) {
  const auto quality = quality_of(outcome);
  if (!outcome.answer.fit()) return table.add({fit_name(outcome), "no fit", "", ""});
  table.add({fit_name(outcome), quality ? format_number(*quality, "0.00") : "",
             row.test == RatioTest::tested ? std::to_string(row.df) : "", words_of(row)});
}

void add_regression(TextTable& table, const FitOutcome& outcome, const ComparedRow& row) {
  const auto quality = quality_of(outcome);
  const auto& line = row.straightness;
  if (!outcome.answer.fit()) return table.add({fit_name(outcome), "no fit", "", ""});
  table.add({fit_name(outcome), quality ? number_text(*quality, 6) : "",
             line ? format_number(line->critical, "0.0000") : "", line ? percent(line->pve) : ""});
}

/// Each note once, behind the names of the fits that have it.
std::string grouped_notes(const FitReport& report, const Comparison& comparison) {
  std::vector<std::pair<std::string, std::string>> lines;  // names, text
  for_each_row(report, comparison, [&](const FitOutcome& outcome, const ComparedRow& row) {
    for (const FitWords& note : notes_of(report, outcome, row)) {
      const std::string text = shown_text(note.text);
      const auto same = std::ranges::find(lines, text, &decltype(lines)::value_type::second);
      if (same == lines.end())
        lines.emplace_back(fit_name(outcome), text);
      else
        same->first += ", " + fit_name(outcome);
    }
  });
  std::string all;
  for (const auto& [names, text] : lines) all += "  " + names + ": " + text + "\n";
  return all;
}

std::string stated_table(const FitReport& report, const Comparison& comparison) {
  const bool likelihood = is_likelihood(report);
  TextTable table(likelihood ? std::vector<std::string>{"Fit", "ln L", "df", "LR test"}
                             : std::vector<std::string>{"Fit", "r squared", "ccc^2", "PVE"});
  for_each_row(report, comparison, [&](const FitOutcome& outcome, const ComparedRow& row) {
    (likelihood ? add_likelihood : add_regression)(table, outcome, row);
  });
  return "\n" + table.text(1) + grouped_notes(report, comparison);
}

std::string winner_line(const FitReport& report, const Comparison& comparison) {
  if (!comparison.winner) return "";
  const auto& [row, significance, is_base] = *comparison.winner;
  const std::string name = fit_name(report.outcomes[row]);
  if (!is_base) return "\n  Best: " + name + ", significance " + percent(significance) + "\n";
  if (!comparison.has_tested_row())
    return "\n  No other model could be tested against " + name + "\n";
  return "\n  Best: " + name + ", as no tested model is better with a chance above 50 %\n";
}

std::string straightest_line(const FitReport& report, const Comparison& comparison) {
  const auto best = comparison.straightest();
  if (!best) return "";
  return "\n  Highest PVE: " + fit_name(report.outcomes[*best]) + ", " +
         percent(comparison.rows[*best].straightness->pve) + "\n";
}

std::string other_criteria(const FitReport& report, const Comparison& comparison) {
  TextTable table({"Other criteria", "AIC", "BIC"});
  bool any = false;
  for_each_row(report, comparison, [&](const FitOutcome& outcome, const ComparedRow& row) {
    if (!row.aic || !row.bic) return;
    any = true;
    table.add(
        {fit_name(outcome), format_number(*row.aic, "0.00"), format_number(*row.bic, "0.00")});
  });
  return any ? "\n" + table.text(1) : "";
}

}  // namespace

Comparison compared(const FitReport& report) {
  std::vector<ComparedFit> fits;
  for (const FitOutcome& outcome : report.outcomes)
    fits.push_back({outcome.request, quality_of(outcome)});
  return compare(report.sample, fits);
}

void add_comparison(JsonText& json, const FitReport& report, const Comparison& comparison) {
  json.key("method").string(report.outcomes.front().choice.method->command_name);
  add_totals(json, report.sample);
  json.key("rows").open('[');
  for_each_row(report, comparison, [&](const FitOutcome& outcome, const ComparedRow& row) {
    add_row(json, report, outcome, row);
  });
  json.close(']');
  add_winner(json, report, comparison);
  add_messages(json, report);
}

std::string comparison_table(const std::string& subject, const FitReport& report,
                             const Comparison& comparison) {
  std::string text = totals_line(subject, report.sample) + stated_table(report, comparison);
  if (!is_likelihood(report)) return text + straightest_line(report, comparison);
  return text + winner_line(report, comparison) + other_criteria(report, comparison);
}

}  // namespace tavlo::cli
