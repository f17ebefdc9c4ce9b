#include "numerics/number_reading.h"

#include <gtest/gtest.h>

#include <random>

#include "support/reporter_test.h"

namespace tavlo {
namespace {

using NumberReadingTest = test::ReporterTest;

TEST_F(NumberReadingTest, reads_what_a_person_types) {
  using Row = std::tuple<const char*, double, const char*>;
  const Row rows[] = {{"1.5K", 1500, "1.5"},
                      {"-50%", -0.5, "50"},
                      {"abc", 0, "0"},
                      {"", 0, ""},
                      {"-", 0, "0"},
                      {"+-5", 5, "5"},
                      {"1,234.5", 1234.5, "1234.5"},
                      {".5", 0.5, ".5"},
                      {"1E3", 1000, "1E3"},
                      {"100 days", 100, "100"},
                      {"5 cm", 5e6, "5"},
                      {"1E-999", 0, "1E-999"},
                      {"1K%", 0.01, "1"},
                      {"NaN", 0, "0"},
                      {"0x1F", 1, "01"},
                      {"1E1.5", 0, "0"},
                      {"1-2", 12, "12"},
                      {"1 g", 1e9, "1"},
                      {".", 0, "0"},
                      {"\xD9\xA3", 0, "0"},
                      {"0.001E99999999999", 0, nullptr},
                      {"-1.8E308", 0, nullptr},
                      {"1E306K", 0, nullptr}};
  for (const auto& [typed, value, cleaned] : rows) {
    if (cleaned == nullptr)
      prompts.expect_box("Error: 6 Overflow", "fd_Str2Dbl routine:\nOverflow");
    std::string text = typed;
    std::int32_t whole = 9;
    EXPECT_EQ(fd_Str2Dbl(reporter, text, whole), value) << typed;
    EXPECT_EQ(text, cleaned ? cleaned : "0") << typed;
    EXPECT_TRUE(cleaned || whole == 0) << typed;
  }
}

TEST_F(NumberReadingTest, the_decimal_separator_is_that_of_the_system) {
  EXPECT_EQ(fd_Str2Dbl(reporter, "1.234,5", {',', ';'}), 1234.5);
}

TEST_F(NumberReadingTest, hostile_text_gives_a_finite_number_at_once) {
  prompts.accept_all();
  EXPECT_EQ(fd_Str2Dbl(reporter, std::string(1'000'000, '0') + "5"), 0);
  EXPECT_EQ(fd_Str2Dbl(reporter, std::string(5000, 'E')), 0);
  std::mt19937_64 random(5);
  const std::string letters = std::string("0159.,+-eEdDkM% x\t") + '\0' + '\xff';
  for (int round = 0; round < 50000; ++round) {
    std::string text;
    for (auto length = random() % 12; length > 0; --length)
      text += letters[random() % letters.size()];
    std::int32_t whole = 0;
    EXPECT_TRUE(std::isfinite(fd_Str2Dbl(reporter, text, whole))) << text;
    EXPECT_EQ(text.find_first_not_of("0123456789.ED+-"), std::string::npos) << text;
  }
}

}  // namespace
}  // namespace tavlo
