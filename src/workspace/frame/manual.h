// Manual: the pages of the program's own help, which are built into it, in their order in the
// table of contents. The page of the keyboard is made from the commands themselves.
#pragma once

#include <QString>
#include <vector>

#include "workspace/frame/command_registry.h"

namespace tavlo {

struct ManualPage {
  QString key;    ///< "sheet"; the page stands at "qrc:/manual/sheet.md"
  QString title;  ///< its first line
  QString text;   ///< Markdown
};

/// All pages; `keyboard` is the Markdown of the page "keyboard".
std::vector<ManualPage> manual_pages(const QString& keyboard);

/// Every command that has keys, as a page in Markdown.
QString keys_of(const std::vector<Command>& commands);

/// True where the page has the words in this order, in any case of letters.
bool has_words(const ManualPage& page, const QString& words);

}  // namespace tavlo
