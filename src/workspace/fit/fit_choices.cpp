#include "workspace/fit/fit_choices.h"

#include <algorithm>
#include <array>

#include "actions/intake.h"

namespace tavlo {

namespace {

constexpr std::array<ModelOption, 16> options = {{
    {0, "C", "Custom", "Custom model for other distributions"},
    {1, "3&b", "Batch (MLE, many late suspensions)", "Only a part of all units can fail this way"},
    {2, "&2", "2 Parameter Weibull (Standard)", "Standard Weibull for most situations"},
    {3, "&3t", "3 Par Weibull (Min Life)", "Weibull with a time before which nothing fails"},
    {4, "&4", "Competing Risk", "Two failure modes act on every unit"},
    {5, "&5c", "Competing Risk Mixture", "Two failure modes, one of them on a part of the units"},
    {6, "5x", "XOR Mixture", "Two kinds of units, each with a failure mode of its own"},
    {7, "&7", "Weibull BathTub", "Infant mortality, chance and wear-out together"},
    {8, "&N", "Normal Distribution", "Normal distribution on a linear time scale"},
    {9, "&LN", "Log Normal", "Normal distribution of the logarithm of time"},
    {10, "&G-", "Gumbel Lower -", "Smallest of many values"},
    {11, "G+", "Gumbel Upper +", "Largest of many values"},
    {12, "E&xp", "Exponential: Slope = 1", "Weibull with the slope fixed at 1: chance failures"},
    {13, "?", "Click for Help choosing Model", "Help in choosing a model"},
    {14, "&1", "Weibayes: Fix Slope", "Weibull with a slope that you know: few failures"},
    {15, "F", "By Failure Mode", "One Weibull for each failure mode"},
}};

struct MethodWords {
  const char* status;
  const char* menu;
};

constexpr std::array<MethodWords, 3> method_words = {{
    {"Method: RR: XonY", "RR: Rank Regression (Standard X on Y)"},
    {"Method: MLE", "MLE: Maximum Likelihood Estimate"},
    {"Method: RRS: YonX Special", "RRS:Special Rank Regression (Y on X)"},
}};

const MethodWords& words_of(int method) {
  return method_words[static_cast<std::size_t>(std::clamp(method, 0, 2))];
}

/// A choice in an empty project calculates nothing; a box that says so at each
/// click would only be in the way.
void calculate_at_once(Session& session, int fit_index) {
  const DataSheet& sheet = *session.gDataForm(session.gFitForm(fit_index)->data_index);
  const bool has_entries = sheet.last_row() > 0 || sheet.editing();
  if (session.settings.QuickCalculation && has_entries) CheckAndFit(session, fit_index);
}

}  // namespace

std::span<const ModelOption> model_options() { return options; }

const Model* model_of_option(int index) {
  const auto all = models();
  const auto found = std::find_if(all.begin(), all.end(),
                                  [index](const Model& model) { return model.panel_row == index; });
  return found == all.end() ? nullptr : &*found;
}

Reasoned what_of_option(const ModelOption& option, int method) {
  const std::string name = std::string(option.label) + "\n" + option.tool_tip;
  const Model* model = model_of_option(option.index);
  if (!model) return {name, true};
  const std::string why = why_not_fitted(*model, method);
  return {why.empty() ? name : name + "\n" + why, why.empty()};
}

std::string why_not_fitted(const Model& model, int method) {
  const auto all = methods();
  if (std::none_of(all.begin(), all.end(),
                   [&](const Method& each) { return model.is_fitted_by(each.code); }))
    return "This version can't fit it.";
  const Method* chosen = find_method(method);
  if (!chosen || model.is_fitted_by(chosen->code)) return {};
  return std::string("This version can't fit it by ") + chosen->plain_name + ".";
}

int option_of(const FitChoices& panel) {
  const Model* model = find_model(panel.nModel);
  const Model* shown = model ? model_of_panel(*model) : nullptr;
  return shown ? shown->panel_row : -1;
}

void choose_model(Session& session, int fit_index, int option) {
  FitPanel& panel = *session.gFitForm(fit_index);
  const Model* model = model_of_option(option);
  if (panel.busy || !model) return;
  panel.nModel = model->code;
  panel.txt_Custom = model->panel_formula;
}

void choose_method(Session& session, int fit_index, std::int16_t method) {
  FitPanel& panel = *session.gFitForm(fit_index);
  if (!panel.busy && find_method(method)) panel.nMethod = method;
}

void opt_Model_Click(Session& session, int fit_index, int option) {
  if (!model_of_option(option)) return;
  choose_model(session, fit_index, option);
  calculate_at_once(session, fit_index);
}

void opt_Method_Click(Session& session, int fit_index, std::int16_t method) {
  if (!find_method(method)) return;
  choose_method(session, fit_index, method);
  calculate_at_once(session, fit_index);
}

void chk_Censored_Click(Session& session, int fit_index, bool checked) {
  FitPanel& panel = *session.gFitForm(fit_index);
  if (panel.busy) return;
  panel.censored = checked;
}

const char* method_status(int method) { return words_of(method).status; }

const char* censored_status(bool checked) {
  return checked ? "Censored: suspensions take part in the likelihood"
                 : "Suspensions are left out of the likelihood of a mixture";
}

const char* method_menu_caption(int method) { return words_of(method).menu; }

}  // namespace tavlo
