#include "workspace/qt/qt_progress.h"

#include <algorithm>

namespace tavlo {

void QtProgress::start_anew() {
  stop_wanted_ = false;
  since_shown_.invalidate();
}

// Work that is over before the first tenth of a second says nothing.
void QtProgress::show(double share, const std::string& words) {
  constexpr qint64 milliseconds_between_words = 100;
  if (!since_shown_.isValid()) since_shown_.start();
  if (since_shown_.elapsed() >= milliseconds_between_words) {
    const int percent = static_cast<int>(100.0 * std::clamp(share, 0.0, 1.0));
    views_.status(words + ": " + std::to_string(percent) + " %. Esc stops.");
    since_shown_.restart();
  }
  event_loop_.yield();
}

}  // namespace tavlo
