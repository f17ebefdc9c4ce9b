#include "files/project_writer.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "files/project_reader.h"
#include "files/text_lines.h"
#include "numerics/slots.h"

namespace tavlo {
namespace {

template <class Value>
std::string written(Value value) {
  ProjectWriter file;
  file.values(value);
  return file.bytes().substr(0, file.bytes().size() - 2);
}

TEST(ProjectWriter, NumbersHaveTheirForms) {
  const std::pair<double, const char*> doubles[] = {
      {0, "0"},
      {-0.0, "0"},
      {1e15, "1E+15"},
      {0.0001, "0.0001"},
      {0.00001, "1E-05"},
      {double{7.0F / 34.0F}, "0.205882355570793"},
      {std::numeric_limits<double>::max(), "1.79769313486231E+308"}};
  for (const auto& [number, text] : doubles) EXPECT_EQ(written(number), text);
  EXPECT_EQ(written(123456.789F), "123456.8");
}

TEST(ProjectWriter, TextCantShiftWhatStandsBehindIt) {
  ProjectWriter file;
  file.text(std::string("a\r\nb\0c\x1A", 7) + "€ü漢字");
  EXPECT_EQ(file.bytes(), "a  b c \x80\xFC??\r\n");
  EXPECT_EQ(file.lost(), "漢字");
}

TEST(ProjectWriter, RefusesWhatCantBeReadBack) {
  ProjectWriter file;
  const std::int32_t wide = 32768;
  Slots<int> list(3);
  EXPECT_THROW(file.value(std::nan("")), RunTimeError);
  EXPECT_THROW(file.value(-std::numeric_limits<float>::infinity()), RunTimeError);
  EXPECT_THROW(file.value(as_int(wide)), RunTimeError);
  EXPECT_EQ(file.fault().what, "32768 is too large for the file");
  EXPECT_THROW(file.make_room(list, 4, 2), RunTimeError);
  EXPECT_NO_THROW(file.make_room(list, 3, 2));
  EXPECT_NO_THROW(file.text(std::string(longest_text, 'a')));
  EXPECT_THROW(file.text(std::string(longest_text + 1, 'a')), RunTimeError);
}

// Digits are lost once, at the first save; from then on the text stands still.
template <class Value, class Bits>
void expect_stable_text(double tolerance) {
  std::mt19937_64 random(71);
  for (int i = 0; i < 20000; ++i) {
    const auto value = std::bit_cast<Value>(static_cast<Bits>(random()));
    if (!std::isfinite(value)) continue;
    const std::string text = written(value);
    Value back = 0;
    ProjectReader(text).value(back);
    ASSERT_EQ(written(back), text);
    if (std::fabs(value) > std::numeric_limits<Value>::min()) {
      ASSERT_LE(std::fabs(double{back} / double{value} - 1), tolerance) << text;
    }
  }
}

TEST(ProjectWriter, TextIsStableFromTheFirstSaveOn) {
  expect_stable_text<float, std::uint32_t>(5.6e-7);
  expect_stable_text<double, std::uint64_t>(5.2e-15);
}

}  // namespace
}  // namespace tavlo
