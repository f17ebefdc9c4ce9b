// Export file: what a window shows as a file of another program. A name is proposed, in the
// folder of the last export; what doesn't work is told, and no half file is left.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "project/session.h"

namespace tavlo {

struct ExportRequest {
  std::string title;   ///< of the dialog
  std::string name;    ///< proposed, without folder and extension
  std::string filter;  ///< "PDF (*.pdf)|*.pdf|Web page (*.html)|*.html"
  std::string suffix;  ///< of the kind that is proposed, "pdf"
  std::string kind;    ///< what is remembered apart from other exports, "log"
};

/// The bytes of a file with that extension, in lower case; empty for one that can't be made, which
/// is told, and nothing where the person has been asked and does not want it.
using FileMaker = std::function<std::optional<std::string>(const std::string& extension)>;

/// Asks for a name and writes what `make` makes. False when nothing was written.
bool export_file(Session& session, const ExportRequest& request, const FileMaker& make);

}  // namespace tavlo
