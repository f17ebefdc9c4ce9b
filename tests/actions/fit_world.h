// A world whose first data set holds ranked points, and a person who asks for fits.
#pragma once

#include <algorithm>
#include <cmath>

#include "actions/dispatch.h"
#include "project/fit_records.h"
#include "project/ranking.h"
#include "support/test_world.h"

namespace tavlo::test {

struct FitWorld : TestWorld {
  explicit FitWorld(const std::vector<Point>& points) { put(points); }

  /// The points become the data set; its fits are out of date then.
  void put(const std::vector<Point>& points) {
    DataSet fresh = make_data(points);
    fresh.UniqueId = data().UniqueId;
    fresh.Title = "Data1";
    fresh.revision = data().revision + 1;
    Make_Ranks(session.errors, session.settings.Benard, fresh);
    data() = std::move(fresh);
    views.said.clear();
  }

  void fit(std::int16_t model = model_code::weibull2, std::int16_t method = method_code::x_on_y) {
    Fit_Distribution(session, 1, 1, model, method, true, true);
  }

  DataSet& data() { return session.gData(1); }
  FitPanel& panel() { return *session.gFitForm(1); }
  const Grid& grid() { return panel().grd_Fit; }
  const FitSet& fits() const { return session.gFit(1); }
  const FitResult& record(int slot) const { return session.gFit(1).Fits(slot); }
  std::string log() const { return session.log.plain(); }
};

/// Failures at the ranks of a part with infant failures, with a wear-out behind.
inline std::vector<Point> infant_and_wear_out() {
  std::vector<Point> points;
  for (int i = 1; i <= 60; ++i) {
    const double F = (i - 0.3) / 60.4;
    const bool infant = F < 0.2;
    const double own = infant ? F / 0.25 : (F - 0.15) / 0.85;
    points.push_back({infant ? 50 * std::pow(-std::log1p(-own), 1 / 1.5)
                             : 1000 * std::pow(-std::log1p(-own), 1 / 3.0)});
  }
  std::sort(points.begin(), points.end(), [](auto& a, auto& b) { return a.x < b.x; });
  return points;
}

}  // namespace tavlo::test
