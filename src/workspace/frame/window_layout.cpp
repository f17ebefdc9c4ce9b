#include "workspace/frame/window_layout.h"

#include <array>

#include "workspace/frame/block_layout.h"

namespace tavlo {

namespace {

std::size_t at(const ChildWindow& window) { return static_cast<std::size_t>(window.block()); }

}  // namespace

void WindowLayout::start_blocks(const Windows& shown) {
  in_blocks_ = true;
  places_.clear();
  for (ChildWindow* each : shown)
    if (each->isMaximized() || each->isMinimized()) each->showNormal();
  follow_blocks(shown);
}

void WindowLayout::leave() {
  in_blocks_ = false;
  places_.clear();
}

// Where all four stand, also when the person has moved others: it is where one looks for it.
void WindowLayout::place_new(ChildWindow& window) const {
  const auto blocks = block_layout(area_.viewport()->size(), area_.fontMetrics().height(),
                                   {true, true, true, true});
  window.setGeometry(blocks[at(window)]);
}

void WindowLayout::follow(const Windows& shown) const {
  if (in_blocks_) follow_blocks(shown);
  follow_places(shown);
}

void WindowLayout::follow_blocks(const Windows& shown) const {
  std::array<bool, block_count> visible{};
  for (const ChildWindow* each : shown) visible[at(*each)] = true;
  const auto blocks = block_layout(area_.viewport()->size(), area_.fontMetrics().height(), visible);
  for (ChildWindow* each : shown) {
    if (!each->isMaximized() && !each->isMinimized()) each->setGeometry(blocks[at(*each)]);
  }
}

void WindowLayout::tile(const Windows& shown, bool side_by_side) {
  leave();
  const int count = static_cast<int>(shown.size());
  for (int i = 0; i < count; ++i) {
    ChildWindow& window = *shown[static_cast<std::size_t>(i)];
    window.showNormal();
    window.setGeometry(strip(area_.viewport()->size(), i, count, side_by_side));
  }
}

QVariantMap WindowLayout::places(const Windows& shown) const {
  QVariantMap found;
  const QSizeF area = area_.viewport()->size();
  if (in_blocks_ || area.isEmpty()) return found;
  for (const ChildWindow* each : shown) {
    const QRectF at = each->geometry();
    if (!each->isMinimized() && !each->isMaximized())
      found[each->node_key()] = QRectF(at.x() / area.width(), at.y() / area.height(),
                                       at.width() / area.width(), at.height() / area.height());
  }
  return found;
}

void WindowLayout::take_places(const QVariantMap& places, const Windows& shown) {
  if (places.isEmpty()) return;
  leave();
  places_ = places;
  follow_places(shown);
}

void WindowLayout::follow_places(const Windows& shown) const {
  const QSizeF area = area_.viewport()->size();
  for (ChildWindow* each : shown) {
    const QRectF share = places_.value(each->node_key()).toRectF() & QRectF(0, 0, 1, 1);
    const QRectF place(share.x() * area.width(), share.y() * area.height(),
                       share.width() * area.width(), share.height() * area.height());
    if (!share.isEmpty() && !each->isMaximized() && !each->isMinimized())
      each->setGeometry(place.toRect());
  }
}

}  // namespace tavlo
