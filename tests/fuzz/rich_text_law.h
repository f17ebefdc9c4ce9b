// The law of rich text: whatever is read can be written, in ASCII, and that is read as the
// same and written as the same again.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "project/code_page.h"
#include "project/rich_text.h"

namespace tavlo::test {

inline std::string breach_of_rich_text_law(const RichText& text) {
  const std::string written = text.rtf();
  const auto is_plain = [](char c) { return (c >= ' ' && c < '\x7F') || c == '\r' || c == '\n'; };
  if (!std::all_of(written.begin(), written.end(), is_plain)) return "not ASCII:\n" + written;
  const RichText again = RichText::from_rtf(written);
  if (!(again == text)) return "changed from\n" + written + "\nto\n" + again.rtf();
  if (again.rtf() != written) return "written in another way:\n" + written;
  if (!is_utf8(text.plain())) return "no UTF-8:\n" + written;
  return "";
}

/// Bytes as a document and as a piece of one that stands between two others.
inline std::string breach_of_rich_text_law(std::string_view bytes) {
  const std::string breach = breach_of_rich_text_law(RichText::from_rtf(bytes));
  if (!breach.empty()) return breach;
  RichText log;
  log.append_plain("before");
  const RichText before = log;
  log.append_rtf(bytes);
  const RichText between = log;
  log.append_plain("after");
  if (!log.plain().ends_with("after") || !between.behind(before)) return "spoils what is beside it";
  RichText joined = before;
  joined.append(*log.behind(before));
  return joined == log ? breach_of_rich_text_law(log) : "its parts don't make the whole";
}

}  // namespace tavlo::test
