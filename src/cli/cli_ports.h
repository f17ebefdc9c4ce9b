// The command line's ports: boxes are answered from flags and told on standard
// error, and nothing waits for a person.
#pragma once

#include <string>
#include <vector>

#include "chart/record/font_metrics.h"
#include "files/disk_files.h"
#include "files/system_ports.h"
#include "ports/ports.h"

namespace tavlo::cli {

/// Writes "tavlo-cli: ..." and a line end to standard error.
void complain(const std::string& what);

/// A box that came, and its answer.
struct AnsweredBox {
  Box box;
  BoxAnswer answer = BoxAnswer::ok;
};

/// Title and text of a box on one line.
std::string box_line(const Box& box);

/// Answers doubts with OK, or Cancel when `strict`; tells each box as it comes.
class CliPrompts : public Prompts {
 public:
  CliPrompts(bool strict, std::string slope) : strict_(strict), slope_(std::move(slope)) {}

  /// What messages are about: a file, or a fit of it.
  void set_subject(std::string subject) { subject_ = std::move(subject); }
  const std::string& subject() const { return subject_; }

  /// The slope that the model at work has of its own; 0 when it is asked for.
  void set_own_slope(double slope) { own_slope_ = slope; }

  BoxAnswer show(const Box& box) override;
  std::optional<std::string> ask_line(const std::string& title, const std::string& text,
                                      const std::string& suggestion) override;
  std::optional<std::string> choose_file(const FileRequest&) override { return std::nullopt; }

  const std::vector<AnsweredBox>& seen() const { return seen_; }

 private:
  BoxAnswer answer(BoxButtons buttons) const;

  bool strict_;
  std::string slope_;
  double own_slope_ = 0;
  std::string subject_;
  std::vector<AnsweredBox> seen_;
};

class IdleEventLoop : public EventLoop {
 public:
  void yield() override {}
};

class EmptyClipboard : public Clipboard {
 public:
  std::string text() override { return {}; }
  void set_text(const std::string&, const std::string&) override {}
  bool set_picture(const std::vector<ClipboardForm>&) override { return false; }
};

/// Shows nothing, and keeps the last words for the status panel.
class CliViews : public Views {
 public:
  void status(const std::string& text) override { last_status_ = text; }
  const std::string& last_status() const { return last_status_; }
  void forget_status() { last_status_.clear(); }
  void busy_pointer(bool) override {}
  void fit_button_caption(int, const std::string&) override {}
  void sheet_changed(int) override {}
  void fit_grid_changed(int) override {}
  void chart_changed(int) override {}
  void log_changed() override {}

 private:
  std::string last_status_;
};

/// The environment, and no other programs.
class QuietHost : public Host {
 public:
  std::string environment(const std::string& name) override;
  bool start_program(const std::string&, const std::vector<std::string>&) override { return false; }
};

/// All the ports of one run over one file.
class CliWorld {
 public:
  CliWorld(bool strict, const std::string& slope) : prompts(strict, slope) {}

  Ports ports() {
    return {prompts, event_loop_, clock_, entropy_, clipboard_, text_measure_, files, host_, views};
  }

  CliPrompts prompts;
  CliViews views;
  DiskFiles files;

 private:
  IdleEventLoop event_loop_;
  SystemClock clock_;
  RandomEntropy entropy_;
  EmptyClipboard clipboard_;
  MetricTextMeasure text_measure_;
  QuietHost host_;
};

}  // namespace tavlo::cli
