#include "files/system_ports.h"

#include <chrono>
#include <ctime>
#include <random>

namespace tavlo {

namespace {

struct Moment {
  std::tm local{};
  double fraction = 0;  ///< of the second
};

Moment present() {
  using std::chrono::system_clock;
  const auto now = system_clock::now();
  const auto whole = std::chrono::floor<std::chrono::seconds>(now);
  const std::time_t seconds = system_clock::to_time_t(whole);
  Moment moment;
  localtime_r(&seconds, &moment.local);
  moment.fraction = std::chrono::duration<double>(now - whole).count();
  return moment;
}

double seconds_of_day(const Moment& moment) {
  const std::tm& local = moment.local;
  return local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec + moment.fraction;
}

}  // namespace

double SystemClock::seconds_since_midnight() { return seconds_of_day(present()); }

DateTime SystemClock::now() {
  const std::tm local = present().local;
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
          local.tm_min,         local.tm_sec,     local.tm_wday};
}

double SystemClock::day_count() {
  using namespace std::chrono;
  const Moment moment = present();
  const sys_days today = year(moment.local.tm_year + 1900) /
                         month(static_cast<unsigned>(moment.local.tm_mon + 1)) /
                         day(static_cast<unsigned>(moment.local.tm_mday));
  constexpr sys_days zero = year(1899) / December / day(30);
  return static_cast<double>((today - zero).count()) + seconds_of_day(moment) / 86400.0;
}

double SystemClock::steady_seconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

std::uint32_t RandomEntropy::next() {
  std::random_device device;
  return device();
}

}  // namespace tavlo
