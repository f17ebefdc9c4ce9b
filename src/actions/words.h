// Words: what a person at the windows reads of a refusal, a doubt, a note or a fault of a
// fit: the boxes with titles, texts and buttons, and the sentences of log and tool tip.
#pragma once

#include <optional>
#include <string>

#include "fit/answer.h"
#include "fit/companion.h"
#include "ports/prompts.h"
#include "project/records.h"

namespace tavlo {

/// What is to be known of the record of a life that was given; see `sentence`.
inline constexpr const char* given_words =
    "the life that the sample was drawn from, not a fit to it";

/// The question before a fit goes on. `model` must have a gate for few_failures.
Box doubt_box(Doubt doubt, const Model& model);

/// A step of a calculation has failed at `where` ("in XonY Function routine").
Box retry_box(const char* where, const RunTimeError& error);

/// The box of a fit that can't be made. Nothing where the person is told elsewhere, or
/// where the call ends without a word.
std::optional<Box> refusal_box(const Refusal& refusal, const FitRequest& request,
                               const DataSet& data);

/// A file or a caller may name a model that the table of models lacks.
Box unknown_model_box(int model_code);

/// What a comma means that may stand in a number or behind it; `what` says which comma.
Box comma_question(const std::string& what);

/// True for what the person has just decided or is about to be asked: no words at all.
bool is_silent(const Refusal& refusal, const FitRequest& request);

/// Words with a capital and a full stop.
std::string sentence(std::string words);

/// Why there is no fit, to follow a colon; without a full stop.
std::string refusal_reason(const Refusal& refusal, const DataSet& data);

/// The box that a note about a failure mode brings; nothing for the other notes.
std::optional<Box> note_box(const Note& note, const DataSet& data);

/// A note as one sentence.
std::string note_sentence(const Note& note, const DataSet& data);

/// Before a likelihood of a mixture that leaves the suspensions out.
std::string left_out_sentence(double suspensions);

}  // namespace tavlo
