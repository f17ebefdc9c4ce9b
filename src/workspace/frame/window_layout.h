// WindowLayout: where the shown windows of the project stand in their area: in
// blocks until the person moves one, in strips, or where they stood in the last run.
#pragma once

#include <QMdiArea>
#include <QVariantMap>
#include <vector>

#include "workspace/frame/child_window.h"

namespace tavlo {

class WindowLayout {
 public:
  using Windows = std::vector<ChildWindow*>;

  explicit WindowLayout(QMdiArea& area) : area_(area) {}

  /// True until the person moves a window or chooses another layout.
  bool is_in_blocks() const { return in_blocks_; }

  /// Places the windows in blocks from now on.
  void start_blocks(const Windows& shown);

  /// The windows stay where they are.
  void leave();

  /// The place of a window that has just come.
  void place_new(ChildWindow& window) const;

  /// The area has another size, or shows other windows.
  void follow(const Windows& shown) const;

  /// Strips side by side or one below the other.
  void tile(const Windows& shown, bool side_by_side);

  /// The windows that the person has placed by hand, each by its key, as shares of the
  /// area; none while they stand in blocks.
  QVariantMap places(const Windows& shown) const;

  /// Places windows so from now on. What is no place inside the area is passed over.
  void take_places(const QVariantMap& places, const Windows& shown);

 private:
  void follow_blocks(const Windows& shown) const;
  void follow_places(const Windows& shown) const;

  QMdiArea& area_;
  bool in_blocks_ = true;
  QVariantMap places_;  ///< of the last run; empty once the person has moved a window
};

}  // namespace tavlo
