// Metafile slots: which slot of the reader's object table holds which pen, brush
// or font. A metafile doesn't number the objects that it creates: each takes the
// lowest free slot of whoever plays it, so the writer keeps the same table.
#pragma once

#include <optional>
#include <queue>
#include <unordered_map>

#include "chart/metafile/metafile_records.h"
#include "chart/record/drawing_record.h"

namespace tavlo {

class MetafileSlots {
 public:
  /// The slot that an object created now takes; nothing when the table is full.
  std::optional<MetafileWord> take(drawing::Handle handle);

  /// Nothing for a handle that has no object.
  std::optional<MetafileWord> find(drawing::Handle handle) const;

  /// Frees the slot of the handle, which must have one.
  void release(drawing::Handle handle);

  /// Length of the table that a reader needs.
  MetafileWord table_size() const { return size_; }

 private:
  std::unordered_map<drawing::Handle, MetafileWord> slots_;
  std::priority_queue<MetafileWord, std::vector<MetafileWord>, std::greater<>> free_;
  MetafileWord size_ = 0;
};

}  // namespace tavlo
