// Profiles: files (.vpr) with the looks of a chart. A profile is one chart section
// and nothing else; what a chart takes from it says apply_profile.
#pragma once

#include <optional>
#include <string>

#include "project/session.h"

namespace tavlo {

/// Gives `chart` the looks in a profile file. What is wrong, as "PATH:LINE: what"
/// or "PATH: what"; `chart` then stays as it was.
std::optional<std::string> apply_profile_file(FileSystem& files, const std::string& path,
                                              Chart& chart);

/// Asks for a profile file and gives `chart` its looks. False when the user names
/// none or when it can't be read, which a box has told; `chart` is then unchanged.
bool load_profile(Session& session, Chart& chart);

/// Asks for a file and writes the whole chart to it. False when a value of the
/// chart is invalid, when the user takes it back or when the file can't be
/// written: boxes have told, and an old file is whole.
bool save_profile(Session& session, const Chart& chart);

/// True when the limits of both axes are in order and boxes and fonts have sizes.
bool has_valid_looks(const Chart& chart);

}  // namespace tavlo
