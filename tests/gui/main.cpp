// Runs the tests of the windows on the display at hand.
#include <gtest/gtest.h>

#include <QApplication>

#include "workspace/qt/look.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  tavlo::set_look(application);
  return RUN_ALL_TESTS();
}
