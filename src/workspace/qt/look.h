// Look: style, colours and font of the program are those of the desktop; where it has none to
// give, the program has its own. Tables follow the palette too, also when it changes.
#pragma once

class QApplication;
class QTableView;
class QWidget;

namespace tavlo {

void set_look(QApplication& application);

/// Gives the prompts in empty fields an ink that can be read on their ground, which the palette
/// of a desktop may lack: black on black.
void make_prompts_readable();

/// Gives a table the look of a sheet: a light selection that text stays readable
/// on, thin lines, rows as high as a line of text needs.
void set_table_look(QTableView& table);

/// Shows the main window in its usual size, or maximised on a smaller screen.
void show_fitting(QWidget& window);

}  // namespace tavlo
