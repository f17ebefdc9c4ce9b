// Life answers: what a life says to the questions that people ask of it, by one rule wherever
// it is shown: on a panel, on a chart, in a report.
#pragma once

#include <optional>

#include "life/life.h"

namespace tavlo {

/// True where a failure mode has no fit: it would be read as one that nothing dies of, so that
/// nothing is known of all modes together.
bool lacks_a_mode(const Life& life);

/// The time by which the fraction p has failed; nothing where that never happens, or where it
/// is beyond what a number can hold.
std::optional<double> b_life(const Life& life, double p);

/// To be said where a time by which units have failed is negative: models without a lower end
/// give such.
inline constexpr const char* below_zero = "Below 0 this model does not describe a life.";

/// What is said in the place of a time that there is none of: "never", "beyond all numbers".
const char* why_no_b_life(const Life& life, double p);

/// The share that survives a time. Where shares don't make up the whole, the rest survives.
double surviving_share(const Life& life, double x);

}  // namespace tavlo
