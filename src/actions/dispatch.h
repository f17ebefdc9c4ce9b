// Dispatch: the one door of the windows to all fitting. Turns what a person asks for into
// a request, has it answered, tells what is to be told and keeps the answer.
#pragma once

#include <cstdint>
#include <span>

#include "project/session.h"

namespace tavlo {

/// Fits `model_code` by `method_code` to gData(data_index) and keeps the result in
/// gFit(fit_index), with the request that it answers. Asks for the slope of a model that
/// needs one; kind of ranks and censored likelihood are those of settings and panel.
/// On request the charts follow, and the fit is logged. A request that is answered already is
/// shown again. The model code may be changed (a fixed slope of 1 is the exponential).
void Fit_Distribution(Session& session, int data_index, int fit_index, std::int16_t& model_code,
                      std::int16_t method_code, bool draw, bool report);

/// Answers the requests of all fits of the set anew, from the data as they are now. Asks
/// nothing that a request says, and writes no log. A fit that is refused stays as it was,
/// out of date.
void refit_all(Session& session, int data_index, int fit_index);

/// Fits the models by one method, with the settings as they are now, and answers the requests
/// of all other fits of the set. Asks for the slope of a Weibayes that the set does not hold. The
/// charts follow the last fit; no log is written. A model without data is told in the log.
void fit_models(Session& session, int data_index, int fit_index,
                std::span<const std::int16_t> models, std::int16_t method_code);

/// Shows a fit that stands, with what there is to know of it, as the answer to the panel.
void show_again(Session& session, int data_index, int fit_index, int slot);

/// The request that the panel makes now, but for its slope.
FitRequest request_of_panel(const Session& session, int fit_index);

}  // namespace tavlo
