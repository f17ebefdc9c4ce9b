// OptionsDialog (frm_Options): what holds for the whole program: how data are calculated and
// shown, digits, bars and language. It shows the present settings and gives them back with
// OK alone; what a change of them does is the actions' affair.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <array>
#include <functional>
#include <map>

#include "project/session.h"
#include "workspace/qt/user_commands.h"

namespace tavlo {

class OptionsDialog : public QDialog {
  Q_OBJECT

 public:
  /// Shows the dialog over `parent`; it ends itself. `taken` is called when the session has
  /// the new settings.
  static void run(Session& session, UserCommands& commands, std::function<void()> taken,
                  QWidget* parent);

  ~OptionsDialog() override;

  void accept() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  OptionsDialog(Session& session, UserCommands& commands, std::function<void()> taken,
                QWidget* parent);

  QGroupBox* make_fit_options();
  QGroupBox* make_digits();
  QGroupBox* make_bars();
  QWidget* make_language();
  QGroupBox* add_frame(const QString& title, const QString& hint);
  void fill_languages();
  QWidget* make_content();
  QDialogButtonBox* make_buttons();
  void lay_out();
  void keep_room_for_hints(int width);
  void show_hint(const QObject* at);
  Settings chosen() const;

  Session& session_;
  UserCommands& commands_;
  std::function<void()> taken_;
  std::array<QCheckBox*, 5> chk_Fit_{};
  std::array<QLineEdit*, 4> txt_Digits_{};
  std::array<QCheckBox*, 4> chk_Opt_{};
  QComboBox* cbo_Language_ = nullptr;
  QScrollArea scroller_;
  QLabel lbl_Options_;
  std::map<const QObject*, QString> hints_;  ///< of each frame
};

}  // namespace tavlo
