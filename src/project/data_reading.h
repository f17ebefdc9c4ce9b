// Data reading: the rows of a data set as they were when they were last read, and ranked. Fits
// and charts work on it while the person goes on typing. It shares its rows with the sheet;
// the sample is made of them when it is asked for.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "fit/sample.h"
#include "project/shared_rows.h"
#include "project/sheet_row.h"

namespace tavlo {

class DataReading {
 public:
  DataReading() = default;

  /// With `own_ranks` the rows keep the ranks that they bring. Rows without a time, and
  /// those that are left out, have no part in it. Throws as make_sample does.
  DataReading(SharedRows<SheetRow> rows, RankKind ranks, bool own_ranks, int modes);

  const SharedRows<SheetRow>& rows() const { return rows_; }
  RankKind ranks() const { return ranks_; }
  /// The number of failure modes that the rows may name.
  int modes() const { return modes_; }

  /// `entry` is the number of the row in the sheet, from 1.
  const Sample& sample() const { return derived().sample; }

  /// The same rows with ranks of another kind.
  Sample sample_with(RankKind ranks) const;

  /// The plotting position of a row of the sheet, from 0; 0 for a row that has none.
  float rank_of(std::size_t row) const;

  /// Gives up what can be made again.
  void forget_sample() const { derived_.reset(); }

  /// Takes the sample of the same reading in another state of the project.
  void share_sample(const DataReading& same) const {
    if (!derived_ && *this == same) derived_ = same.derived_;
  }

  friend bool operator==(const DataReading& a, const DataReading& b) {
    return a.ranks_ == b.ranks_ && a.own_ranks_ == b.own_ranks_ && a.modes_ == b.modes_ &&
           a.rows_ == b.rows_;
  }

 private:
  struct Derived {
    Sample sample;
    std::vector<std::int32_t> places;  ///< of each row of the sheet in the sample; -1 for none
  };

  const Derived& derived() const;

  SharedRows<SheetRow> rows_;
  RankKind ranks_ = RankKind::benard;
  bool own_ranks_ = false;
  int modes_ = 0;
  mutable std::shared_ptr<const Derived> derived_;
};

}  // namespace tavlo
