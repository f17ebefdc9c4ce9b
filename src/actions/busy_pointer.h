// BusyPointer: the hourglass, for as long as long work lives. Keys and clicks wait
// meanwhile; Escape asks the work to stop.
#pragma once

#include "ports/views.h"

namespace tavlo {

class BusyPointer {
 public:
  explicit BusyPointer(Views& views) : views_(views) { views_.busy_pointer(true); }
  ~BusyPointer() { views_.busy_pointer(false); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;

 private:
  Views& views_;
};

}  // namespace tavlo
