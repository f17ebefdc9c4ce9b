// WindowWorld: the whole program in one test, with somebody in front of it.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>
#include <functional>

#include "gui/person.h"
#include "workspace/frame/main_window.h"

namespace tavlo::test {

class WindowWorld : public ::testing::Test {
 protected:
  void SetUp() override;

  Session& session() { return program.session; }
  DataSheet& sheet() { return *session().gDataForm(1); }
  Grid& fits() { return session().gFitForm(1)->grd_Fit; }
  std::string log() { return session().project.log.plain(); }

  /// The widget of that object name; the test fails when there is none.
  QWidget& widget(const char* name);

  /// Types the failure times of the e-Handbook's example and its suspensions.
  void type_handbook_example();

  /// True when the chart shows a line that is neither upright nor level.
  bool chart_has_fit_line();

  /// Acts on the next dialog of a kind, which holds the program until it is closed. A person
  /// sees it come to the front first: one that closes while the keyboard is still on its way to
  /// it takes the keyboard along.
  template <class Dialog>
  void answer(std::function<void(Dialog&)> act) {
    auto* timer = new QTimer(&window);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, act] {
      auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
      if (!dialog || !dialog->isActiveWindow()) return;
      timer->deleteLater();
      timer->stop();
      act(*dialog);
    });
    timer->start(20);
  }
  void answer_files_with(const QString& name) {
    answer<QFileDialog>([name](QFileDialog& dialog) {
      dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(name);
      QMetaObject::invokeMethod(&dialog, "accept");
    });
  }

  Program program;
  MainWindow window{program};
  Person person;
  BoxReader boxes;
};

}  // namespace tavlo::test
