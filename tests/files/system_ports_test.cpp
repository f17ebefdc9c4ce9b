#include "files/system_ports.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <ctime>

namespace tavlo {
namespace {

/// Days since 30 December 1899 of the clock's own date and time.
double day_count_of(const DateTime& moment) {
  std::tm utc{};
  utc.tm_year = moment.year - 1900;
  utc.tm_mon = moment.month - 1;
  utc.tm_mday = moment.day;
  const double days = static_cast<double>(::timegm(&utc)) / 86400.0 + 25569.0;
  return days + (moment.hour * 3600 + moment.minute * 60 + moment.second) / 86400.0;
}

TEST(SystemClock, ItsFormsTellTheSameMomentInAnyZone) {
  const char* const zone_here = std::getenv("TZ");
  const std::string before_all = zone_here ? zone_here : "";
  for (const char* zone : {"UTC", "XXX-13:45", "YYY+11"}) {
    ::setenv("TZ", zone, 1);
    ::tzset();
    SystemClock clock;
    const double before = clock.day_count();
    const DateTime now = clock.now();
    const double seconds = clock.seconds_since_midnight();
    EXPECT_NEAR(day_count_of(now), before, 3.0 / 86400.0) << zone;
    const double of_day = (before - std::floor(before)) * 86400.0;
    EXPECT_LT(std::fabs(std::remainder(seconds - of_day, 86400.0)), 3.0) << zone;
    // 30 December 1899, day 0, was a Saturday.
    EXPECT_EQ((now.weekday + 1) % 7, static_cast<int>(std::floor(day_count_of(now))) % 7) << zone;
  }
  before_all.empty() ? ::unsetenv("TZ") : ::setenv("TZ", before_all.c_str(), 1);
  ::tzset();
}

}  // namespace
}  // namespace tavlo
