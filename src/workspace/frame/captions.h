// Captions: which text of a language file stands on which menu and command. The numbers are
// a contract with those who write such files: docs/language.md lists them.
#pragma once

#include <QString>
#include <string>
#include <vector>

#include "workspace/frame/command_registry.h"

namespace tavlo {

/// The commands with the texts of the language; without one, the built-in caption stays.
std::vector<Command> with_captions(std::vector<Command> commands,
                                   const std::vector<std::string>& texts);

/// The title of the menu of a path, whose last part is the built-in one.
QString menu_caption(const QString& path, const std::vector<std::string>& texts);

}  // namespace tavlo
