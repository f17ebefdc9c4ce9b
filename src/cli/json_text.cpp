#include "cli/json_text.h"

#include <charconv>
#include <cmath>

namespace tavlo::cli {

namespace {

const char* answer_word(BoxAnswer answer) {
  switch (answer) {
    case BoxAnswer::ok: return "OK";
    case BoxAnswer::cancel: return "Cancel";
    case BoxAnswer::yes: return "Yes";
    case BoxAnswer::no: return "No";
    case BoxAnswer::retry: break;
  }
  return "Retry";
}

}  // namespace

Json json_number(double value) {
  constexpr double exact_below = 9007199254740992.0;  // 2^53
  if (!std::isfinite(value)) return nullptr;
  if (std::floor(value) == value && std::fabs(value) < exact_below)
    return static_cast<std::int64_t>(value);
  return value;
}

double shortest_decimal(float value) {
  char digits[32];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  double decimal = value;
  std::from_chars(digits, end, decimal);
  return decimal;
}

void add_totals(Json& object, const DataSet& data) {
  const DataPoint& totals = data.Points(0);
  object["units"] = json_number(totals.Fails + totals.Susps);
  object["failures"] = json_number(totals.Fails);
  object["suspensions"] = json_number(totals.Susps);
}

Json messages_json(const std::vector<AnsweredBox>& boxes) {
  Json list = Json::array();
  for (const AnsweredBox& seen : boxes)
    list.push_back(
        {{"title", seen.box.title}, {"text", seen.box.text}, {"answer", answer_word(seen.answer)}});
  return list;
}

std::string one_line_json(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string error_json(const std::string& file, const std::string& error) {
  return one_line_json({{"file", file}, {"error", error}});
}

}  // namespace tavlo::cli
