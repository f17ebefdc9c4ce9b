#include "numerics/decimal_separators.h"

#include <gtest/gtest.h>

namespace tavlo {
namespace {

TEST(DecimalSeparators, AreTakenFromTheSystemsNumbersOrAskedFor) {
  struct Case {
    const char* grouped;
    const char* half;
    const char* answer;  // to each question; null for none
    const char* wanted;
    int questions = 0;
  };
  const Case cases[] = {
      {"1,234.57", "-0.5", nullptr, ".,"}, {"1.234,57", "-0,5", nullptr, ",."},
      {"1234.57", "-0.5", nullptr, ".,"},  {"1\u202F234,57", "\u22120,5", nullptr, ", "},
      {"", "-0.5", nullptr, ". "},         {"1234,57", "-0,5", nullptr, ",."},
      {"1,234.57", "-.5", ";", ";,", 1},   {"1,234.57", "", nullptr, ".,", 3},
      {"1,234.57", "-.5", "5", ".,", 3},   {"1.234,57", "-0\u066B5", ",", ",.", 1}};
  for (const Case& each : cases) {
    int questions = 0;
    const NumberPunctuation found = GetDecimalSeparators(each.grouped, each.half, [&] {
      ++questions;
      return each.answer ? std::optional<std::string>(each.answer) : std::nullopt;
    });
    EXPECT_EQ(std::string({found.DecimalPoint, found.ListPoint}), each.wanted) << each.half;
    EXPECT_EQ(questions, each.questions) << each.half;
  }
}

}  // namespace
}  // namespace tavlo
