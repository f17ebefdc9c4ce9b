#include "project/sheet_row.h"

#include <algorithm>

namespace tavlo {

void SheetRow::set_given(int column, bool is_given) {
  const int bit = 1 << column;
  given = static_cast<std::uint8_t>(is_given ? given | bit : given & ~bit);
}

void SheetRow::set_left_out(bool is_out) {
  spare = static_cast<std::int16_t>(is_out ? spare | 1 : spare & ~1);
}

const std::string& SheetRow::text(int column) const {
  static const std::string nothing;
  return texts ? (*texts)[static_cast<std::size_t>(column)] : nothing;
}

void SheetRow::set_text(int column, const std::string& text) {
  if (this->text(column) == text) return;
  RowTexts changed = texts ? *texts : RowTexts{};
  changed[static_cast<std::size_t>(column)] = text;
  const bool any =
      std::any_of(changed.begin(), changed.end(), [](const auto& each) { return !each.empty(); });
  texts = any ? std::make_shared<const RowTexts>(std::move(changed)) : nullptr;
}

int SheetRow::unreadable_column() const {
  for (int column = sheet_column::x; texts && column <= sheet_column::susps; ++column)
    if (!text(column).empty()) return column;
  return 0;
}

bool operator==(const SheetRow& a, const SheetRow& b) {
  const bool same_texts = a.texts == b.texts || (a.texts && b.texts && *a.texts == *b.texts);
  return same_texts && a.failures == b.failures && a.suspensions == b.suspensions &&
         a.time == b.time && a.rank == b.rank && a.mode == b.mode && a.given == b.given &&
         a.spare == b.spare;
}

}  // namespace tavlo
