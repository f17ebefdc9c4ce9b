// SampleWords: why a sample can't be drawn from what was asked for, in the person's words.
#pragma once

#include <string>

#include "analyses/stated_life.h"

namespace tavlo {

/// A sentence without its full stop.
std::string words_of(LifeFault fault, const Model& model);

/// Of a sample with a time that data can't hold.
inline constexpr const char* words_of_time_out_of_range =
    "a time of this sample is beyond what data hold, 1.2e-38 to 3.4e38";

}  // namespace tavlo
