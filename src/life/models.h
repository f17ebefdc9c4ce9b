// The table of life models: all that is known of a model stands here once.
// Every floor reads it; nobody repeats a fact of it in a switch over codes.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace tavlo {

/// Only the low 11 bits of a model code count: bits 0-2 the X scale, bits 3-5
/// the Y scale, the rest a running number.
inline constexpr int model_mask = 2047;
inline constexpr int x_scale_mask = 7;
inline constexpr int y_scale_mask = 56;

namespace x_scale {
inline constexpr int linear = 1;
inline constexpr int log = 2;
}  // namespace x_scale

namespace y_scale {
inline constexpr int linear = 8;
inline constexpr int log = 16;
inline constexpr int normal = 24;
inline constexpr int weibull = 32;
inline constexpr int density = 40;  ///< reserved; nothing draws it
inline constexpr int gumbel = 48;
}  // namespace y_scale

namespace model_code {
inline constexpr std::int16_t weibull2 = 98;
inline constexpr std::int16_t weibull3 = 162;
inline constexpr std::int16_t weibull_batch = 226;
inline constexpr std::int16_t weibull4 = 290;
inline constexpr std::int16_t weibull5c = 354;
inline constexpr std::int16_t weibull5x = 418;
inline constexpr std::int16_t weibull7 = 482;
inline constexpr std::int16_t weibull_12_month = 546;
inline constexpr std::int16_t weibull_360_day = 610;
inline constexpr std::int16_t exponential = 674;
inline constexpr std::int16_t rayleigh = 738;
inline constexpr std::int16_t weibayes = 802;
inline constexpr std::int16_t normal = 857;
inline constexpr std::int16_t lognormal = 922;
inline constexpr std::int16_t lognormal3 = 986;
inline constexpr std::int16_t gumbel_lower = 1057;
inline constexpr std::int16_t gumbel_upper = 1137;
inline constexpr std::int16_t custom = 1152;
inline constexpr std::int16_t by_failure_mode = 1216;
}  // namespace model_code

namespace method_code {
inline constexpr std::int16_t x_on_y = 0;
inline constexpr std::int16_t mle = 1;
inline constexpr std::int16_t y_on_x = 2;
}  // namespace method_code

/// How a family's numbers are labelled and kept.
enum class Family { weibull, gumbel, normal, lognormal, none };

/// Which routine fits the model by regression or, where it has one, by MLE.
enum class FitRoutine { weibull, normal, gumbel, by_mode, mixture, lognormal3, custom };

/// The gates by name; models with as many parameters share one.
enum class Gate {
  two_parameters,
  three_parameters,
  four_parameters,
  five_parameters,
  seven_parameters,
  line,
  fixed_slope
};

/// When a fit is refused or doubted, by the number of failures n. A doubt is
/// raised once in a run. The words of the boxes stand with the actions.
struct SufficiencyGate {
  Gate id;
  double stop_below = 0;       ///< refused when n is below
  bool stop_at_limit = false;  ///< refused at the limit too (two parameters need n > 1)
  bool mle_always_passes = false;
  double doubt_below = 0;  ///< doubted when n is below; 0 is never
  int warned_flag = 0;     ///< bit that remembers an accepted doubt
};

struct Model {
  std::int16_t code;
  const char* short_name;     ///< as in fit names, "W"
  const char* long_name;      ///< as in fit names, "Weibull"
  const char* plain_name;     ///< as people call it in a text, "2-parameter Weibull"
  const char* command_name;   ///< as on the command line, "W2P"; empty where it has none
  int panel_row;              ///< option of the fit panel; -1 where it has none
  const char* panel_formula;  ///< plot and formula shown by the panel
  int solver_parameters;      ///< K of the mixture solver; 0 where it has none
  int free_parameters;        ///< that a fit determines; of one mode by failure mode
  std::span<const std::int16_t> contains;  ///< models that are special cases, largest first
  const char* box_label;                   ///< in the parameter box of a chart
  const char* size_label;                  ///< behind the fit's name in the log; may be empty
  double fixed_slope;                      ///< slope given by the model; 0 asks, -1 is free
  Family family;
  FitRoutine routine;
  const SufficiencyGate* gate;  ///< null: always passes

  int x_scale() const { return code & x_scale_mask; }
  int y_scale() const { return code & y_scale_mask; }
  bool fixes_slope() const { return fixed_slope >= 0; }
  /// True for a mixture: its populations share all units.
  bool has_shares() const { return rows() > 1 && free_parameters % 2 == 1; }
  /// True where the model has a routine for the method.
  bool is_fitted_by(int method) const;
  /// Populations: each takes a scale and a slope; a share or a minimum life is the odd one of
  /// the parameters. By failure mode there is one for each mode instead.
  int rows() const { return free_parameters < 2 ? 1 : free_parameters / 2; }
};

/// All models, in the order of their codes.
std::span<const Model> models();

/// The model of a code (its low 11 bits), or null.
const Model* find_model(int code);

/// The model whose option of the panel stands for a model: the model itself; the Weibayes for
/// a given slope without an option; null where there is none.
const Model* model_of_panel(const Model& model);

/// The model of a command-line name (any case), or null.
const Model* find_model_by_name(const std::string& name);

struct Method {
  std::int16_t code;
  const char* short_suffix;   ///< "/rr"
  const char* long_suffix;    ///< "(Rank Regression)"
  const char* plain_name;     ///< "regression"
  const char* command_name;   ///< "rr"
  const char* panel_caption;  ///< "Standard Regression"
};

/// The three methods, by code.
std::span<const Method> methods();
const Method* find_method(int code);
const Method* find_method_by_name(const std::string& name);

struct ModelNames {
  std::string short_name;  ///< "W/rr"
  std::string long_name;   ///< "Weibull(Rank Regression)"
};

/// Both names of a fit. An unknown code or method adds nothing.
ModelNames fs_ModelNames(int model_code, int method_code);

}  // namespace tavlo
