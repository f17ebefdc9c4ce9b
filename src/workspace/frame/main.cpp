// tavlo: the window program.
#include <QApplication>
#include <cstdio>
#include <string_view>

#include "workspace/frame/main_window.h"
#include "workspace/qt/large_blocks.h"
#include "workspace/qt/look.h"

namespace {

bool asks_for_version(int count, char** words) {
  return count > 1 && std::string_view(words[1]) == "--version";
}

}  // namespace

int main(int argc, char** argv) {
  if (asks_for_version(argc, argv)) {
    std::puts("tavlo " TAVLO_VERSION);
    return 0;
  }
  tavlo::return_large_blocks();
  QApplication application(argc, argv);
  tavlo::set_look(application);
  tavlo::Program program;
  tavlo::MainWindow window(program);
  tavlo::show_fitting(window);
  return QApplication::exec();
}
