#include "numerics/decimal_separators.h"

#include <gtest/gtest.h>

#include "support/case_list.h"

namespace tavlo {
namespace {

TEST(DecimalSeparators, AreTakenFromTheSystemsNumbersOrAskedFor) {
  for (const auto& each : test::case_list("decimal_separators.txt")) {
    int questions = 0;
    const NumberPunctuation found = GetDecimalSeparators(each[0], each[1], [&] {
      ++questions;
      return each[2].empty() ? std::nullopt : std::optional(each[2]);
    });
    EXPECT_EQ(std::string({found.DecimalPoint, found.ListPoint}), each[3]) << each[1];
    EXPECT_EQ(std::to_string(questions), each[4]) << each[1];
  }
}

}  // namespace
}  // namespace tavlo
