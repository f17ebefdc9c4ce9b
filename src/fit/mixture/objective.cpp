#include "fit/mixture/objective.h"

#include <algorithm>
#include <cmath>

#include "fit/mixture/model_times.h"
#include "fit/mixture/row_shapes.h"
#include "life/models.h"

namespace tavlo {
namespace {

/// Sums over rows of weighted shapes.
template <std::size_t K>
class ShapeSums {
 public:
  using Shape = RowShape<K>;
  static constexpr std::size_t pairs = K * (K + 1) / 2;

  /// value, g and h weighted alike: the rows of a likelihood.
  TAVLO_PACKED void add_likely(Pack w, const Shape& row) {
    value_ = value_ + w * row.value;
    add(w, w, row);
  }

  /// The square of a distance.
  TAVLO_PACKED void add_square(Pack w, const Shape& distance) {
    const Pack weighted = w * distance.value;
    value_ = value_ + weighted * distance.value;
    add(weighted + weighted, w + w, distance);
  }

  /// Puts the sums of the last rows to the totals: short sums first keep the digits.
  void settle() {
    total_value += sum(value_);
    for (std::size_t i = 0; i < K; ++i) total_g[i] += sum(g_[i]);
    for (std::size_t i = 0; i < pairs; ++i) {
      total_h[i] += sum(h_[i]);
      total_products[i] += sum(products_[i]);
    }
    value_ = 0.0;
    g_ = {};
    h_ = {};
    products_ = {};
  }

  double total_value = 0;
  std::array<double, K> total_g{};
  std::array<double, pairs> total_h{}, total_products{};

 private:
  TAVLO_PACKED void add(Pack w, Pack product_weight, const Shape& row) {
    for_each_constant<K>([&](auto i) TAVLO_PACKED_LAMBDA {
      g_[i] = g_[i] + w * row.g[i];
      const Pack weighted = product_weight * row.g[i];
      for_each_constant<i() + 1>([&](auto j) TAVLO_PACKED_LAMBDA {
        constexpr std::size_t at = below(i, j);
        h_[at] = h_[at] + w * row.h[at];
        products_[at] = products_[at] + weighted * row.g[j];
      });
    });
  }

  Pack value_{0.0};
  std::array<Pack, K> g_{};
  std::array<Pack, pairs> h_{}, products_{};
};

/// Calls add(first row of a pack) for all rows, the sums settled now and then.
template <class Sums, class Add>
void for_each_pack(const WeightedRows& rows, Sums& sums, Add&& add) {
  constexpr std::size_t block = 64 * Pack::lanes;
  for (std::size_t from = 0; from < rows.x.size(); from += block) {
    const std::size_t to = std::min(from + block, rows.x.size());
    for (std::size_t i = from; i < to; i += Pack::lanes) add(i);
    sums.settle();
  }
}

/// The totals as the shape of the function to minimise: `sign` x value / unit.
template <std::size_t K>
bool take_shape(const ShapeSums<K>& sums, double sign, double unit, bool squares,
                LocalShape& shape) {
  shape.value = sign * sums.total_value / unit;
  bool sound = std::isfinite(shape.value);
  for (std::size_t i = 0; i < K; ++i) {
    shape.gradient[i] = sign * sums.total_g[i] / unit;
    sound = sound && std::isfinite(shape.gradient[i]);
    for (std::size_t j = 0; j <= i; ++j) {
      const double products = sums.total_products[below(i, j)] / unit;
      const double h = sign * sums.total_h[below(i, j)] / unit + (squares ? products : 0.0);
      shape.products(i, j) = shape.products(j, i) = products;
      shape.hessian(i, j) = shape.hessian(j, i) = h;
      sound = sound && std::isfinite(h) && std::isfinite(products);
    }
  }
  return sound;
}

template <Populations P>
ExpectedFailures expected(const MixtureRows& rows, const SmallVector& q) {
  const RowFormula<P> formula(q);
  Pack a = 0.0, b = 0.0, c = 0.0;
  for (std::size_t i = 0; i < rows.failures.x.size(); i += Pack::lanes) {
    const Pack x = Pack::load(&rows.failures.x[i]);
    const Pack w = Pack::load(&rows.failures.w[i]);
    const Pack lift = formula.lift_at(x);
    Pack rate_a = 0.0, rate_b = 0.0, rate_c = 0.0;
    if constexpr (P.a) rate_a = formula.risk(P.at_a(), x, lift).hazard * formula.beta[P.at_a()];
    if constexpr (P.b) rate_b = formula.risk(P.at_b(), x, lift).hazard * formula.beta[P.at_b()];
    if constexpr (P.c) {
      const auto shared = formula.shared_risk(x, lift);
      rate_c = shared.among * shared.hazard * formula.beta[P.at_c()];
    }
    const Pack part = w / (rate_a + rate_b + rate_c);
    a = a + part * rate_a;
    b = b + part * rate_b;
    c = c + part * rate_c;
  }
  return {sum(a), sum(b), sum(c)};
}

/// Sum of w x value(row) over the rows.
template <class Value>
double weighted_sum(const WeightedRows& rows, Value&& value) {
  Pack total = 0.0;
  for (std::size_t i = 0; i < rows.x.size(); i += Pack::lanes)
    total = total + Pack::load(&rows.w[i]) * value(i, Pack::load(&rows.x[i]));
  return sum(total);
}

template <Populations P>
double rough_vertical_value(const MixtureRows& rows, const SmallVector& q) {
  const RowFormula<P> formula(q);
  const double squares = weighted_sum(rows.failures, [&](std::size_t i, Pack x) {
    const Pack distance = normal_ln(formula.total_risk(x)) - Pack::load(&rows.failures.y[i]);
    return distance * distance;
  });
  return squares / rows.spread_y;
}

template <Populations P>
class RowsObjective : public Objective {
 public:
  explicit RowsObjective(const MixtureRows& rows) : rows_(rows) {}
  ExpectedFailures expected_failures(const SmallVector& q) const override {
    return expected<P>(rows_, q);
  }
  double rough_value_at(const SmallVector& q) const override {
    return rough_vertical_value<P>(rows_, q);
  }

 protected:
  const MixtureRows& rows_;
};

template <Populations P>
class Likelihood : public RowsObjective<P> {
 public:
  using RowsObjective<P>::RowsObjective;

  bool shape_at(const SmallVector& q, LocalShape& shape) override {
    const RowFormula<P> formula(q);
    ShapeSums<P.size()> sums;
    const WeightedRows& f = this->rows_.failures;
    for_each_pack(f, sums, [&](std::size_t i) {
      sums.add_likely(Pack::load(&f.w[i]), formula.ln_density(Pack::load(&f.x[i])));
    });
    const WeightedRows& s = this->rows_.suspensions;
    for_each_pack(s, sums, [&](std::size_t i) {
      sums.add_likely(Pack::load(&s.w[i]), formula.ln_reliability(Pack::load(&s.x[i])));
    });
    return take_shape(sums, -1, 1, false, shape);
  }

  double rough_value_at(const SmallVector& q) const override {
    const RowFormula<P> formula(q);
    const MixtureRows& rows = this->rows_;
    return weighted_sum(rows.suspensions,
                        [&](std::size_t, Pack x) { return formula.total_risk(x); }) -
           weighted_sum(rows.failures,
                        [&](std::size_t, Pack x) { return formula.ln_density_value(x); });
  }
};

/// The sum of squares of distance(first row of a pack), a row shape.
template <Populations P, class Distance>
bool squares_at(const WeightedRows& rows, double spread, LocalShape& shape, Distance&& distance) {
  ShapeSums<P.size()> sums;
  for_each_pack(rows, sums,
                [&](std::size_t i) { sums.add_square(Pack::load(&rows.w[i]), distance(i)); });
  return take_shape(sums, 1, spread, true, shape);
}

/// Y on X.
template <Populations P>
class Vertical : public RowsObjective<P> {
 public:
  using RowsObjective<P>::RowsObjective;

  bool shape_at(const SmallVector& q, LocalShape& shape) override {
    const RowFormula<P> formula(q);
    const WeightedRows& f = this->rows_.failures;
    return squares_at<P>(f, this->rows_.spread_y, shape, [&](std::size_t i) {
      auto row = formula.ordinate(Pack::load(&f.x[i]));
      row.value = row.value - Pack::load(&f.y[i]);
      return row;
    });
  }
};

/// X on Y.
template <Populations P>
class Horizontal : public RowsObjective<P> {
 public:
  explicit Horizontal(const MixtureRows& rows) : RowsObjective<P>(rows), times_(rows.failures.x) {}

  bool shape_at(const SmallVector& q, LocalShape& shape) override {
    const RowFormula<P> formula(q);
    const WeightedRows& f = this->rows_.failures;
    for (std::size_t i = 0; i < f.x.size(); i += Pack::lanes) {
      const Pack time = model_time<P>(formula, Pack::load(&times_[i]), Pack::load(&f.y[i]));
      if (!all(is_finite(time))) return false;
      time.store(&times_[i]);
    }
    return squares_at<P>(f, this->rows_.spread_x, shape, [&](std::size_t i) {
      auto row = formula.time_of_ordinate(Pack::load(&times_[i]), Pack::load(&f.y[i]));
      row.value.store(&times_[i]);
      row.value = row.value - Pack::load(&f.x[i]);
      return row;
    });
  }

 private:
  std::vector<double> times_;
};

template <template <Populations> class Kind>
std::unique_ptr<Objective> of_populations(const MixtureRows& rows, Populations populations) {
  if (populations == one_weibull) return std::make_unique<Kind<one_weibull>>(rows);
  if (populations == competing_risks) return std::make_unique<Kind<competing_risks>>(rows);
  if (populations == early_share) return std::make_unique<Kind<early_share>>(rows);
  if (populations == bathtub) return std::make_unique<Kind<bathtub>>(rows);
  return std::make_unique<Kind<share_alone>>(rows);
}

}  // namespace

std::unique_ptr<Objective> make_objective(const MixtureRows& rows, Populations populations) {
  if (rows.is_likelihood()) return of_populations<Likelihood>(rows, populations);
  return rows.method == method_code::x_on_y ? of_populations<Horizontal>(rows, populations)
                                            : of_populations<Vertical>(rows, populations);
}

std::unique_ptr<Objective> make_rough_objective(const MixtureRows& rows, Populations populations) {
  const bool simple = populations != early_share;
  return simple && !rows.is_likelihood() ? of_populations<Vertical>(rows, populations)
                                         : make_objective(rows, populations);
}

double quality_of(const MixtureRows& rows, double value) {
  if (!rows.is_likelihood()) return 1 - value;
  return -value - rows.mean_x * rows.failures.total;
}

}  // namespace tavlo
