// Views: how the core tells the windows that something they show has changed.
// Indexes are those of the project arrays, from 1.
#pragma once

#include <string>

namespace tavlo {

class Views {
 public:
  virtual ~Views() = default;

  virtual void status(const std::string& text) = 0;
  virtual void busy_pointer(bool busy) = 0;
  virtual void fit_button_caption(int fit_index, const std::string& caption) = 0;

  // What an action has changed, told when it is over.
  /// Data sets, fit sets or charts came, went or have other names.
  virtual void records_changed() = 0;
  virtual void sheet_changed(int data_index) = 0;
  virtual void fit_grid_changed(int fit_index) = 0;

  /// The content of a chart changed: it is to be composed again and shown.
  virtual void chart_changed(int chart_index) = 0;
  /// The data behind a chart are newer than what it shows, or no longer are.
  virtual void chart_aged(int chart_index) = 0;
  virtual void log_changed() = 0;
};

}  // namespace tavlo
