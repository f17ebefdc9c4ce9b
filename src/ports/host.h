// Host: the machine around the program.
#pragma once

#include <string>
#include <vector>

namespace tavlo {

class Host {
 public:
  virtual ~Host() = default;

  /// The value of an environment variable; empty when it is not set.
  virtual std::string environment(const std::string& name) = 0;

  /// Starts a program without waiting for it; false when it can't be started.
  virtual bool start_program(const std::string& program,
                             const std::vector<std::string>& arguments) = 0;
};

}  // namespace tavlo
