// ReadFault: why a data text can't be read, in words for its author.
#pragma once

#include <optional>
#include <string>

namespace tavlo {

/// What is wrong, and in which line (from 1).
struct ReadFault {
  long line = 0;
  std::string what;
  bool comma_in_doubt = false;  ///< readable once it is known what a comma means
  bool stopped = false;         ///< the person wanted the reading to end
};

/// A fault of a file, with the number of the run-time error that it is reported as.
struct NumberedFault {
  int error_number = 0;
  ReadFault fault;
};

/// What is wrong with one field or line; nothing when all is well.
using FieldFault = std::optional<std::string>;

}  // namespace tavlo
