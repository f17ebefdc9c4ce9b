#include "fit/line/line_at_t0.h"

#include <algorithm>
#include <utility>

#include "numerics/pack_math.h"
#include "numerics/real.h"

namespace tavlo {
namespace {

double sum_of(Pack values) {
  double lanes[Pack::lanes];
  values.store(lanes);
  return finite((lanes[0] + lanes[1]) + (lanes[2] + lanes[3]));
}

}  // namespace

/// Sums over the failures, x taken from a log time among them: far below the first time
/// all ln(t - t0) are nearly alike, and sums of x itself would lose what tells them apart.
struct RowsAboveT0::Sums {
  Real shift, n, x, xx, xy, y, yy;

  Real spread_xx() const { return n * xx - x * x; }
  Real spread_yy() const { return n * yy - y * y; }
  Real spread_xy() const { return n * xy - x * y; }
};

RowsAboveT0::RowsAboveT0(std::vector<double> time, std::vector<double> ordinate,
                         std::vector<double> weight)
    : time_(std::move(time)), ordinate_(std::move(ordinate)), weight_(std::move(weight)) {
  last_time_ = time_.back();
  middle_time_ = time_[(time_.size() - 1) / 2];
  while (time_.size() % Pack::lanes != 0) {
    time_.push_back(last_time_);
    ordinate_.push_back(0);
    weight_.push_back(0);
  }
  log_time_.resize(time_.size());
  Pack n = 0.0, y = 0.0, yy = 0.0;
  for (std::size_t i = 0; i < time_.size(); i += Pack::lanes) {
    const Pack ordinates = Pack::load(&ordinate_[i]);
    const Pack weighted = Pack::load(&weight_[i]) * ordinates;
    n = n + Pack::load(&weight_[i]);
    y = y + weighted;
    yy = yy + weighted * ordinates;
  }
  total_ = sum_of(n);
  sum_y_ = sum_of(y);
  sum_yy_ = sum_of(yy);
}

RowsAboveT0::Sums RowsAboveT0::take_log_times(double t0) {
  if (!(first_time() > t0)) throw RunTimeError(run_time::invalid_argument);
  const double shift = ln(Real(middle_time_) - t0).value();
  Pack x = 0.0, xx = 0.0, xy = 0.0;
  for (std::size_t i = 0; i < time_.size(); i += Pack::lanes) {
    const Pack log_time = ln(Pack::load(&time_[i]) - t0);
    log_time.store(&log_time_[i]);
    const Pack off = log_time - shift;
    const Pack weighted = Pack::load(&weight_[i]) * off;
    x = x + weighted;
    xx = xx + weighted * off;
    xy = xy + weighted * Pack::load(&ordinate_[i]);
  }
  return {shift, total_, sum_of(x), sum_of(xx), sum_of(xy), sum_y_, sum_yy_};
}

double RowsAboveT0::derivative(const LineAtT0& line) const {
  const double ln_eta = ln(Real(line.life)).value();
  Pack sum = 0.0;
  for (std::size_t i = 0; i < time_.size(); i += Pack::lanes) {
    const Pack off_line =
        (ln_eta - Pack::load(&log_time_[i])) * line.slope + Pack::load(&ordinate_[i]);
    sum = sum + Pack::load(&weight_[i]) * off_line / (Pack::load(&time_[i]) - line.t0);
  }
  return sum_of(sum);
}

LineAtT0 RowsAboveT0::line(double t0, bool x_on_y) {
  const Sums sums = take_log_times(t0);
  const Real xy = sums.spread_xy();
  const Real beta = x_on_y ? 1 / (xy / sums.spread_yy()) : xy / sums.spread_xx();
  LineAtT0 line{.t0 = t0};
  line.slope = beta.value();
  line.life = exp(sums.shift + (sums.x - sums.y / beta) / sums.n).value();
  line.r_squared = std::min(1.0, (xy * xy / (sums.spread_xx() * sums.spread_yy())).value());
  const Real factor = x_on_y ? 2 / beta : 2 * beta;
  line.derivative = (derivative(line) * factor).value();
  return line;
}

}  // namespace tavlo
