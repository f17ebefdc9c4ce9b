// Other programs: what the menus start beside this one: a calculator of the desktop, and the
// two programs of the family where they are installed.
#pragma once

#include <string>

#include "project/session.h"

namespace tavlo {

/// Starts the first calculator that the desktop has; the status bar says when it has none.
void start_calculator(Session& session);

/// Starts a program of the family, such as "quellw.exe", or the same without ".exe": from the
/// folder of this program, the one above it, or the places of an installation. A box says
/// that it can't be found.
void start_sibling(Session& session, const std::string& name);

}  // namespace tavlo
