// The command line's ports: boxes are answered from flags and told on standard
// error, and nothing waits for a person.
#pragma once

#include <string>

#include "chart/record/font_metrics.h"
#include "files/disk_files.h"
#include "files/system_ports.h"
#include "ports/ports.h"

namespace tavlo::cli {

/// Answers doubts with OK, or Cancel when `strict`; tells each box as it comes.
class CliPrompts : public Prompts {
 public:
  /// `subject` is the file that the boxes are about.
  CliPrompts(bool strict, std::string subject) : strict_(strict), subject_(std::move(subject)) {}

  BoxAnswer show(const Box& box) override;
  std::optional<std::string> ask_line(const std::string&, const std::string&,
                                      const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> choose_file(const FileRequest&) override { return std::nullopt; }

 private:
  BoxAnswer answer(BoxButtons buttons) const;

  bool strict_;
  std::string subject_;
};

/// Files that are written to their end even when the run is told to end.
class SafeFiles : public DiskFiles {
 public:
  FileResult write_whole(const std::string& path, std::string_view bytes) override;
  FileResult write_keeping_former(const std::string& path, std::string_view bytes) override;
};

class IdleEventLoop : public EventLoop {
 public:
  void yield() override {}
};

class EmptyClipboard : public Clipboard {
 public:
  std::string text() override { return {}; }
  bool is_too_long() override { return false; }
  ClipboardText rich_text() override { return {}; }
  bool holds_only_picture() override { return false; }
  void set_text(const ClipboardText&) override {}
  bool set_picture(const std::vector<ClipboardForm>&) override { return false; }
};

class NoViews : public Views {
 public:
  void status(const std::string&) override {}
  void busy_pointer(bool) override {}
  void fit_button_caption(int, const std::string&) override {}
  void records_changed() override {}
  void sheet_changed(int) override {}
  void fit_grid_changed(int) override {}
  void chart_changed(int) override {}
  void chart_aged(int) override {}
  void log_changed() override {}
};

class NoProgress : public Progress {
 public:
  void show(double, const std::string&) override {}
  bool stop_wanted() override { return false; }
};

/// There is no time between the commands of a command line.
class NoTimer : public Timer {
 public:
  std::unique_ptr<RunningTimer> every(int, std::function<void()>) override { return nullptr; }
  std::unique_ptr<RunningTimer> once(int, std::function<void()>) override { return nullptr; }
};

/// Starts no other programs.
class QuietHost : public SystemHost {
 public:
  FileResult start_program(const std::string&, const std::vector<std::string>&) override {
    return {FileFault::no_permission, "a command line starts no programs"};
  }
};

/// The system's clock, or one that stands on a day that was given.
class DatedClock : public SystemClock {
 public:
  DateTime now() override { return day_ ? *day_ : SystemClock::now(); }
  void stand_on(const DateTime& day) { day_ = day; }

 private:
  std::optional<DateTime> day_;
};

/// All the ports of one run over one file.
class CliWorld {
 public:
  CliWorld(bool strict, const std::string& subject) : prompts_(strict, subject) {}

  DatedClock& clock() { return clock_; }

  Ports ports() {
    return {prompts_, event_loop_, clock_, entropy_,  clipboard_, text_measure_,
            files_,   host_,       views_, progress_, timer_};
  }

 private:
  CliPrompts prompts_;
  NoViews views_;
  SafeFiles files_;
  IdleEventLoop event_loop_;
  DatedClock clock_;
  RandomEntropy entropy_;
  EmptyClipboard clipboard_;
  MetricTextMeasure text_measure_;
  QuietHost host_;
  NoProgress progress_;
  NoTimer timer_;
};

}  // namespace tavlo::cli
