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
    for (std::size_t i = 0; i < written.rows.size(); ++i) {
      SheetRow& row = written.rows.edit(i);
      row.time = random_time(random);
      const double units = std::ldexp(static_cast<double>(1 + random() % 1000), -3) / 3;
      (random() % 2 == 0 ? row.failures : row.suspensions) = units;
    }
    DataSet read;
    ASSERT_FALSE(read_data_text(write_notation(written), {}, read));
    const std::string text = write_notation(read);
    DataSet again;
    ASSERT_FALSE(read_data_text(text, {}, again)) << text;
    ASSERT_EQ(write_notation(again), text);
    ASSERT_EQ(again.rows, read.rows);
  }
}

}  // namespace
}  // namespace tavlo
