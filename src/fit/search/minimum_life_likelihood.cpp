#include "fit/search/minimum_life_likelihood.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "numerics/pack_math.h"

namespace tavlo {
namespace {

using namespace minimum_life_variable;

constexpr std::size_t pairs = 6;

/// Lower triangle by rows: bb, eb, ee, db, de, dd.
struct Sums {
  double value = 0;
  std::array<double, count> g{};
  std::array<double, pairs> h{}, products{};
};

struct PackSums {
  Pack value{0.0};
  std::array<Pack, count> g{};
  std::array<Pack, pairs> h{}, products{};

  TAVLO_PACKED void add(Pack w, Pack v, const std::array<Pack, count>& by,
                        const std::array<Pack, pairs>& by_two) {
    value = value + w * v;
    for (std::size_t i = 0, k = 0; i < count; ++i) {
      g[i] = g[i] + w * by[i];
      for (std::size_t j = 0; j <= i; ++j, ++k) {
        h[k] = h[k] + w * by_two[k];
        products[k] = products[k] + w * by[i] * by[j];
      }
    }
  }

  void settle(Sums& to) {
    to.value += sum(value);
    for (std::size_t i = 0; i < count; ++i) to.g[i] += sum(g[i]);
    for (std::size_t k = 0; k < pairs; ++k) {
      to.h[k] += sum(h[k]);
      to.products[k] += sum(products[k]);
    }
    *this = {};
  }
};

/// One time beyond t0: z = beta (ln(t - t0) - ln eta) and what its derivatives need.
struct Row {
  Pack log_rest, z, hazard, near, bend;

  TAVLO_PACKED Row(Pack time, double distance, double beta, double log_life)
      : log_rest(ln(time + distance)),
        z((log_rest - log_life) * beta),
        hazard(exp_within(-700, z, 700)),
        near(Pack(distance) / (time + distance)),
        bend(near - near * near) {}

  /// `slope` and `curve` are the derivatives by z of what the row adds.
  TAVLO_PACKED void add(Pack w, Pack value, Pack slope, Pack curve, double beta, bool failed,
                        PackSums& sums) const {
    const Pack zd = near * beta;
    const Pack own = failed ? 1.0 : 0.0;
    sums.add(w, value, {slope * z + own, slope * -beta, slope * zd - own * near},
             {curve * z * z + slope * z, (curve * z + slope) * -beta, curve * (beta * beta),
              (curve * z + slope) * zd, curve * zd * -beta,
              curve * zd * zd + slope * bend * beta - own * bend});
  }
};

}  // namespace

MinimumLifeLikelihood::MinimumLifeLikelihood(TimesFromFirst times) : times_(std::move(times)) {
  times_.failures.pad();
  times_.suspensions.pad();
}

bool MinimumLifeLikelihood::shape_at(const SmallVector& q, LocalShape& shape) const {
  const double beta = std::exp(q[ln_beta]);
  const double distance = std::exp(q[ln_distance]);
  Sums sums;
  const auto walk = [&](const WeightedRows& rows, auto&& add) {
    constexpr std::size_t block = 64 * Pack::lanes;
    for (std::size_t from = 0; from < rows.x.size(); from += block) {
      PackSums part;
      for (std::size_t i = from; i < std::min(from + block, rows.x.size()); i += Pack::lanes)
        add(Pack::load(&rows.x[i]), Pack::load(&rows.w[i]), part);
      part.settle(sums);
    }
  };
  walk(times_.failures, [&](Pack time, Pack w, PackSums& part) {
    const Row row(time, distance, beta, q[ln_eta]);
    row.add(w, row.z + q[ln_beta] - row.hazard - row.log_rest, 1.0 - row.hazard, -row.hazard, beta,
            true, part);
  });
  walk(times_.suspensions, [&](Pack time, Pack w, PackSums& part) {
    const PackMask at_risk = time + distance > Pack(0.0);
    const Row row(select(at_risk, time, 1.0), distance, beta, q[ln_eta]);
    row.add(select(at_risk, w, 0.0), -row.hazard, -row.hazard, -row.hazard, beta, false, part);
  });
  shape.value = -sums.value;
  bool sound = std::isfinite(shape.value);
  for (std::size_t i = 0, k = 0; i < count; ++i) {
    shape.gradient[i] = -sums.g[i];
    for (std::size_t j = 0; j <= i; ++j, ++k) {
      shape.hessian(i, j) = shape.hessian(j, i) = -sums.h[k];
      shape.products(i, j) = shape.products(j, i) = sums.products[k];
      sound = sound && std::isfinite(sums.h[k]);
    }
  }
  return sound;
}

}  // namespace tavlo
