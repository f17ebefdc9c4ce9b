#include "life/models.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace tavlo {

namespace {

constexpr SufficiencyGate two_parameters = {
    .id = Gate::two_parameters, .stop_below = 1, .stop_at_limit = true, .mle_always_passes = true};
constexpr SufficiencyGate three_parameters = {
    .id = Gate::three_parameters, .stop_below = 3, .doubt_below = 21, .warned_flag = 4};
constexpr SufficiencyGate four_parameters = {
    .id = Gate::four_parameters, .stop_below = 4, .doubt_below = 30, .warned_flag = 8};
constexpr SufficiencyGate five_parameters = {
    .id = Gate::five_parameters, .stop_below = 5, .doubt_below = 40, .warned_flag = 16};
constexpr SufficiencyGate seven_parameters = {
    .id = Gate::seven_parameters, .stop_below = 7, .doubt_below = 50, .warned_flag = 32};
constexpr SufficiencyGate line = {.id = Gate::line, .stop_below = 2};
constexpr SufficiencyGate fixed_slope = {.id = Gate::fixed_slope, .stop_below = 1};

constexpr std::span<const std::int16_t> no_models = {};
constexpr std::array<std::int16_t, 1> only_weibull2 = {model_code::weibull2};
constexpr std::array<std::int16_t, 3> smaller_than_weibull7 = {
    model_code::weibull5c, model_code::weibull4, model_code::weibull2};

// code, short, long and plain name, command name, panel row and formula, K of the
// solver, free parameters, contained models, labels of box and size, fixed slope,
// family, routine, gate
constexpr std::array<Model, 19> table = {{
    {98, "W", "Weibull", "2-parameter Weibull", "W2P", 2, "X:Log, Y:Wbl =W1", 2, 2, no_models,
     "W2P", "", -1, Family::weibull, FitRoutine::weibull, &two_parameters},
    {162, "W3T", "3 Par Weibull (Min Life)", "3-parameter Weibull", "W3T", 3, "X:Log, Y:Wbl =W1-t0",
     3, 3, only_weibull2, "W3T", "3 Par", -1, Family::weibull, FitRoutine::mixture,
     &three_parameters},
    {226, "W3B", "Weibull Batch", "Batch Weibull", "W3B", 1, "X:Log, Y:Wbl =U1(W1)", 0, 3,
     no_models, "W3B", "", -1, Family::weibull, FitRoutine::mixture, &three_parameters},
    {290, "W4P", "4 Par Weibull: Competing Risk", "4-parameter Weibull", "W4P", 4,
     "X:Log, Y:Wbl =W1*W2", 4, 4, only_weibull2, "W4P", "4 Par", -1, Family::weibull,
     FitRoutine::mixture, &four_parameters},
    {354, "W5C", "5 Par Weibull: Competing Risk Mixture", "5-parameter Weibull", "W5C", 5,
     "X:Log, Y:Wbl =U1(W1*W2)+U2(W2)", 5, 5, only_weibull2, "W5C", "5c ", -1, Family::weibull,
     FitRoutine::mixture, &five_parameters},
    {418, "W5X", "5 Par Weibull: XOR Mixture", "5-parameter Weibull mixture", "W5X", 6,
     "X:Log, Y:Wbl =U1(W1)+U2(W2)", 0, 5, no_models, "W5X", "", -1, Family::weibull,
     FitRoutine::mixture, &five_parameters},
    {482, "W7P", "7 Par Weibull: Bathtub", "7-parameter Weibull", "W7P", 7,
     "X:Log, Y:Wbl =U1(W1*W2*W3)+U2(W2*W3)", 7, 7, smaller_than_weibull7, "W7P", "7 Par", -1,
     Family::weibull, FitRoutine::mixture, &seven_parameters},
    {546, "W", "Weibull (12 Month)", "2-parameter Weibull", "", -1, "", 0, 2, no_models, "W2P", "",
     -1, Family::weibull, FitRoutine::weibull, &two_parameters},
    {610, "W", "Weibull (360 day)", "2-parameter Weibull", "", -1, "", 0, 2, no_models, "W2P", "",
     -1, Family::weibull, FitRoutine::weibull, &two_parameters},
    {674, "E", "Exponential (beta=1)", "Exponential", "E", 12, "X:Log, Y:Wbl =W1 B=1", 0, 1,
     no_models, "E", "", 1, Family::weibull, FitRoutine::weibull, &fixed_slope},
    {738, "R", "RAYLEIGH (beta = 2)", "Rayleigh", "R", -1, "", 0, 1, no_models, "R", "", 2,
     Family::weibull, FitRoutine::weibull, &fixed_slope},
    {802, "Wb", "Weibayes (beta fixed)", "Weibayes", "Wb", 14, "X:Log, Y:Wbl =W1 B=fixed", 0, 1,
     no_models, "WB", "", 0, Family::weibull, FitRoutine::weibull, &fixed_slope},
    {857, "N", "Normal", "Normal", "N", 8, "X:Lin, Y:Nor =N1", 0, 2, no_models, "N", "", -1,
     Family::normal, FitRoutine::normal, &line},
    {922, "LN", "LogNormal", "Lognormal", "LN", 9, "X:Log, Y:Nor =N1", 0, 2, no_models, "L", "", -1,
     Family::lognormal, FitRoutine::normal, &line},
    {986, "LN3T", "LogNormal, min Life", "3-parameter lognormal", "", -1, "", 0, 3, no_models, "L",
     "", -1, Family::lognormal, FitRoutine::lognormal3, &three_parameters},
    {1057, "G-", "Gumbel Lower", "Gumbel of smallest values", "G-", 10, "X:Lin, Y:Wbl =G1", 0, 2,
     no_models, "G-", "", -1, Family::gumbel, FitRoutine::gumbel, &line},
    {1137, "G+", "Gumbel Upper", "Gumbel of largest values", "G+", 11, "X:Lin, Y:Gmb =G1", 0, 2,
     no_models, "G+", "", -1, Family::gumbel, FitRoutine::gumbel, &line},
    {1152, "C", "Custom", "Custom", "", 0, "", 0, 0, no_models, "WC", "", -1, Family::none,
     FitRoutine::custom, nullptr},
    {1216, "FM", "By Failure Mode", "Weibull by failure mode", "FM", 15, "X:Log, Y:Wbl=TBD", 0, 2,
     no_models, "WF", "", -1, Family::none, FitRoutine::by_mode, nullptr},
}};

constexpr std::array<Method, 3> method_table = {{
    {method_code::x_on_y, "/rr", "(Rank Regression)", "regression", "rr", "Standard Regression"},
    {method_code::mle, "/MLE", "(Max Liklihood)", "maximum likelihood", "mle",
     "Maximum Likelihood"},
    {method_code::y_on_x, "/rrs", "(Special Regression, Y on X)", "regression of Y on X", "rrs",
     "Special Regression"},
}};

bool same_word(const std::string& a, const char* b) {
  const std::string other = b;
  return std::equal(a.begin(), a.end(), other.begin(), other.end(), [](char left, char right) {
    return std::tolower(static_cast<unsigned char>(left)) ==
           std::tolower(static_cast<unsigned char>(right));
  });
}

}  // namespace

std::span<const Model> models() { return table; }

const Model* find_model(int code) {
  const auto found = std::find_if(table.begin(), table.end(), [code](const Model& model) {
    return model.code == (code & model_mask);
  });
  return found == table.end() ? nullptr : &*found;
}

const Model* model_of_panel(const Model& model) {
  if (model.panel_row >= 0) return &model;
  return model.fixes_slope() ? find_model(model_code::weibayes) : nullptr;
}

bool Model::is_fitted_by(int method) const {
  switch (routine) {
    case FitRoutine::weibull:
    case FitRoutine::by_mode: return true;
    case FitRoutine::mixture: return solver_parameters > 0;
    case FitRoutine::normal:
    case FitRoutine::gumbel: return method != method_code::mle;
    case FitRoutine::lognormal3:
    case FitRoutine::custom: break;
  }
  return false;
}

const Model* find_model_by_name(const std::string& name) {
  if (name.empty()) return nullptr;
  const auto found = std::find_if(table.begin(), table.end(), [&name](const Model& model) {
    return same_word(name, model.command_name);
  });
  return found == table.end() ? nullptr : &*found;
}

std::span<const Method> methods() { return method_table; }

const Method* find_method(int code) {
  if (code < 0 || code >= static_cast<int>(method_table.size())) return nullptr;
  return &method_table[static_cast<std::size_t>(code)];
}

const Method* find_method_by_name(const std::string& name) {
  const auto found =
      std::find_if(method_table.begin(), method_table.end(),
                   [&name](const Method& method) { return same_word(name, method.command_name); });
  return found == method_table.end() ? nullptr : &*found;
}

ModelNames fs_ModelNames(int model_code, int method_code) {
  ModelNames names;
  if (const Model* model = find_model(model_code)) {
    names.short_name = model->short_name;
    names.long_name = model->long_name;
  }
  if (const Method* method = find_method(method_code)) {
    names.short_name += method->short_suffix;
    names.long_name += method->long_suffix;
  }
  return names;
}

}  // namespace tavlo
