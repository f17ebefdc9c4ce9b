// ReadWatch: tells how far the reading of a long text has come, and ends it when the
// person wants that.
#pragma once

#include <cstddef>

#include "ports/progress.h"

namespace tavlo {

class ReadWatch {
 public:
  /// `progress` may be null: then nobody waits.
  ReadWatch(Progress* progress, std::size_t bytes) : progress_(progress), bytes_(bytes) {}

  /// False when the reading is to end with `bytes_left` unread.
  bool goes_on(std::size_t bytes_left) {
    if (!progress_ || stopped_) return !stopped_;
    progress_->show(1.0 - static_cast<double>(bytes_left) / static_cast<double>(bytes_), "Reading");
    stopped_ = progress_->stop_wanted();
    return !stopped_;
  }

  bool stopped() const { return stopped_; }

 private:
  Progress* progress_;
  std::size_t bytes_;
  bool stopped_ = false;
};

}  // namespace tavlo
