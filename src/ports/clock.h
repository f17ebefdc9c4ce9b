// Clock: the present moment, in the forms that the program asks for. Nothing
// else in the core reads the time, so that a test can move it.
#pragma once

namespace tavlo {

/// A local date and time. `month` and `day` count from 1, `weekday` from 0 = Sunday.
struct DateTime {
  int year = 2000;
  int month = 1;
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;
  int weekday = 6;
};

class Clock {
 public:
  virtual ~Clock() = default;

  /// Seconds since local midnight, with a fraction.
  virtual double seconds_since_midnight() = 0;

  /// The local date and time.
  virtual DateTime now() = 0;

  /// Local time as days since 30 December 1899, with a fraction.
  virtual double day_count() = 0;

  /// Seconds since some fixed moment; never goes back.
  virtual double steady_seconds() = 0;
};

}  // namespace tavlo
