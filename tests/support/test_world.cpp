#include "support/test_world.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace tavlo::test {

ScriptedPrompts::~ScriptedPrompts() { verify(); }

void ScriptedPrompts::verify() {
  for (const Expected& missing : expected_)
    ADD_FAILURE() << "expected and not shown: [" << missing.title << "] " << missing.text;
  expected_.clear();
}

std::optional<ScriptedPrompts::Expected> ScriptedPrompts::next(char kind, const std::string& title,
                                                               const std::string& text) {
  if (expected_.empty()) {
    ADD_FAILURE() << "not expected: [" << title << "] " << text;
    return std::nullopt;
  }
  Expected expected = expected_.front();
  expected_.pop_front();
  EXPECT_EQ(expected.kind, kind) << "[" << title << "] " << text;
  EXPECT_NE(title.find(expected.title), std::string::npos)
      << "title [" << title << "], expected [" << expected.title << "]";
  EXPECT_NE(text.find(expected.text), std::string::npos)
      << "text [" << text << "], expected [" << expected.text << "]";
  return expected;
}

BoxAnswer ScriptedPrompts::show(const Box& box) {
  shown_.push_back(box);
  if (accept_all_) return BoxAnswer::ok;
  const auto expected = next('b', box.title, box.text);
  return expected ? expected->answer : BoxAnswer::cancel;
}

std::optional<std::string> ScriptedPrompts::ask_line(const std::string& title,
                                                     const std::string& text, const std::string&) {
  const auto expected = next('l', title, text);
  return expected ? expected->line : std::nullopt;
}

std::optional<std::string> ScriptedPrompts::choose_file(const FileRequest& request) {
  const auto expected = next('f', request.title, "");
  return expected ? expected->line : std::nullopt;
}

double TestClock::seconds_since_midnight() { return std::fmod(seconds_, 86400.0); }

DateTime TestClock::now() {
  const int second = static_cast<int>(seconds_since_midnight());
  return {2026, 11, 21, second / 3600, second / 60 % 60, second % 60, 6};
}

double TestClock::day_count() { return 46347.0 + seconds_ / 86400.0; }

TextExtent FixedTextMeasure::measure(const std::string& utf8, const FontChoice& font) {
  const auto characters =
      std::count_if(utf8.begin(), utf8.end(), [](char c) { return (c & 0xC0) != 0x80; });
  return {0.6 * font.size_points * static_cast<double>(characters), 1.2 * font.size_points};
}

void MemoryFiles::fail_at(int operation, FileFault fault) {
  fail_at_ = operations_ + operation;
  fault_ = fault;
}

FileResult MemoryFiles::start(const std::string& path, bool must_stand) {
  if (++operations_ == fail_at_) return {fault_, "fault made for the test: " + path};
  if (folders.contains(path)) return {FileFault::not_a_regular_file, "this is a folder"};
  if (must_stand && !files.contains(path)) return {FileFault::not_found, "there is no such file"};
  return {};
}

FileResult MemoryFiles::start_folder(const std::string& path) {
  if (++operations_ == fail_at_) return {fault_, "fault made for the test: " + path};
  if (files.contains(path)) return {FileFault::not_a_folder, "this is a file"};
  return {};
}

FileResult MemoryFiles::read_whole(const std::string& path, const SizeLimit& limit,
                                   std::string& bytes) {
  if (const FileResult started = start(path, true); !started) return started;
  if (files[path].size() > limit(files[path]))
    return {FileFault::too_large, "the file is too large"};
  bytes = files[path];
  return {};
}

FileResult MemoryFiles::write_whole(const std::string& path, std::string_view bytes) {
  if (const FileResult started = start(path, false); !started) return started;
  files[path] = bytes;
  return {};
}

FileResult MemoryFiles::create_new(const std::string& path, std::string_view bytes) {
  const FileResult started = start(path, false);
  if (!started && operations_ == fail_at_) return started;
  if (exists(path)) return {FileFault::exists_already, "there is such a file already"};
  files[path] = bytes;
  return {};
}

FileResult MemoryFiles::try_out(const std::string& path, std::string_view) {
  const FileResult started = start(path, false);
  if (!started && operations_ == fail_at_) return started;
  return exists(path) ? FileResult{FileFault::exists_already, "there is such a file already"}
                      : FileResult();
}

FileResult MemoryFiles::append(const std::string& path, std::string_view bytes) {
  if (const FileResult started = start(path, false); !started) return started;
  files[path] += bytes;
  return {};
}

FileResult MemoryFiles::remove(const std::string& path) {
  if (const FileResult started = start(path, true); !started) return started;
  files.erase(path);
  return {};
}

FileResult MemoryFiles::write_keeping_former(const std::string& path, std::string_view bytes) {
  if (const FileResult started = start(path, false); !started) return started;
  if (read_only.contains(path)) return {FileFault::no_permission, "writing is not permitted"};
  if (files.contains(path)) files[path + "~"] = files[path];
  files[path] = bytes;
  return {};
}

FileResult MemoryFiles::make_writable(const std::string& path) {
  if (const FileResult started = start(path, true); !started) return started;
  read_only.erase(path);
  return {};
}

FileResult MemoryFiles::make_folder(const std::string& path) {
  if (const FileResult started = start_folder(path); !started) return started;
  for (std::size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1))
    folders.insert(path.substr(0, end));
  folders.insert(path);
  return {};
}

FileResult MemoryFiles::list_folder(const std::string& path, std::vector<std::string>& names) {
  if (const FileResult started = start_folder(path); !started) return started;
  std::set<std::string> found;
  const auto look_at = [&](const std::string& each) {
    if (each.starts_with(path + "/"))
      found.insert(each.substr(path.size() + 1, each.find('/', path.size() + 1) - path.size() - 1));
  };
  for (const auto& [file, bytes] : files) look_at(file);
  std::for_each(folders.begin(), folders.end(), look_at);
  names.assign(found.begin(), found.end());
  const bool stands = !found.empty() || folders.contains(path);
  return stands ? FileResult() : FileResult{FileFault::not_found, "there is no such folder"};
}

FileResult MemoryFiles::look_up(const std::string& path, FileFacts& facts) {
  facts.is_folder = folders.contains(path);
  if (const FileResult started = facts.is_folder ? start_folder(path) : start(path, true); !started)
    return started;
  facts.size = facts.is_folder ? 0 : files[path].size();
  if (read_only.contains(path)) facts.is_read_only = true;
  return {};
}

int RecordingViews::count(const std::string& line) const {
  return static_cast<int>(std::count(said.begin(), said.end(), line));
}

TestWorld::TestWorld() : session(ports()) {}
TestWorld::~TestWorld() = default;

Ports TestWorld::ports() {
  return {prompts, event_loop, clock, entropy,  clipboard, text_measure,
          files,   host,       views, progress, timer};
}

DataSet make_data(const std::vector<Point>& points) {
  DataSet data = fuStandardData();
  for (const Point& from : points) {
    SheetRow row;
    row.time = static_cast<float>(from.x);
    row.failures = from.fails;
    row.suspensions = from.susps;
    row.mode = static_cast<std::int16_t>(from.mode);
    for (const int column : {sheet_column::x, sheet_column::fails, sheet_column::susps})
      row.set_given(column, true);
    data.rows.push_back(row);
    while (data.ModeNames.bound() < from.mode)
      data.ModeNames.push_back("mode" + std::to_string(data.ModeNames.bound() + 1));
  }
  return data;
}

}  // namespace tavlo::test
