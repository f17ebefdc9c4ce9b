#include "files/foreign_old_data.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "files/foreign_content.h"
#include "files/text_lines.h"
#include "numerics/number_text.h"

namespace tavlo {

namespace {

constexpr std::size_t kinds = 8;    ///< of rows of parameters
constexpr std::size_t methods = 4;  ///< of each; the first has no fit
using Parameters = std::array<double, 8>;

/// Where a population stands among the parameters. Its share is `constant` plus `factor`
/// times the parameter `share`.
struct Population {
  std::size_t inverse_scale;
  std::size_t shape;
  double constant = 1;
  double factor = 0;
  std::size_t share = 0;
  std::size_t t0 = 0;  ///< 0 is none
};

struct OldModel {
  std::size_t kind;
  std::int16_t model;
  std::vector<Population> populations;
};

/// The kinds that have a model, in the order in which their fits are to stand.
const std::vector<OldModel>& old_models() {
  static const std::vector<OldModel> table = {
      {2, model_code::weibull2, {{2, 1}}},
      {3, model_code::weibull3, {{2, 1, 1, 0, 0, 3}}},
      {4, model_code::weibull4, {{2, 1}, {4, 3}}},
      {5, model_code::weibull5c, {{4, 3, 0, 1, 5}, {2, 1, 1, -1, 5}}},
      {7, model_code::weibull7, {{6, 5, 0, 1, 7}, {2, 1, 1, -1, 7}, {4, 3, 0}}}};
  return table;
}

std::string lower_case(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return lower;
}

class OldData {
 public:
  explicit OldData(ProjectReader& file) : file_(file) {}

  ForeignContent read() {
    while (read_section()) {
    }
    return std::move(content_);
  }

 private:
  bool read_section();
  void read_parameters();
  void read_parameter_row();
  FitResult fit_of(const OldModel& model, const Parameters& t) const;
  double inverse(double number) const;
  void read_titles();
  void read_points();
  SampleRow read_point();

  ProjectReader& file_;
  ForeignContent content_;
  std::array<std::array<std::optional<FitResult>, methods>, kinds> fits_;
  bool behind_points_ = false;
};

/// False at the end.
bool OldData::read_section() {
  if (file_.at_end() && content_.points) return false;
  const std::string line = lower_case(trimmed(file_.line("line 'end'")));
  if (behind_points_) refuse_point_too_many(file_, line);
  behind_points_ = false;
  if (line.starts_with("tavlo parameters")) read_parameters();
  if (line == "plot data") read_titles();
  if (line.starts_with("xydata")) read_points();
  return line != "end";
}

void OldData::read_parameters() {
  constexpr int rows = 15;
  for (int i = 0; i < rows; ++i) read_parameter_row();
  std::vector<FitResult>& fits = content_.fits.emplace();
  for (const OldModel& model : old_models())
    for (const auto& fit : fits_[model.kind])
      if (fit) fits.push_back(*fit);
}

void OldData::read_parameter_row() {
  std::int16_t kind = 0, method = 0, state = 0;
  Parameters t{};
  file_.values(kind, method, state);
  for (double& each : t) file_.value(each);
  const auto row = static_cast<std::size_t>(kind), column = static_cast<std::size_t>(method);
  if (row >= kinds || column >= methods)
    file_.refuse(run_time::subscript, "there are no parameters " + std::to_string(kind) + "," +
                                          std::to_string(method) + " (0,0 to 7,3)");
  fits_[row][column].reset();
  for (const OldModel& model : old_models()) {
    if (model.kind != row || method < 1 || state < 1) continue;
    FitResult& fit = fits_[row][column].emplace(fit_of(model, t));
    fit.Method = fit.request.method = static_cast<std::int16_t>(method - 1);
    if (state == 1) fit.Status = FitStatus::calculated;
  }
}

FitResult OldData::fit_of(const OldModel& model, const Parameters& t) const {
  Life life{model.model, {}};
  for (const Population& at : model.populations)
    life.rows.push_back({inverse(t[at.inverse_scale]), at.constant + at.factor * t[at.share],
                         t[at.shape], at.t0 == 0 ? 0.0 : t[at.t0], 1});
  FitResult fit = foreign_fit(life);
  fit.Quality = t[0];
  return fit;
}

double OldData::inverse(double number) const {
  const std::string words = "there is no scale of 1 / " + number_text(number);
  if (number == 0.0) file_.refuse(run_time::division_by_zero, words);
  if (!std::isfinite(1.0 / number)) file_.refuse(run_time::overflow, words);
  return 1.0 / number;
}

void OldData::read_titles() {
  constexpr const char* kind = "line of the plot data";
  file_.line(kind);
  file_.line(kind);
  for (const int item :
       {chart_item::main_title, chart_item::sub_title, chart_item::y_title, chart_item::x_title})
    content_.titles[item] = foreign_words(file_.word());
  file_.line(kind);
}

void OldData::read_points() {
  constexpr std::size_t least_bytes = 4;  // "1,1" and a line end
  std::int32_t number = 0, unused = 0;
  file_.values(number, unused);
  require_room(file_, number, least_bytes, "points");
  std::vector<SampleRow>& points = content_.points.emplace();
  points.reserve(static_cast<std::size_t>(number));
  for (; number > 0; --number) points.push_back(read_point());
  behind_points_ = true;
}

SampleRow OldData::read_point() {
  double x = 0, y = 0;
  file_.value(x);
  const float time = file_.single(x);
  file_.value(y);
  file_.single(y);  // a rank is one of 32 bits too
  const bool failed = x > 0.0 && y > 0.0 && y < 1.0;
  return {std::fabs(time), failed ? 1.0 : 0.0, failed ? 0.0 : 1.0, 0};
}

}  // namespace

std::optional<NumberedFault> read_old_data(std::string_view bytes, Project& project) {
  ForeignContent content;
  auto fault = read_foreign(bytes, [&](ProjectReader& file) { content = OldData(file).read(); });
  if (!fault) store(std::move(content), project);
  return fault;
}

}  // namespace tavlo
