#include "cli/cli_ports.h"

#include "cli/interruption.h"
#include "cli/output.h"

namespace tavlo::cli {

namespace {

/// Title and text of a box on one line.
std::string box_line(const Box& box) {
  std::string line = box.title.empty() ? "" : box.title + ": ";
  for (const char c : box.text)
    if (c != '\r') line += c == '\n' ? ' ' : c;
  while (line.ends_with(' ')) line.pop_back();
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
  complain(subject_ + (doubt ? ": warning: " : ": ") + box_line(box));
  return answer(box.buttons);
}

FileResult SafeFiles::write_whole(const std::string& path, std::string_view bytes) {
  const Uninterrupted until_it_stands;
  return DiskFiles::write_whole(path, bytes);
}

}  // namespace tavlo::cli
