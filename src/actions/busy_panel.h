// BusyPanel: a fit panel at work, for as long as this lives: its flag, the caption of its
// button, and the state on the status bar when the work is done.
#pragma once

#include "project/session.h"

namespace tavlo {

class BusyPanel {
 public:
  BusyPanel(Session& session, int fit_index);
  ~BusyPanel();
  BusyPanel(const BusyPanel&) = delete;
  BusyPanel& operator=(const BusyPanel&) = delete;

 private:
  void show_caption(std::size_t text);

  Session& session_;
  int index_;
};

}  // namespace tavlo
