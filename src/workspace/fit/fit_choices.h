// Fit choices: what a click on a model or a method of the fit panel means. Free
// of Qt: the panel only calls these and shows the result.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "project/session.h"

namespace tavlo {

/// An option button of the panel. Code and formula are in the table of models.
struct ModelOption {
  int index;            ///< panel row, see Model::panel_row
  const char* caption;  ///< short, with its mnemonic
  const char* label;    ///< long, shown when the frame is widened; may be empty
  const char* tool_tip;
};

/// All options of the panel, in their order on it.
std::span<const ModelOption> model_options();

/// The model behind an option, or null: option 13 only asks for help.
const Model* model_of_option(int index);

/// What there is to know of an option: its full name, when to use it, and why it can't be
/// fitted by a method (-1 is none chosen).
struct Reasoned {
  std::string tip;
  bool fits = true;
};
Reasoned what_of_option(const ModelOption& option, int method);

/// Why a model can't be fitted by a method (-1 is none chosen), as a sentence; empty when it can.
std::string why_not_fitted(const Model& model, int method);

/// The option that stands for the model that a panel has chosen; -1 for none.
int option_of(const FitChoices& panel);

/// Chooses the model of an option and shows its formula, as an arrow key does.
void choose_model(Session& session, int fit_index, int option);

/// The same for a method: 0, 1 or 2.
void choose_method(Session& session, int fit_index, std::int16_t method);

/// A click chooses and, with QuickCalculation on, calculates the fit at once, provided
/// there is something to calculate.
void opt_Model_Click(Session& session, int fit_index, int option);
void opt_Method_Click(Session& session, int fit_index, std::int16_t method);

/// The switch beside the methods. It acts at the next request: no fit changes with it.
void chk_Censored_Click(Session& session, int fit_index, bool checked);

/// "Method: RR: XonY", for the status bar.
const char* method_status(int method);

/// What the switch does from now on, for the status bar.
const char* censored_status(bool checked);

/// "RR: Rank Regression (Standard X on Y)", for the method menu.
const char* method_menu_caption(int method);

}  // namespace tavlo
