// Host: the machine around the program.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ports/file_system.h"

namespace tavlo {

class Host {
 public:
  virtual ~Host() = default;

  /// The folder that the program's own file stands in.
  virtual std::string program_folder() = 0;

  /// The number by which the system knows this run of the program.
  virtual std::int64_t process_id() = 0;

  /// Whether a process of that number runs; true where that can't be known.
  virtual bool is_running(std::int64_t process_id) = 0;

  /// A folder for files that nobody misses after a restart. It belongs to the person who
  /// runs the program and is closed to all others; empty where there is none.
  virtual std::string temp_folder() = 0;

  /// The value of an environment variable; empty when it is not set.
  virtual std::string environment(const std::string& name) = 0;

  /// The path of a program that can be started: a name is looked for where the person's
  /// own commands are, a path is taken as it is.
  virtual std::optional<std::string> find_program(const std::string& name) = 0;

  /// Starts a program, by name or path, without waiting for it. Each argument reaches it
  /// as it stands; files that are open here are not open there. A program that can't be
  /// started is a fault; what becomes of one that was started is not known.
  virtual FileResult start_program(const std::string& program,
                                   const std::vector<std::string>& arguments) = 0;
};

}  // namespace tavlo
