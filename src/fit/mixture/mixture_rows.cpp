#include "fit/mixture/mixture_rows.h"

#include <cmath>

#include "life/models.h"
#include "life/weibull_ordinate.h"
#include "numerics/pack.h"

namespace tavlo {
namespace {

void finish(MixtureRows& rows) {
  rows.failures.pad();
  rows.suspensions.pad();
  const WeightedRows& f = rows.failures;
  double sum_x = 0, sum_y = 0;
  for (std::size_t i = 0; i < f.count; ++i) {
    sum_x += f.w[i] * f.x[i];
    sum_y += f.w[i] * f.y[i];
  }
  rows.mean_x = sum_x / f.total;
  rows.mean_y = sum_y / f.total;
  rows.spread_x = rows.spread_y = 0;
  // The mean of equal times may be off by its rounding, which is no spread.
  if (f.count == 0 || f.x.front() == f.x[f.count - 1]) return;
  for (std::size_t i = 0; i < f.count; ++i) {
    rows.spread_x += f.w[i] * (f.x[i] - rows.mean_x) * (f.x[i] - rows.mean_x);
    rows.spread_y += f.w[i] * (f.y[i] - rows.mean_y) * (f.y[i] - rows.mean_y);
  }
}

/// The row in the middle of each of `parts` equal parts of the weight stands for its part.
WeightedRows thin(const WeightedRows& all, std::size_t parts) {
  if (all.count <= parts) return all;
  WeightedRows few;
  const double part = all.total / static_cast<double>(parts);
  double passed = 0;
  std::size_t k = 0;
  for (std::size_t i = 0; i < all.count && k < parts; ++i) {
    passed += all.w[i];
    double weight = 0;
    for (; k < parts && passed >= (static_cast<double>(k) + 0.5) * part; ++k) weight += part;
    if (weight > 0) few.add(all.x[i], all.y[i], weight);
  }
  return few;
}

}  // namespace

void WeightedRows::add(double log_time, double ordinate, double weight) {
  x.push_back(log_time);
  y.push_back(ordinate);
  w.push_back(weight);
  total += weight;
  ++count;
}

void WeightedRows::pad() {
  if (count == 0) return;
  while (x.size() % Pack::lanes != 0) {
    x.push_back(x[count - 1]);
    y.push_back(y[count - 1]);
    w.push_back(0);
  }
}

bool MixtureRows::is_likelihood() const { return method == method_code::mle; }

MixtureRows mixture_rows(const Sample& sample, std::int16_t method, bool censored) {
  MixtureRows rows;
  rows.method = method;
  const bool likelihood = rows.is_likelihood();
  for (std::vector<double>* list : {&rows.failures.x, &rows.failures.y, &rows.failures.w})
    list->reserve(sample.size() + Pack::lanes);
  for (std::size_t i = 0; i < sample.size(); ++i) {
    if (sample.failures[i] > 0)
      rows.failures.add(sample.ln_time[i],
                        likelihood ? 0 : fd_WblY(static_cast<double>(sample.rank[i])),
                        sample.failures[i]);
    if (likelihood && censored && sample.suspensions[i] > 0)
      rows.suspensions.add(sample.ln_time[i], 0, sample.suspensions[i]);
  }
  finish(rows);
  return rows;
}

MixtureRows thinned(const MixtureRows& rows, std::size_t most) {
  MixtureRows few;
  few.method = rows.method;
  few.failures = thin(rows.failures, most);
  few.suspensions = thin(rows.suspensions, most);
  finish(few);
  return few;
}

}  // namespace tavlo
