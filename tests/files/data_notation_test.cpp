#include "files/data_notation.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

#include "files/data_text.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

/// A positive time of any size that 32 bits hold.
float random_time(std::mt19937_64& random) {
  for (;;) {
    const auto bits = static_cast<std::uint32_t>(random() & 0x7FFFFFFFU);
    const float time = std::bit_cast<float>(bits);
    if (std::isnormal(time)) return time;
  }
}

// Every bit of a time and of a count survives the way out and back.
TEST(DataNotation, WriteReadWriteGivesTheSameText) {
  std::mt19937_64 random(7);
  for (int run = 0; run < 300; ++run) {
    DataSet written = test::make_data(std::vector<test::Point>(1 + random() % 40));
    for (int i = 1; i <= written.Count; ++i) {
      DataPoint& point = written.Points(i);
      point.X = random_time(random);
      const double units = std::ldexp(static_cast<double>(1 + random() % 1000), -3) / 3;
      (random() % 2 == 0 ? point.Fails : point.Susps) = units;
    }
    DataSet sorted;
    ASSERT_FALSE(read_data_text(write_notation(written), {}, sorted));
    const std::string text = write_notation(sorted);
    DataSet again;
    ASSERT_FALSE(read_data_text(text, {}, again)) << text;
    ASSERT_EQ(write_notation(again), text);
    for (int i = 1; i <= again.Count; ++i) ASSERT_EQ(again.Points(i).X, sorted.Points(i).X);
  }
}

}  // namespace
}  // namespace tavlo
