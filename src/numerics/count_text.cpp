#include "numerics/count_text.h"

#include "numerics/number_text.h"

namespace tavlo {

std::string grouped(std::int64_t count) {
  return format_number(static_cast<double>(count), "#,##0");
}

std::string counted(double count, std::string_view noun, int digits) {
  std::string text = number_text(count, digits) + " ";
  text += noun;
  if (count != 1.0) text += 's';
  return text;
}

}  // namespace tavlo
