// Private folder: a folder for temporary files that only one person can enter. In a folder
// that everybody may write, names of files can be taken, or linked elsewhere, by anybody.
#pragma once

#include <string>

namespace tavlo {

/// "tavlo" in the folder of the person's session, or "tavlo-<user number>" in that of all
/// temporary files, which is /tmp unless `temp` is absolute. It is made with mode 0700; one
/// that stands there already must be so and belong to the person, or another name is
/// tried. Empty where none can be had.
std::string private_temp_folder(const std::string& session_folder, const std::string& temp);

}  // namespace tavlo
