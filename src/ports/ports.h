// Ports: all that one session may ask of the world around it.
#pragma once

#include "ports/clipboard.h"
#include "ports/clock.h"
#include "ports/entropy.h"
#include "ports/event_loop.h"
#include "ports/file_system.h"
#include "ports/host.h"
#include "ports/progress.h"
#include "ports/prompts.h"
#include "ports/text_measure.h"
#include "ports/timer.h"
#include "ports/views.h"

namespace tavlo {

/// Borrowed references; the owner outlives every session that uses them.
struct Ports {
  Prompts& prompts;
  EventLoop& event_loop;
  Clock& clock;
  Entropy& entropy;
  Clipboard& clipboard;
  TextMeasure& text_measure;
  FileSystem& file_system;
  Host& host;
  Views& views;
  Progress& progress;
  Timer& timer;
};

}  // namespace tavlo
