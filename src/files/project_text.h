// Project text: what the reader and the writer of a project file share. The file
// has two kinds of line. A text line is one string, unquoted; a value line holds
// numbers and flags with commas between them. A section is one function that
// visits the fields of a record in the file's order; compiled for the reader and
// for the writer it does both, so that the two directions can't drift apart.
#pragma once

#include <cstddef>
#include <string>

#include "files/read_fault.h"
#include "numerics/error_reporter.h"

namespace tavlo {

/// Longer texts are neither written nor read.
inline constexpr std::size_t longest_text = std::size_t{16} << 20;

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

  /// What was at work when it went wrong: "Data Read Write Error: " and "RW_Data routine:".
  struct Place {
    const char* section = "";
    const char* routine = "";
  };
  const Place& failed_at() const { return failed_at_; }

  /// Names what is at work for as long as it lives.
  class AtWork {
   public:
    AtWork(ProjectText& text, Place place) : text_(text), outer_(text.at_work_) {
      text.at_work_ = place;
    }
    ~AtWork() { text_.at_work_ = outer_; }
    AtWork(const AtWork&) = delete;
    AtWork& operator=(const AtWork&) = delete;

   private:
    ProjectText& text_;
    Place outer_;
  };

 protected:
  /// Keeps the fault and raises the run-time error of that number.
  [[noreturn]] void refuse(int error_number, ReadFault fault);

 private:
  Place at_work_;
  Place failed_at_;
  ReadFault fault_;
};

/// Words for the handler of a section: the section's own, the routine that
/// failed (those of `place` where none has said so), line and cause.
inline auto section_words(ProjectText::Place place, const ProjectText& text) {
  return [place, &text](ErrorReporter& reporter) {
    const ReadFault& fault = text.fault();
    const bool named = !fault.what.empty();
    const ProjectText::Place at = named ? text.failed_at() : place;
    reporter.add_lines({at.section, at.routine});
    if (named)
      reporter.add_lines(
          {(fault.line > 0 ? "Line " + std::to_string(fault.line) + ": " : "") + fault.what});
  };
}

}  // namespace tavlo
