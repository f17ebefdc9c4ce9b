// Pictures: charts and reports as files. The module that paints is loaded only when a
// picture is asked for, so that a plain fit starts at once.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/arguments.h"
#include "project/session.h"

namespace tavlo::cli {

/// Draws chart 1 in the proportions of `size` and writes it to each path, by its
/// extension; a metafile keeps the chart's own. What is wrong, as "PATH: what", for
/// the first that can't be written.
std::optional<std::string> write_pictures(Session& session, const std::vector<std::string>& paths,
                                          const PixelSize& size);

/// Writes the report by the extension of the path, PDF or HTML. What is wrong, as "PATH: what".
std::optional<std::string> write_report(Session& session, const Report& report,
                                        const std::string& path, PaperSize paper);

}  // namespace tavlo::cli
