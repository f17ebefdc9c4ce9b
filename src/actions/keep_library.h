// Keep library: what a person does with a library of typical life parameters: opens one, gives
// it a data file, saves what its columns are, and adds rows. Nothing of it touches the project.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "guidance/library.h"
#include "project/session.h"

namespace tavlo {

/// The folders of the person's libraries, and behind them that of the sample library where it
/// is installed and not among them.
std::vector<std::string> known_libraries(Session& session);

/// The library to begin with: the last one of the person's that is there, else none.
Library first_library(Session& session);

/// Opens the library of a folder; what can't be read of it is told. False where there is no
/// usable header file: the library has the default columns then.
bool take_library(Session& session, const std::string& folder, Library& library);

/// Asks for the header file of a library and opens it. False when the person thinks better of it.
bool choose_library(Session& session, Library& library);

/// Asks for a data file, and makes a new one where the person says so. True when one was opened.
bool choose_library_data(Session& session, Library& library);

/// Writes the header file; asks for its name where there is none yet. True when it was written.
bool save_library(Session& session, Library& library);

/// Whether the library may be left: what is unsaved of its columns is asked about.
bool may_leave_library(Session& session, Library& library);

/// Adds a row to the data file; asks for one first where none is open. True when it was written.
bool keep_row(Session& session, const std::vector<std::string>& fields, Library& library);

/// Says that only so many rows are copied at a time.
void tell_too_many_rows(Session& session, int most);

/// What a button says that has no function.
void tell_not_programmed(Session& session, int button);

}  // namespace tavlo
