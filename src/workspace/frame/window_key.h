// WindowKey: which window of the project is meant, and how its node in the tree
// is called: "D1" a sheet, "F1" a panel, "C1" a chart, "L1" the log.
#pragma once

#include <QString>

#include "workspace/frame/block_layout.h"

namespace tavlo {

struct WindowKey {
  Block block = Block::log;
  int index = 1;  ///< of the record, from 1

  /// The index is 0 for a key of no window.
  static WindowKey of(const QString& node_key);
  QString text() const;
};

}  // namespace tavlo
