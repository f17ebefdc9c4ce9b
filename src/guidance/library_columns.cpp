#include "guidance/library_columns.h"

#include "guidance/choice_lists.h"

namespace tavlo {

std::span<const char* const> column_kinds() {
  static constexpr const char* kinds[] = {"Data from Analysis", "ONLY List items below are allowed",
                                          "List, or user entry", "List, plus any in data file"};
  return kinds;
}

std::span<const char* const> analysis_sources() {
  static constexpr const char* names[] = {"Path",
                                          "FileName",
                                          "Path\\FileName",
                                          "Chart Title",
                                          "Chart Sub-Title",
                                          "Date",
                                          "Model(LN, W2, W3...)",
                                          "Method(RRX, MLE)",
                                          "Fit(Rsq, LogLikelihood)",
                                          "PVE",
                                          "Confidence",
                                          "Units X axis",
                                          "Mixture population, u",
                                          "-----Typ value (mean,Char Life)-----",
                                          "Infant Mortality Typ Value",
                                          "Chance Typical Lo\\Med\\Hi Value",
                                          "Chance Lo Typical value",
                                          "Chance Typical value",
                                          "Chance Hi Typical value",
                                          "Wearout Char Life",
                                          "Min Life Lo\\Med\\Hi",
                                          "Min Life Lo",
                                          "Min Life",
                                          "Min Life Hi",
                                          "----Variation-(Std Dev, Beta)-------",
                                          "Infant Mortality Variation",
                                          "Chance Lo\\Med\\Hi",
                                          "Chance Lo Variation",
                                          "Chance Variation",
                                          "Chance Hi Variation",
                                          "Wearout Variation",
                                          "----Failures, Population size-------",
                                          "Number in Population, n",
                                          "Number of Occurrences, o",
                                          "Number of Suspensions, s",
                                          "n/s",
                                          "o/s"};
  return names;
}

bool is_heading(AnalysisSource source) {
  return analysis_sources()[static_cast<std::size_t>(source)][0] == '-';
}

namespace {

using Source = AnalysisSource;

LibraryColumn taken_from(const char* name, std::initializer_list<Source> sources) {
  LibraryColumn column{name, ColumnKind::from_analysis};
  for (const Source source : sources)
    column.Items.emplace_back(analysis_sources()[static_cast<std::size_t>(source)]);
  return column;
}

LibraryColumn chosen_for(const char* name) {
  LibraryColumn column{name, ColumnKind::list_or_entry};
  if (const ChoiceList* const list = find_choice_list(name))
    column.Items.assign(list->items.begin(), list->items.end());
  return column;
}

}  // namespace

// A fit of several populations fills its row from each that it has.
std::vector<LibraryColumn> default_columns() {
  return {taken_from("Path/File", {Source::path_and_name}),
          taken_from("Title", {Source::chart_title}),
          taken_from("Date", {Source::date}),
          chosen_for("Device"),
          chosen_for("Equipment"),
          chosen_for("Cause"),
          chosen_for("Duty"),
          chosen_for("Environment"),
          taken_from("Model", {Source::model, Source::method}),
          taken_from("Fit", {Source::quality}),
          taken_from("Confidence", {Source::confidence}),
          taken_from("Units", {Source::units}),
          taken_from("Typical(Lo/Med/Hi)", {Source::infant_typical, Source::chance_typical_range,
                                            Source::wearout_typical}),
          taken_from("Variability(Lo/Med/Hi)",
                     {Source::infant_variation, Source::chance_variation_range,
                      Source::wearout_variation}),
          taken_from("t0 (Lo/Med/Hi)", {Source::minimum_range}),
          chosen_for("Comment1"),
          chosen_for("Comment2"),
          chosen_for("Comment3"),
          chosen_for("Comment4"),
          taken_from("n/s", {Source::tested_and_suspended})};
}

}  // namespace tavlo
