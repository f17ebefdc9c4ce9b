// RunTimeError: the one exception of the program. It carries a number and the
// words that belong to it, and never leaves a routine that has a handler.
#pragma once

#include <exception>
#include <string>

namespace tavlo {

/// The numbers that the program raises.
namespace run_time {
inline constexpr int invalid_argument = 5;
inline constexpr int overflow = 6;
inline constexpr int out_of_memory = 7;
inline constexpr int subscript = 9;
inline constexpr int division_by_zero = 11;
inline constexpr int type_mismatch = 13;
inline constexpr int out_of_string_space = 14;
inline constexpr int bad_file_name = 52;
inline constexpr int file_not_found = 53;
inline constexpr int device_error = 57;
inline constexpr int disk_full = 61;
inline constexpr int input_past_end = 62;
inline constexpr int permission_denied = 70;
inline constexpr int path_access = 75;
inline constexpr int path_not_found = 76;
}  // namespace run_time

/// The standard words for an error number; "Application-defined error" for others.
const char* run_time_description(int number);

class RunTimeError : public std::exception {
 public:
  explicit RunTimeError(int number) : number_(number), description_(run_time_description(number)) {}

  int number() const { return number_; }
  const std::string& description() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  int number_;
  std::string description_;
};

}  // namespace tavlo
