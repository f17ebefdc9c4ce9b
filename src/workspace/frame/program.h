// Program: one session in the world of a desktop, with everything that lives as
// long as the program does. Members stand in the order of their needs.
#pragma once

#include "chart/record/font_metrics.h"
#include "files/disk_files.h"
#include "files/system_ports.h"
#include "project/session.h"
#include "workspace/qt/qt_ports.h"
#include "workspace/qt/qt_progress.h"
#include "workspace/qt/qt_timer.h"
#include "workspace/qt/user_commands.h"
#include "workspace/qt/view_signals.h"

namespace tavlo {

struct Program {
  Program()
      : session(Ports{prompts, event_loop, clock, entropy, clipboard, text_measure, files, host,
                      views, progress, timer}) {
    session.settings.punctuation = system_punctuation();
  }

  /// True while a fit or other long work is under way.
  bool is_busy() const { return tavlo::is_busy(session) || views.is_busy(); }

  QtPrompts prompts;
  QtEventLoop event_loop;
  SystemClock clock;
  RandomEntropy entropy;
  QtClipboard clipboard;
  MetricTextMeasure text_measure;
  DiskFiles files;
  SystemHost host;
  ViewSignals views;
  QtProgress progress{event_loop, views};
  UserCommands commands{prompts};
  QtTimer timer{commands};
  Session session;
};

}  // namespace tavlo
