// System ports: the real clock, the real source of chance and the real machine, for every
// front end that runs outside a test.
#pragma once

#include "ports/clock.h"
#include "ports/entropy.h"
#include "ports/host.h"

namespace tavlo {

/// The system's clock, in local time.
class SystemClock : public Clock {
 public:
  double seconds_since_midnight() override;
  DateTime now() override;
  double day_count() override;
  double steady_seconds() override;
};

/// The random numbers of the operating system.
class RandomEntropy : public Entropy {
 public:
  std::uint32_t next() override;
};

class SystemHost : public Host {
 public:
  std::string program_folder() override;
  std::int64_t process_id() override;
  bool is_running(std::int64_t process_id) override;
  std::string temp_folder() override;
  std::string environment(const std::string& name) override;

  /// On PATH, but never in the current folder.
  std::optional<std::string> find_program(const std::string& name) override;
  FileResult start_program(const std::string& program,
                           const std::vector<std::string>& arguments) override;
};

}  // namespace tavlo
