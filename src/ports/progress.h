// Progress: what long work tells the person who waits for it, and the wish to end it.
#pragma once

#include <string>

namespace tavlo {

class Progress {
 public:
  virtual ~Progress() = default;

  /// `share` (0 to 1) of the work is done; `words` say what work, as "Reading". Called
  /// every few thousand rows. The windows stay alive in it, so the caller holds the busy
  /// pointer and leaves nothing half-changed.
  virtual void show(double share, const std::string& words) = 0;

  /// True once the person wants the work at hand to end.
  virtual bool stop_wanted() = 0;
};

}  // namespace tavlo
