#include "fit/line/paper.h"

#include <algorithm>
#include <cmath>

#include "numerics/normal.h"
#include "numerics/pack_math.h"

namespace tavlo {
namespace {

TAVLO_PACKED inline Pack weibull_height(Pack F) { return ln(-log1p(-F)); }
TAVLO_PACKED inline Pack gumbel_height(Pack F) { return -ln(-ln(F)); }

/// Heights of all rows, four at a time; those of rows without a rank are never read.
template <class Height>
std::vector<double> heights(const std::vector<float>& rank, Height height) {
  std::vector<double> y(rank.size());
  for (std::size_t i = 0; i < rank.size(); i += Pack::lanes) {
    const std::size_t count = std::min<std::size_t>(Pack::lanes, rank.size() - i);
    double lanes[Pack::lanes] = {0.5, 0.5, 0.5, 0.5};
    for (std::size_t k = 0; k < count; ++k) lanes[k] = static_cast<double>(rank[i + k]);
    height(Pack::load(lanes)).store(lanes);
    std::copy_n(lanes, count, y.begin() + static_cast<std::ptrdiff_t>(i));
  }
  return y;
}

std::vector<double> normal_heights(const Sample& sample) {
  std::vector<double> y(sample.size());
  for (std::size_t i = 0; i < y.size(); ++i)
    if (sample.failures[i] > 0) y[i] = normal_quantile(static_cast<double>(sample.rank[i]));
  return y;
}

std::vector<double> heights_on(Paper paper, const Sample& sample) {
  switch (paper) {
    case Paper::normal: return normal_heights(sample);
    case Paper::gumbel: return heights(sample.rank, [](Pack F) { return gumbel_height(F); });
    case Paper::weibull: break;
  }
  return heights(sample.rank, [](Pack F) { return weibull_height(F); });
}

Refusal off_paper(const Sample& sample, std::size_t row, double rank) {
  return {RefusalCode::rank_off_paper, {static_cast<double>(sample.entry[row]), rank}};
}

}  // namespace

PaperRows paper_rows(const Sample& sample, Paper paper, bool log_time) {
  PaperRows rows;
  rows.own_y = heights_on(paper, sample);
  rows.weight = sample.failures;
  rows.x = log_time ? sample.ln_time : sample.time;
  rows.y = rows.own_y;
  return rows;
}

PaperRows paper_rows_of_mode(const Sample& sample, int mode) {
  PaperRows rows;
  rows.own_weight = sample.failures;
  for (std::size_t i = 0; i < sample.size(); ++i)
    if (sample.mode[i] != mode) rows.own_weight[i] = 0;
  rows.weight = rows.own_weight;
  rows.x = sample.ln_time;
  rows.y = sample.mode_ordinate;
  return rows;
}

std::optional<Refusal> rank_off_paper(const Sample& sample) {
  for (std::size_t i = 0; i < sample.size(); ++i) {
    const float rank = sample.rank[i];
    if (sample.failures[i] > 0 && !(rank > 0.0F && rank < 1.0F))
      return off_paper(sample, i, static_cast<double>(rank));
  }
  return std::nullopt;
}

std::optional<Refusal> rank_off_paper_in_mode(const Sample& sample, int mode) {
  for (std::size_t i = 0; i < sample.mode_ordinate.size(); ++i) {
    const double y = sample.mode_ordinate[i];
    if (sample.mode[i] == mode && sample.failures[i] > 0 && !std::isfinite(y))
      return off_paper(sample, i, y < 0 ? 0.0 : 1.0);
  }
  return std::nullopt;
}

}  // namespace tavlo
