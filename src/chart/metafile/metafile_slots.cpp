#include "chart/metafile/metafile_slots.h"

namespace tavlo {

namespace {

constexpr MetafileWord longest_table = 32767;  // some readers take the length as signed

}  // namespace

std::optional<MetafileWord> MetafileSlots::take(drawing::Handle handle) {
  if (free_.empty() && size_ == longest_table) return std::nullopt;
  if (free_.empty()) free_.push(size_++);
  const MetafileWord slot = free_.top();
  free_.pop();
  slots_[handle] = slot;
  return slot;
}

std::optional<MetafileWord> MetafileSlots::find(drawing::Handle handle) const {
  const auto found = slots_.find(handle);
  if (found == slots_.end()) return std::nullopt;
  return found->second;
}

void MetafileSlots::release(drawing::Handle handle) {
  const auto found = slots_.find(handle);
  free_.push(found->second);
  slots_.erase(found);
}

}  // namespace tavlo
