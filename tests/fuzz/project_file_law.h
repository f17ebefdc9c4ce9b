// The law of project files: whatever can be read can be written, in the stated form, and what
// is written is read back and written again to the same bytes. A number loses digits once.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "files/project_file.h"
#include "support/project_lines.h"

namespace tavlo::test {

/// What breaks the law for a project that was read; empty when it keeps it.
inline std::string breach_of_writing(const Project& first) {
  ProjectBytes once, twice, thrice;
  if (const auto fault = write_project(first, once))
    return "can't be written: " + fault->fault.what;
  try {
    values_of(once.bytes);
  } catch (const std::runtime_error& error) {
    return error.what() + ("\n" + once.bytes);
  }
  Project second, third;
  if (const auto fault = read_project(once.bytes, second))
    return "can't be read back: line " + std::to_string(fault->fault.line) + ": " +
           fault->fault.what;
  if (write_project(second, twice) || read_project(twice.bytes, third) ||
      write_project(third, thrice))
    return "can't be written again";
  return twice.bytes == thrice.bytes ? "" : "changed from\n" + twice.bytes;
}

/// What breaks the law for these bytes.
inline std::string breach_of_project_law(std::string_view bytes) {
  Project project;
  const auto fault = read_project(bytes, project);
  if (!fault) return breach_of_writing(project);
  if (!(project == Project())) return "a fault has changed the project";
  return fault->fault.what.empty() || fault->error_number == 0 ? "a fault without words" : "";
}

}  // namespace tavlo::test
