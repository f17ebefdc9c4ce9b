#include "actions/example_chart.h"

#include "actions/new_project.h"
#include "actions/shown_fits.h"
#include "analyses/monte_carlo.h"
#include "chart/compose/preview.h"
#include "files/point_list.h"
#include "fit/companion.h"
#include "fit/door/fit.h"
#include "numerics/unheard_reports.h"
#include "project/fit_records.h"
#include "project/ranking.h"

namespace tavlo {

namespace {

constexpr std::int32_t points = 40;

void put_points(Session& own, const WizardExample& example) {
  WichmannHill unused({1, 2, 3, 4});  // a precise sample takes no chances
  SamplePlan plan{.life = example.life, .size = points, .is_precise = true};
  DataSet& data = own.project.data(1);
  fill_data_set({draw_points(plan, unused, own.ports.entropy).rows(), {}, {}}, data);
  UnheardReports unheard;
  Make_Ranks(unheard.errors, true, data);
}

void put_line(Session& own, const WizardExample& example) {
  const DataSet& data = own.project.data(1);
  FitRequest request;
  request.model = example.shown_as;
  FitSet& fits = own.project.fits(1);
  if (example.shown_as == example.life.model) {
    fits.Fits.push_back(given_record(request, example.life, data.read_revision));
  } else {
    Companion companion;
    const FitAnswer answer = fit(data.sample(), request, companion);
    if (!answer.fit()) return;
    fits.Fits.push_back(record_of(request, *answer.fit(), {}, data.read_revision));
  }
  fits.nFits = 1;
  pick_fit(own, 1, 1);
}

}  // namespace

DrawingRecord example_chart(const Session& session, const WizardExample& example) {
  Session own(session.ports);
  own.settings = session.settings;
  own.project = begun_project(own);
  follow_records(own);
  put_points(own, example);
  put_line(own, example);
  Chart& chart = own.project.charts(1);
  chart.Boxes(chart_item::main_title).Text2 = example.tab;
  return preview_chart(own, chart);
}

}  // namespace tavlo
