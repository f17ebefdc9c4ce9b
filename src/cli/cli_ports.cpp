#include "cli/cli_ports.h"

#include <cstdio>
#include <cstdlib>

#include "numerics/number_text.h"

namespace tavlo::cli {

void complain(const std::string& what) {
  const std::string line = "tavlo-cli: " + what + "\n";
  std::fputs(line.c_str(), stderr);
}

std::string box_line(const Box& box) {
  std::string line = box.title.empty() ? "" : box.title + ": ";
  for (const char c : box.text)
    if (c != '\r') line += c == '\n' ? ' ' : c;
  while (line.ends_with(' ')) line.pop_back();
  return line;
}

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
  const BoxAnswer given = answer(box.buttons);
  const bool doubt = box.buttons != BoxButtons::ok;
  complain(subject_ + (doubt ? ": warning: " : ": ") + box_line(box));
  seen_.push_back({box, given});
  return given;
}

std::optional<std::string> CliPrompts::ask_line(const std::string&, const std::string&,
                                                const std::string&) {
  if (own_slope_ > 0) return number_text(own_slope_);
  if (slope_.empty()) return std::nullopt;
  return slope_;
}

std::string QuietHost::environment(const std::string& name) {
  const char* const value = std::getenv(name.c_str());
  return value ? value : "";
}

}  // namespace tavlo::cli
