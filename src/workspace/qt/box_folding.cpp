#include "workspace/qt/box_folding.h"

namespace tavlo {

bool BoxFolding::continues(const Box& box) const {
  return count_ > 0 && box.title == last_.title && box.text == last_.text &&
         box.icon == last_.icon && box.buttons == last_.buttons;
}

bool BoxFolding::wants_showing(const Box& box) {
  count_ = continues(box) ? count_ + 1 : 1;
  last_ = box;
  return count_ <= shown_at_most || box.buttons != BoxButtons::ok;
}

std::optional<Box> BoxFolding::end_run() {
  const int hidden = last_.buttons == BoxButtons::ok ? count_ - shown_at_most : 0;
  count_ = 0;
  if (hidden <= 0) return std::nullopt;
  Box rest = last_;
  rest.text += "\n\nand " + std::to_string(hidden) + " more";
  return rest;
}

}  // namespace tavlo
