#include "workspace/frame/window_key.h"

namespace tavlo {

namespace {

/// In the order of the blocks.
constexpr QStringView letters = u"DLCF";

}  // namespace

WindowKey WindowKey::of(const QString& node_key) {
  const auto letter = letters.indexOf(node_key.isEmpty() ? u' ' : node_key.front());
  return letter < 0 ? WindowKey{Block::log, 0}
                    : WindowKey{static_cast<Block>(letter), node_key.mid(1).toInt()};
}

QString WindowKey::text() const {
  return letters[static_cast<qsizetype>(block)] + QString::number(index);
}

}  // namespace tavlo
