// Change of options: what a person has chosen for the whole program takes hold at once, in
// every window. The language waits for the next start, since menus are made once.
#pragma once

#include <string>

#include "project/session.h"

namespace tavlo {

/// The digits for display that a person has typed: the size of the number, rounded to a whole
/// one, 15 at the most. What is no number is 0.
int digits_of(const std::string& typed, const NumberPunctuation& punctuation);

/// Takes the settings over. Sheets, grids and charts show the new digits. With another kind of
/// ranks the data whose ranks it changes are to be read again: what was fitted to them is out
/// of date until then.
void change_options(Session& session, const Settings& chosen);

}  // namespace tavlo
