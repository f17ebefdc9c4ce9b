// Project text: what the reader and the writer of a project file share. The file
// has two kinds of line. A text line is one string, unquoted; a value line holds
// numbers and flags with commas between them. A section is one function that
// visits the fields of a record in the file's order; compiled for the reader and
// for the writer it does both, so that the two directions can't drift apart.
#pragma once

#include <string>

#include "files/read_fault.h"
#include "numerics/error_reporter.h"

namespace tavlo {

/// A 32-bit number of a record that takes 16 bits in the file.
template <class Whole>
struct AsInt {
  Whole& wide;
};

template <class Whole>
AsInt<Whole> as_int(Whole& wide) {
  return {wide};
}

class ProjectText {
 public:
  /// What went wrong, with its line when a text was read (0 when it was written);
  /// no words while all is well.
  const ReadFault& fault() const { return fault_; }

  /// The routine that was at work when it went wrong.
  const std::string& failed_routine() const { return failed_routine_; }

  /// Names the routine at work for as long as it lives.
  class Routine {
   public:
    Routine(ProjectText& text, const char* name) : text_(text), outer_(text.routine_) {
      text.routine_ = name;
    }
    ~Routine() { text_.routine_ = outer_; }
    Routine(const Routine&) = delete;
    Routine& operator=(const Routine&) = delete;

   private:
    ProjectText& text_;
    const char* outer_;
  };

 protected:
  /// Keeps the fault and raises the run-time error of that number.
  [[noreturn]] void refuse(int error_number, ReadFault fault);

 private:
  const char* routine_ = "";
  std::string failed_routine_;
  ReadFault fault_;
};

/// Words for the handler of a section: the section's own, the routine that
/// failed (`routine` where none has said so), line and cause.
inline auto section_words(const char* section, const char* routine, const ProjectText& text) {
  return [section, routine, &text](ErrorReporter& reporter) {
    const ReadFault& fault = text.fault();
    const bool named = !fault.what.empty();
    reporter.add_lines({section, named ? text.failed_routine() : routine});
    if (named)
      reporter.add_lines(
          {(fault.line > 0 ? "Line " + std::to_string(fault.line) + ": " : "") + fault.what});
  };
}

}  // namespace tavlo
