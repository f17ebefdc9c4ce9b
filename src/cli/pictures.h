// Pictures: charts as files. The module that paints is loaded only when a
// picture is asked for, so that a plain fit starts at once.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/arguments.h"
#include "project/session.h"

namespace tavlo::cli {

/// Whose axes a chart has: those of the first fit's paper, or its own.
enum class Paper { of_first_fit, of_chart };

/// Puts the data and every fit of the session on chart 1: the first fit stands with the
/// data's symbols, each further one has a plot set of its own that is only a line.
void show_on_chart(Session& session, const std::string& title, Paper paper);

/// Draws chart 1 in the proportions of `size` and writes it to each path, by its
/// extension; a metafile keeps the chart's own. What is wrong, as "PATH: what", for
/// the first that can't be written.
std::optional<std::string> write_pictures(Session& session, const std::vector<std::string>& paths,
                                          const PixelSize& size);

}  // namespace tavlo::cli
