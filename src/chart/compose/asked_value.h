// Asked value: a percentage or a time that a person types on a chart, and what the fits
// that it shows say of it: the time by which so many have failed, or how many have by that
// time. The answers are those of the fitted lives, to all their digits.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "chart/compose/readout.h"
#include "numerics/number_reading.h"

namespace tavlo {

enum class Asked { share, time, mean };

struct AskedValue {
  Asked kind = Asked::time;
  double value = 0;  ///< a fraction failed, or a time; 0 for the mean life
};

/// What "10%", "B10" or "500" asks for.
struct ReadQuestion {
  std::optional<AskedValue> asked;
  std::string refusal;  ///< why nothing can be asked so, for the person
};

/// Reads a question in the system's punctuation. Shares from 1e-8 to 99.99999999 % have sure
/// answers; others, and what is no number, are refused.
ReadQuestion read_question(const std::string& typed, const NumberPunctuation& punctuation);

/// What one fit says.
struct FitSaying {
  std::string fit;                      ///< its name, with that of its data beside other data
  std::string label;                    ///< "W4P/mle": tells it from others of its data
  std::int32_t data_id = 0;             ///< of its data set
  std::optional<double> answer;         ///< a time, or a fraction failed
  std::string no_answer;                ///< what stands in place of one: "never"
  double left = 0;                      ///< the fraction that has not failed by a time
  std::optional<drawing::Place> place;  ///< on its line; nothing where the chart doesn't reach
};

/// One for each fit that the chart draws a line of, in their order; none for those whose data
/// have been changed since, or that leave a failure mode out.
std::vector<FitSaying> sayings(const Session& session, const Chart& chart, const Readout& readout,
                               const AskedValue& asked);

/// Why no fit of the chart says anything, as a sentence for the person.
std::string why_nothing_said(const Session& session, const Chart& chart);

/// "B10 = 164.0712", "at 500: F = 51.16 %, R = 48.84 %", "B10 = never",
/// "Mean life = 146".
std::string saying_text(const AskedValue& asked, const FitSaying& saying, int digits);

/// The same and whose answer it is: "B10 = 164.0712   (W2P/mle)".
std::string named_saying_text(const AskedValue& asked, const FitSaying& saying, int digits);

/// All of them with the names of the fits.
std::string sayings_text(const AskedValue& asked, const std::vector<FitSaying>& sayings,
                         int digits);

}  // namespace tavlo
