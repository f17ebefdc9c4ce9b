#include "actions/shown_parameters.h"
#include "cli/fit_report.h"
#include "cli/json_text.h"

namespace tavlo::cli {

namespace {

Json rows_json(const FitResult& fit, const Model& model) {
  const ParameterNames& names = parameter_names(model.family);
  Json rows = Json::array();
  for (int i = 1; i <= fit.nRows; ++i) {
    const FitParam& row = fit.Rows(i);
    const ShownParameters shown = grid_parameters(fit.ModelCode, row);
    rows.push_back({{names.first_key, json_number(shown.first)},
                    {names.second_key, json_number(shown.second)},
                    {"t0", json_number(row.T0)},
                    {"fraction", json_number(row.Fraction)},
                    {"applies", row.Applies}});
  }
  return rows;
}

Json points_json(const std::vector<LifePoint>& points, bool time_first) {
  Json list = Json::array();
  for (const LifePoint& point : points) {
    const auto answer = [&point](double value) {
      return point.known ? json_number(value) : Json(nullptr);
    };
    list.push_back(time_first ? Json{{"x", json_number(point.x)}, {"p", answer(point.p)}}
                              : Json{{"p", json_number(point.p)}, {"x", answer(point.x)}});
  }
  return list;
}

/// How sure the answer of a mixture is.
Json starts_json(const OldStartsReport& starts) {
  return {{"tried", starts.tried},
          {"agreed", starts.agreed},
          {"runner_up", starts.has_runner_up ? json_number(starts.runner_up) : Json(nullptr)},
          {"interior_maximum", starts.interior_maximum},
          {"sound", starts.sound}};
}

void add_result(Json& object, const FitReport& report, const FitResult& fit, const Model& model) {
  if (has_censored_likelihood(report.session, fit))
    object["name"] = object.at("name").get<std::string>() + "c";
  const bool likelihood = fit.Method == method_code::mle;
  const Json quality = json_number(fit.Quality);
  object["status"] = 1;
  object["quality"] = quality;
  // The quality of a fit by failure mode is that of its last mode, of either kind.
  const bool one_kind = model.family != Family::none;
  object["r_squared"] = one_kind && !likelihood ? quality : Json(nullptr);
  object["log_likelihood"] = one_kind && likelihood ? quality : Json(nullptr);
  if (fit.starts) object["starts"] = starts_json(*fit.starts);
  object["rows"] = rows_json(fit, model);
  object["b_life"] =
      points_json(b_lives(report.session, report.file, fit, report.arguments.b_life), false);
  object["at"] =
      points_json(fractions_at(report.session, report.file, fit, report.arguments.at), true);
}

Json outcome_json(const FitReport& report, const FitOutcome& outcome) {
  const auto& [model, method] = outcome.choice;
  Json object;
  object["model"] = command_name(*model);
  object["code"] = model->code;
  object["method"] = method->command_name;
  object["name"] = fs_ModelNames(model->code, method->code).short_name;
  if (outcome.slot != 0) {
    add_result(object, report, report.session.gFit(1).Fits(outcome.slot), *model);
  } else {
    object["status"] = 0;
    object["error"] = outcome.error;
  }
  return object;
}

}  // namespace

std::string fit_json(const FitReport& report) {
  const DataSet& data = report.session.gData(1);
  Json object;
  object["file"] = report.file;
  object["set"] = data.Title;
  add_totals(object, data);
  object["fits"] = Json::array();
  for (const FitOutcome& outcome : report.outcomes)
    object["fits"].push_back(outcome_json(report, outcome));
  object["messages"] = messages_json(report.prompts.seen());
  return one_line_json(object);
}

}  // namespace tavlo::cli
