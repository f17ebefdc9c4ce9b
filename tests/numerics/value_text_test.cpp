#include "numerics/value_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace tavlo {
namespace {

TEST(ValueText, EngineeringPrefixes) {
  using Row = std::tuple<double, const char*, const char*>;
  const Row rows[] = {{0, "0.0k", "0.0"},         {1, "k", "1"},
                      {999, "k", "999"},          {1000.00005, "k", "1K"},
                      {999.99995, "0.00k", "1K"}, {1500, "0.0k", "1.5K"},
                      {-1500, "0.0k", "-1.5K"},   {1e6, "k", "1M"},
                      {2e6, "k", "2000K"},        {25e6, "0k", "25M"},
                      {3.5e11, "0k", "350G"},     {2e14, "0k", "200T"},
                      {5e16, "0k", "50P"},        {1e12, "0.000k", "1T"},
                      {1e18, "0k", "1E+18"},      {0.25, "0k", "0.3"},
                      {0.5, "0.00k", "0.50"},     {0.015, "0k", "0.02"},
                      {0.002, "0k", "0.002"},     {0.0002, "0.0k", "2.0E-4"},
                      {2.5e-7, "0.0k", "2.5E-7"}, {0.7512, "00.0000%", "75.1200%"},
                      {-2.5, "0.00", "-2.50"}};
  for (const auto& [value, format, text] : rows)
    EXPECT_EQ(fs_Dbl2Txt(value, format), text) << value << " by " << format;
  EXPECT_EQ(fs_Dbl2Txt(46347.5, "dd mmm yyyy"), "21 Nov 2026");
  EXPECT_EQ(fs_Dbl2Txt(0.75, "yyyy-mm-dd hh:nn:ss"), "1899-12-30 18:00:00");
}

}  // namespace
}  // namespace tavlo
