// ProgramRun: one run of the real tavlo-cli, in a folder of its own.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace tavlo::test {

/// What the sanitizers may take in addition.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr long memory_factor = 12;
#else
inline constexpr long memory_factor = 1;
#endif

struct ProgramRun {
  int code = -1;  ///< exit code; -1 when it was ended by a signal
  std::string out;
  std::string err;
  long peak_kilobytes = 0;  ///< most memory that it held

  /// The JSON objects of its output, one a line.
  std::vector<nlohmann::json> json() const;
};

/// A folder that goes with its content when the test ends.
class CliFolder {
 public:
  CliFolder();
  ~CliFolder();
  CliFolder(const CliFolder&) = delete;
  CliFolder& operator=(const CliFolder&) = delete;

  /// Runs tavlo-cli with this folder as the current one.
  ProgramRun run(const std::vector<std::string>& arguments, const std::string& input = "") const;

  /// Runs a line of the shell here, in which $CLI is the program.
  ProgramRun shell(const std::string& line) const;

  void write(const std::string& name, const std::string& bytes) const;
  std::string read(const std::string& name) const;
  std::filesystem::path path(const std::string& name) const { return folder_ / name; }

 private:
  ProgramRun run_program(const std::string& program, std::vector<std::string> words,
                         const std::string& input) const;

  std::filesystem::path folder_;
};

/// A test that runs the program in a folder of its own.
struct CliTest : ::testing::Test {
  const CliFolder folder;
};

/// The path of a data set that comes with the program.
std::string example(const std::string& name);

}  // namespace tavlo::test
