// Program: one session in the world of a desktop, with everything that lives as
// long as the program does. Members stand in the order of their needs.
#pragma once

#include "chart/record/font_metrics.h"
#include "files/disk_files.h"
#include "files/system_ports.h"
#include "project/session.h"
#include "workspace/qt/qt_ports.h"
#include "workspace/qt/user_commands.h"
#include "workspace/qt/view_signals.h"

namespace tavlo {

struct Program {
  Program()
      : session(Ports{prompts, event_loop, clock, entropy, clipboard, text_measure, files, host,
                      views}),
        commands(prompts) {
    session.settings.punctuation = system_punctuation();
  }

  /// True while a fit is under way in one of the panels.
  bool is_busy() const { return tavlo::is_busy(session); }

  QtPrompts prompts;
  QtEventLoop event_loop;
  SystemClock clock;
  RandomEntropy entropy;
  QtClipboard clipboard;
  MetricTextMeasure text_measure;
  DiskFiles files;
  SystemHost host;
  ViewSignals views;
  Session session;
  UserCommands commands;
};

}  // namespace tavlo
