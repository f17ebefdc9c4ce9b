// Export file: what a window shows as a file of another program. A name is proposed, in the
// folder of the last export; what doesn't work is told, and no half file is left.
#pragma once

#include <functional>
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

/// Asks for a name and writes what `write` makes of its extension, in lower case. Nothing is
/// written where that is empty. False when nothing was written.
bool export_file(Session& session, const ExportRequest& request,
                 const std::function<std::string(const std::string& extension)>& write);

}  // namespace tavlo
