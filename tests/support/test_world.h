// TestWorld: the world of one test. Every port is one that the test controls;
// a box that the test did not expect, or expected and did not get, fails it.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "ports/ports.h"
#include "project/session.h"
#include "support/relative_difference.h"

namespace tavlo::test {

/// Answers boxes from a queue. `title` and `text` must be found in the box.
class ScriptedPrompts : public Prompts {
 public:
  ~ScriptedPrompts() override;

  void expect_box(const std::string& title, const std::string& text,
                  BoxAnswer answer = BoxAnswer::ok) {
    expected_.push_back({'b', title, text, answer, {}});
  }
  void expect_line(const std::string& title, const std::optional<std::string>& answer) {
    expected_.push_back({'l', title, {}, BoxAnswer::ok, answer});
  }
  void expect_file(const std::string& title, const std::optional<std::string>& answer) {
    expected_.push_back({'f', title, {}, BoxAnswer::ok, answer});
  }

  /// Accepts every box with OK and keeps it, for tests that count.
  void accept_all() { accept_all_ = true; }
  const std::vector<Box>& shown() const { return shown_; }

  /// Fails the test for each expected box that did not come; forgets them.
  void verify();

  BoxAnswer show(const Box& box) override;
  std::optional<std::string> ask_line(const std::string& title, const std::string& text,
                                      const std::string& suggestion) override;
  std::optional<std::string> choose_file(const FileRequest& request) override;

 private:
  struct Expected {
    char kind;  // 'b'ox, 'l'ine, 'f'ile
    std::string title;
    std::string text;
    BoxAnswer answer = BoxAnswer::ok;
    std::optional<std::string> line;
  };
  std::optional<Expected> next(char kind, const std::string& title, const std::string& text);

  bool accept_all_ = false;
  std::deque<Expected> expected_;
  std::vector<Box> shown_;
};

/// Stands still until the test moves it. Starts on 21 November 2026, 14:05:09.
class TestClock : public Clock {
 public:
  void advance(double seconds) { seconds_ += seconds; }
  double seconds_since_midnight() override;
  DateTime now() override;
  double day_count() override;
  double steady_seconds() override { return seconds_; }

 private:
  double seconds_ = 14 * 3600 + 5 * 60 + 9;
};

/// The same number in every run.
class SeededEntropy : public Entropy {
 public:
  std::uint32_t next() override { return 12345; }
};

class FakeClipboard : public Clipboard {
 public:
  std::string text() override { return plain; }
  bool is_too_long() override { return plain.size() > largest_pasted_text; }
  ClipboardText rich_text() override { return {plain, rtf, html}; }
  bool holds_only_picture() override { return plain.empty() && !picture.empty(); }
  void set_text(const ClipboardText& text) override {
    plain = text.plain;
    rtf = text.rtf;
    html = text.html;
  }
  bool set_picture(const std::vector<ClipboardForm>& forms) override {
    if (!refuses) picture = forms;
    return !refuses;
  }
  std::string plain;
  std::string rtf;
  std::string html;
  std::vector<ClipboardForm> picture;
  bool refuses = false;
};

/// Every character is 0.6 of the font size wide, every line 1.2 of it high.
class FixedTextMeasure : public TextMeasure {
 public:
  TextExtent measure(const std::string& utf8, const FontChoice& font) override;
};

/// Files in memory. fail_at(n) makes the n-th operation from now on fail. A file's folder
/// needs no making.
class MemoryFiles : public FileSystem {
 public:
  void fail_at(int operation, FileFault fault = FileFault::disk_full);
  int operations() const { return operations_; }

  using FileSystem::read_whole;
  FileResult read_whole(const std::string& path, const SizeLimit& limit,
                        std::string& bytes) override;
  FileResult write_whole(const std::string& path, std::string_view bytes) override;
  FileResult create_new(const std::string& path, std::string_view bytes) override;
  FileResult try_out(const std::string& path, std::string_view bytes) override;
  FileResult append(const std::string& path, std::string_view bytes) override;
  FileResult remove(const std::string& path) override;
  FileResult write_keeping_former(const std::string& path, std::string_view bytes) override;
  FileResult make_writable(const std::string& path) override;
  FileResult make_folder(const std::string& path) override;
  FileResult list_folder(const std::string& path, std::vector<std::string>& names) override;
  FileResult look_up(const std::string& path, FileFacts& facts) override;
  bool exists(const std::string& path) override {
    return files.contains(path) || folders.contains(path);
  }

  std::map<std::string, std::string> files;
  std::set<std::string> folders;    ///< those that were made
  std::set<std::string> read_only;  ///< files

 private:
  FileResult start(const std::string& path, bool must_stand);
  FileResult start_folder(const std::string& path);
  int operations_ = 0;
  int fail_at_ = 0;
  FileFault fault_ = FileFault::none;
};

class QuietEventLoop : public EventLoop {
 public:
  void yield() override { ++turns; }
  long turns = 0;
};

/// A machine without programs.
class BareHost : public Host {
 public:
  std::string program_folder() override { return "/program"; }
  std::string temp_folder() override { return "/temp"; }
  std::int64_t process_id() override { return 4711; }
  bool is_running(std::int64_t process_id) override { return process_id == 4711; }
  std::string environment(const std::string&) override { return {}; }
  std::optional<std::string> find_program(const std::string&) override { return std::nullopt; }
  FileResult start_program(const std::string&, const std::vector<std::string>&) override {
    return {FileFault::not_found, "there is no such program"};
  }
};

/// Keeps the shares that it was shown; stops the work at the one of that number.
class FakeProgress : public Progress {
 public:
  void show(double share, const std::string&) override {
    shares.push_back(share);
    stop = stop || shares.size() == stop_at;
  }
  bool stop_wanted() override { return stop; }

  std::vector<double> shares;
  std::size_t stop_at = 0;
  bool stop = false;
};

/// No call ever falls due.
class StillTimer : public Timer {
 public:
  std::unique_ptr<RunningTimer> every(int, std::function<void()>) override { return nullptr; }
  std::unique_ptr<RunningTimer> once(int, std::function<void()>) override { return nullptr; }
};

/// Keeps what the core told the windows, one line each: "chart 1", "grid 1".
class RecordingViews : public Views {
 public:
  void status(const std::string& text) override { said.push_back("status " + text); }
  void busy_pointer(bool busy) override { said.push_back(busy ? "busy" : "ready"); }
  void fit_button_caption(int fit_index, const std::string& caption) override {
    said.push_back("button " + std::to_string(fit_index) + " " + caption);
  }
  void records_changed() override { said.push_back("records"); }
  void sheet_changed(int index) override { said.push_back("sheet " + std::to_string(index)); }
  void fit_grid_changed(int index) override { said.push_back("grid " + std::to_string(index)); }
  void chart_changed(int index) override { said.push_back("chart " + std::to_string(index)); }
  void chart_aged(int index) override { said.push_back("age " + std::to_string(index)); }
  void log_changed() override { said.push_back("log"); }

  int count(const std::string& line) const;
  std::vector<std::string> said;
};

/// One point for `fill_data`.
struct Point {
  double x = 0;
  double fails = 1;
  double susps = 0;
  int mode = 0;
};

/// A fresh session in a world of its own.
struct TestWorld {
  TestWorld();
  ~TestWorld();

  ScriptedPrompts prompts;
  QuietEventLoop event_loop;
  TestClock clock;
  SeededEntropy entropy;
  FakeClipboard clipboard;
  FixedTextMeasure text_measure;
  MemoryFiles files;
  BareHost host;
  RecordingViews views;
  FakeProgress progress;
  StillTimer timer;
  Session session;

  Ports ports();
  DataSet& data() { return session.project.data(1); }
  FitPanel& panel() { return *session.gFitForm(1); }
  std::string log() const { return session.project.log.plain(); }
};

/// A data set of the points, in the order given; modes get the names "mode1"...
DataSet make_data(const std::vector<Point>& points);

}  // namespace tavlo::test
