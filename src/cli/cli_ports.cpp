#include "cli/cli_ports.h"

#include <sstream>

#include "cli/interruption.h"
#include "cli/output.h"
#include "files/text_lines.h"

namespace tavlo::cli {

namespace {

/// Title and text of a box on one line, without the lines that name a routine of the program.
std::string box_line(const Box& box) {
  std::string line = box.title.empty() ? "" : box.title + ":";
  std::istringstream lines(box.text);
  for (std::string next; std::getline(lines, next);) {
    const std::string_view words = trimmed(next);
    if (!words.empty() && !words.ends_with(" routine:")) line += ' ' + std::string(words);
  }
  return line;
}

}  // namespace

BoxAnswer CliPrompts::answer(BoxButtons buttons) const {
  switch (buttons) {
    case BoxButtons::ok: return BoxAnswer::ok;
    case BoxButtons::ok_cancel: return strict_ ? BoxAnswer::cancel : BoxAnswer::ok;
    case BoxButtons::yes_no: return strict_ ? BoxAnswer::no : BoxAnswer::yes;
    case BoxButtons::yes_no_cancel: return strict_ ? BoxAnswer::cancel : BoxAnswer::yes;
    case BoxButtons::retry_cancel: return strict_ ? BoxAnswer::cancel : BoxAnswer::retry;
  }
  return BoxAnswer::cancel;
}

BoxAnswer CliPrompts::show(const Box& box) {
  const bool doubt = box.buttons != BoxButtons::ok;
  doubt ? warn(subject_, box_line(box)) : complain(subject_ + ": " + box_line(box));
  return answer(box.buttons);
}

FileResult SafeFiles::write_whole(const std::string& path, std::string_view bytes) {
  const Uninterrupted until_it_stands;
  return DiskFiles::write_whole(path, bytes);
}

FileResult SafeFiles::write_keeping_former(const std::string& path, std::string_view bytes) {
  const Uninterrupted until_it_stands;
  return DiskFiles::write_keeping_former(path, bytes);
}

}  // namespace tavlo::cli
