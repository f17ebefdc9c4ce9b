// Program end: what is left to do when the last window goes.
#pragma once

#include "project/session.h"

namespace tavlo {

/// Writes the settings back. A write that fails is told in one box; the program ends all
/// the same. Nothing is written where the start did not find or could not read the file.
void End_Program(Session& session);

}  // namespace tavlo
