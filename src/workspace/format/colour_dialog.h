// ColourDialog: a person chooses a colour, or a whole pen, from the palette, the
// pictures of the line styles and a width.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QSpinBox>
#include <functional>

#include "workspace/format/pen_look.h"
#include "workspace/format/picture_choice.h"
#include "workspace/qt/user_commands.h"

namespace tavlo {

class ColourDialog : public QDialog {
  Q_OBJECT

 public:
  enum class Asks { colour, pen };

  /// Opens the dialog over `parent`, which it holds until it is closed, and returns at
  /// once. With OK `chosen` gets the choice; only the colour may then differ from `look`
  /// when only that is asked for.
  static void choose(QWidget* parent, UserCommands& commands, const PenLook& look, Asks asks,
                     const std::function<void(const PenLook&)>& chosen);

 private:
  ColourDialog(QWidget* parent, UserCommands& commands, const PenLook& look, Asks asks);
  QWidget* make_colours();
  QWidget* make_pen();
  QWidget* make_preview();
  void choose_custom();
  void show_look();

  UserCommands& commands_;
  PenLook look_;
  Asks asks_;
  PictureChoice palette_;
  PictureChoice styles_;
  QSpinBox width_;
  QLabel preview_;
};

}  // namespace tavlo
