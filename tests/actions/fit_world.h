// A world whose first data set holds ranked points, and a person who asks for fits.
#pragma once

#include "actions/announce.h"
#include "actions/dispatch.h"
#include "project/fit_records.h"
#include "project/ranking.h"
#include "support/random_samples.h"
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
    announce(session);
    views.said.clear();
  }

  void fit(std::int16_t model = model_code::weibull2, std::int16_t method = method_code::x_on_y) {
    Fit_Distribution(session, 1, 1, model, method, true, true);
  }

  const Grid& grid() {
    announce(session);
    return panel().grd_Fit;
  }
  const FitSet& fits() const { return session.project.fits(1); }
  const FitResult& record(int slot) const { return session.project.fits(1).Fits(slot); }
};

/// Infant failures of a part, with a wear-out behind.
inline std::vector<Point> infant_and_wear_out() {
  RandomNumbers random(1);
  std::vector<Point> points;
  for (const SampleRow& row : draws(random, weibull5c(3, 1000, 1.5, 50, 0.15), 60))
    points.push_back({row.time});
  return points;
}

}  // namespace tavlo::test
