// Program paths: the search for the three folders that the program works in. Switches come
// first, then the paths file that the programs of the family share, then the usual places
// of the system.
#pragma once

#include <string>
#include <string_view>

#include "files/path_system.h"
#include "ports/ports.h"
#include "project/program_places.h"

namespace tavlo {

/// Whether a file belongs to a pattern of the family, as "quell*.exe". "*" stands for any
/// characters; behind ".ex" a final "." stands for any one, since old paths files name
/// programs so. Case does not count.
bool MatchesFamily(std::string_view name, std::string_view pattern);

/// The three folders, each with a value as long as the system has any. A person is asked
/// where no folder for temporary files can be found.
ProgramPlaces FindPaths(const Ports& ports, const PathSystem& system,
                        const std::string& command_line);

}  // namespace tavlo
