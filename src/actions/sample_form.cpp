#include "actions/sample_form.h"

#include <algorithm>
#include <cmath>

#include "actions/sample_words.h"
#include "analyses/stated_life.h"
#include "numerics/number_text.h"
#include "numerics/rounding.h"
#include "numerics/value_text.h"

namespace tavlo {

namespace {

constexpr double too_large = 2147483646;
constexpr double most_points = 1000000;
constexpr int share_box = 2, first_box = 3, second_box = 4;
constexpr std::size_t boxes_a_row = 4;

constexpr ParameterBox normal_boxes[] = {{3, "mu", "100", true}, {4, "sigma", "10"}};
constexpr ParameterBox lognormal_boxes[] = {{3, "Med", "100", true}, {4, "sdF", "2"}};
constexpr ParameterBox gumbel_boxes[] = {{3, "Xi", "100", true}, {4, "Del", "10"}};
constexpr ParameterBox weibull2_boxes[] = {{3, "eta", "1000", true}, {4, "beta", "3"}};
constexpr ParameterBox weibull3_boxes[] = {
    {0, "tzero", "100", true}, {3, "eta", "1000", true}, {4, "beta", "3"}};
constexpr ParameterBox batch_boxes[] = {{2, "Batch %", ""}, {3, "eta", ""}, {4, "beta", "3"}};
constexpr ParameterBox weibull4_boxes[] = {
    {3, "eta", "5000", true}, {4, "beta", "0.5", true}, {7, "eta", "1000", true}, {8, "beta", "3"}};
constexpr ParameterBox weibull5_boxes[] = {{2, "u %", "20", true},   {3, "eta", "100", true},
                                           {4, "beta", "3", true},   {6, "u %", "80", true},
                                           {7, "eta", "1000", true}, {8, "beta", "3"}};
constexpr ParameterBox weibull7_boxes[] = {
    {2, "u %", "15", true},  {3, "eta", "100", true},   {4, "beta", "4", true},
    {6, "u %", "85", true},  {7, "eta", "5000", true},  {8, "beta", "1", true},
    {10, "u %", "80", true}, {11, "eta", "1000", true}, {12, "beta", "3", true},
};

constexpr std::array<SampledModel, 14> models_in_options = {{
    {"Normal", model_code::normal, "Normal", normal_boxes},
    {"LogNormal", model_code::lognormal, "LogNormal", lognormal_boxes},
    {"Gumbel-", model_code::gumbel_lower, "Gumbel -", gumbel_boxes},
    {"Gumbel+", model_code::gumbel_upper, "Gumbel +", gumbel_boxes},
    {"Rayleigh", model_code::rayleigh, "", {}},
    {"Exponential", model_code::exponential, "", {}},
    {"Weibayes", model_code::weibayes, "", {}},
    {"2 Par Weibull", model_code::weibull2, "W2P", weibull2_boxes},
    {"3T Weibull tzero", model_code::weibull3, "W3T", weibull3_boxes},
    {"3B Batch Mixture", model_code::weibull_batch, "", batch_boxes},
    {"4 Competing Risk", model_code::weibull4, "W4P", weibull4_boxes},
    {"5C Competing Risk Mixture", model_code::weibull5c, "W5P", weibull5_boxes},
    {"5X Exclusive OR Mixture", model_code::weibull5x, "", weibull5_boxes},
    {"7 Par Weibull", model_code::weibull7, "W7P", weibull7_boxes},
}};

const SampledModel& sampled_model(std::int16_t code) {
  return *std::find_if(models_in_options.begin(), models_in_options.end(),
                       [code](const SampledModel& model) { return model.code == code; });
}

/// Reads the texts of a form as a person means them; the first fault is told in a box.
class FormReader {
 public:
  FormReader(Session& session, const SampleForm& form) : session_(session), form_(form) {}

  std::optional<RunPlan> plan() {
    RunPlan plan;
    SamplePlan& sample = plan.sample;
    if (!read_size(sample.size) || !read_runs(plan.runs) || !read_group(plan.inspections))
      return std::nullopt;
    sample.life = life();
    sample.is_precise = form_.is_precise;
    sample.ranks = session_.settings.Benard ? RankKind::benard : RankKind::exact;
    sample.method = form_.method;
    sample.suspensions = suspensions();
    plan.fits = form_.fits;
    if (!can_be_sampled(plan)) return std::nullopt;
    return plan;
  }

  TableRows table() const {
    const SampledModel& model = sampled_model(form_.model);
    std::vector<ParameterBox> columns;
    for (const ParameterBox& box : model.boxes)
      if (box.index <= second_box) columns.push_back(box);
    // The minimum life stands behind the parameters of the line.
    if (!columns.empty() && columns.front().index == 0)
      std::rotate(columns.begin(), columns.begin() + 1, columns.end());
    const std::vector<FitParam> populations = life().rows;
    TableRows rows = {{"Model"}};
    if (populations.size() > 1) rows[0].push_back("Sub-Pop");
    for (const ParameterBox& box : columns)
      rows[0].push_back(box.index == share_box ? "u%" : box.label);
    for (std::size_t k = 0; k < populations.size(); ++k) {
      std::vector<std::string>& cells = rows.emplace_back();
      cells.push_back(k == 0 ? model.log_name : "");
      if (populations.size() > 1) cells.push_back(fs_BitList(populations[k].Applies));
      for (const ParameterBox& box : columns)
        cells.push_back(number_text(number(parameter_text(box.index, k))));
    }
    return rows;
  }

 private:
  double number(const std::string& text) const {
    return fd_Str2Dbl(session_.errors, text, session_.settings.punctuation);
  }

  /// Of population k, from 0.
  const std::string& parameter_text(int box, std::size_t k) const {
    return form_.parameters[static_cast<std::size_t>(box) + boxes_a_row * k];
  }

  bool refuse(const std::string& why) const {
    refuse_sample(session_, why);
    return false;
  }

  static bool is_blank(const std::string& text) {
    return text.find_first_not_of(' ') == std::string::npos;
  }

  /// What isn't would be read as far as it is one, or as 0.
  static bool is_number(const std::string& text) {
    return text.find_first_of("0123456789") != std::string::npos &&
           text.find_first_not_of("0123456789+-., eEkKmMgGtTpP%") == std::string::npos;
  }

  /// Below 1 is a size too: the sample is empty.
  bool read_size(std::int32_t& size) const {
    const double points = round_half_even(std::abs(number(form_.size)));
    if (!is_blank(form_.size) && !is_number(form_.size))
      return refuse("\"" + form_.size + "\" is no sample size.");
    if (!(points <= too_large)) return refuse("Sample Size must be less than 2.0E09");
    if (points > most_points)
      return refuse("A sample has at most 1,000,000 points here.  tavlo-cli sample writes more.");
    size = static_cast<std::int32_t>(points);
    return true;
  }

  bool read_runs(std::int32_t& runs) const {
    if (is_blank(form_.runs)) return true;
    const double count = number(form_.runs);
    if (!is_number(form_.runs) || count != std::floor(count) || count < 1 || count > most_runs)
      return refuse("The number of runs is a whole number from 1 to 100,000.");
    runs = static_cast<std::int32_t>(count);
    return true;
  }

  bool read_group(Inspections& inspections) const {
    std::vector<double> times;
    if (!is_list(form_.group)) return false;
    for (const std::string& token : tokens(form_.group)) times.push_back(number(token));
    if (!std::all_of(times.begin(), times.end(), is_inspection))
      return refuse(
          "Inspections are times above 0: one as an interval, or several, as "
          "\"100 200 400\".");
    if (!times.empty()) inspections = inspections_of(times);
    return true;
  }

  /// Of a model that is sampled.
  std::vector<StatedRow> stated_rows() const {
    std::vector<StatedRow> rows(static_cast<std::size_t>(find_model(form_.model)->rows()));
    for (std::size_t k = 0; k < rows.size(); ++k) {
      const auto at = [&](int box) { return stated(parameter_text(box, k)); };
      rows[k] = {at(share_box), at(first_box), at(second_box)};
    }
    return rows;
  }

  double minimum_life() const {
    return form_.model == model_code::weibull3 ? number(form_.parameters[0]) : 0;
  }

  Life life() const {
    const Model& model = *find_model(form_.model);
    if (!is_sampled(model.code)) return {model.code, {}};
    return stated_life(model, stated_rows(), minimum_life());
  }

  std::optional<double> stated(const std::string& text) const {
    return is_number(text) ? std::optional(number(text)) : std::nullopt;
  }

  SuspensionPlan suspensions() const {
    const auto count = [&](std::size_t box) { return whole(number(form_.suspensions[box])); };
    SuspensionPlan plan;
    plan.left = count(SampleForm::left);
    for (const std::string& token : tokens(form_.suspensions[SampleForm::points]))
      plan.points.push_back(std::abs(whole(number(token))));
    plan.right = count(SampleForm::right);
    plan.right_at_last_failure = form_.right_at_last_failure;
    plan.random = count(SampleForm::random);
    return plan;
  }

  static std::int32_t whole(double number) {
    return std::abs(number) < too_large ? ToInt32(number) : 0;
  }

  static std::vector<std::string> tokens(const std::string& text) {
    std::vector<std::string> found;
    for (std::size_t start = 0; start < text.size();) {
      const std::size_t end = std::min(text.find(' ', start), text.size());
      if (end > start) found.push_back(text.substr(start, end - start));
      start = end + 1;
    }
    return found;
  }

  bool are_numbers() const {
    for (const ParameterBox& box : sampled_model(form_.model).boxes) {
      const std::string& text = form_.parameters[static_cast<std::size_t>(box.index)];
      if (!is_blank(text) && !is_number(text)) return refuse("\"" + text + "\" is no number.");
    }
    return true;
  }

  bool are_suspensions() const {
    for (const auto box : {SampleForm::left, SampleForm::right, SampleForm::random})
      if (const std::string& text = form_.suspensions[box]; !is_blank(text) && !is_number(text))
        return refuse("\"" + text + "\" is no number of suspensions.");
    return is_list(form_.suspensions[SampleForm::points]);
  }

  /// A comma in a list parts numbers for one and thousands for another.
  bool is_list(const std::string& text) const {
    for (const std::string& token : tokens(text)) {
      const bool is_decimal = session_.settings.punctuation.DecimalPoint == ',';
      if (!is_decimal && token.find(',') != std::string::npos)
        return refuse("\"" + token + "\" may mean two things: part the numbers by blanks.");
      if (!is_number(token)) return refuse("\"" + token + "\" is no number.");
    }
    return true;
  }

  /// Kept as people know it: a model that is not sampled gives the points 1 to N.
  bool can_be_sampled(RunPlan& plan) const {
    const Model& model = *find_model(form_.model);
    if (!is_sampled(model.code)) {
      if (plan.runs > 1) return refuse(words_of(LifeFault::model, model) + ".");
      if (sampled_model(model.code).boxes.empty())
        session_.ports.prompts.show({"", "sample not programmed in cmd_sample.click"});
      return true;
    }
    if (!are_numbers() || !are_suspensions()) return false;
    if (const auto fault = fault_of(model, stated_rows(), minimum_life()))
      return refuse(words_of(*fault, model) + ".");
    if (plan.runs == 1) return true;
    if (plan.sample.size < 1) return refuse("The sample of a run has at least 1 point.");
    if (form_.is_precise)
      return refuse("Runs are made of samples by chance: precise ones are all the same.");
    if (plan.fits.empty()) plan.fits.push_back(usual_fit(model));
    return true;
  }

  /// The model of the sample by the method of the panel.
  FitRequest usual_fit(const Model& model) const {
    FitRequest request;
    request.model = model.code;
    request.method = form_.method;
    return request;
  }

  Session& session_;
  const SampleForm& form_;
};

}  // namespace

std::span<const SampledModel> sampled_models() { return models_in_options; }

void refuse_sample(Session& session, const std::string& why) {
  session.ports.prompts.show({"Monte Carlo", why, BoxIcon::exclamation, BoxButtons::ok});
}

std::optional<RunPlan> plan_of(Session& session, const SampleForm& form) {
  return FormReader(session, form).plan();
}

void enter_seeds(Session& session, std::array<std::string, WichmannHill::streams>& seeds,
                 WichmannHill& random) {
  for (std::size_t i = 0; i < seeds.size(); ++i) {
    double n = fd_Str2Dbl(session.errors, seeds[i], session.settings.punctuation);
    if (!(std::abs(n) < too_large)) n = too_large;
    seeds[i] = number_text(n);
    random.enter(static_cast<int>(i), n);
  }
}

bool is_seed(Session& session, const std::string& text) {
  return fd_Str2Dbl(session.errors, text, session.settings.punctuation) >= 1;
}

TableRows table_of(Session& session, const SampleForm& form) {
  return FormReader(session, form).table();
}

}  // namespace tavlo
