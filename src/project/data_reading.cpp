#include "project/data_reading.h"

#include <algorithm>

namespace tavlo {

DataReading::DataReading(SharedRows<SheetRow> rows, RankKind ranks, bool own_ranks, int modes)
    : rows_(std::move(rows)), ranks_(ranks), own_ranks_(own_ranks), modes_(modes) {
  derived();
}

Sample DataReading::sample_with(RankKind ranks) const {
  std::vector<SampleRow> rows;
  std::vector<std::int32_t> numbers;  // of the rows in the sheet
  rows.reserve(rows_.size());
  numbers.reserve(rows_.size());
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const SheetRow& row = rows_[i];
    if (!row.has_point()) continue;
    const bool has_mode = row.mode >= 1 && row.mode <= modes_;
    rows.push_back(
        {row.time, row.failures, row.suspensions, has_mode ? row.mode : std::int16_t{0}});
    numbers.push_back(static_cast<std::int32_t>(i) + 1);
  }
  Sample sample = make_sample(rows, ranks, modes_);
  for (std::int32_t& entry : sample.entry) entry = numbers[static_cast<std::size_t>(entry) - 1];
  if (own_ranks_)
    for (std::size_t i = 0; i < sample.size(); ++i)
      sample.rank[i] = rows_[static_cast<std::size_t>(sample.entry[i]) - 1].rank;
  return sample;
}

float DataReading::rank_of(std::size_t row) const {
  const Derived& all = derived();
  if (row >= all.places.size() || all.places[row] < 0) return 0;
  return all.sample.rank[static_cast<std::size_t>(all.places[row])];
}

const DataReading::Derived& DataReading::derived() const {
  if (derived_) return *derived_;
  auto made = std::make_shared<Derived>();
  made->sample = sample_with(ranks_);
  made->places.assign(rows_.size(), -1);
  for (std::size_t i = 0; i < made->sample.size(); ++i)
    made->places[static_cast<std::size_t>(made->sample.entry[i]) - 1] =
        static_cast<std::int32_t>(i);
  derived_ = std::move(made);
  return *derived_;
}

}  // namespace tavlo
