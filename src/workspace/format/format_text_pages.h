// Pages of the format dialog for the words around the plot: the titles, and the file
// name and date at the foot.
#pragma once

#include "workspace/format/format_page.h"

namespace tavlo {

class TitlesPage : public FormatPage {
  Q_OBJECT

 public:
  explicit TitlesPage(FormatDraft& draft);

 private:
  void add_title(const QString& group, const QString& name, int item);
};

class NotesPage : public FormatPage {
  Q_OBJECT

 public:
  explicit NotesPage(FormatDraft& draft);
};

}  // namespace tavlo
