// tavlo: the window program.
#include <QApplication>
#include <QFileInfo>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "actions/recovery.h"
#include "actions/start.h"
#include "workspace/frame/break_window.h"
#include "workspace/frame/main_window.h"
#include "workspace/qt/large_blocks.h"
#include "workspace/qt/look.h"
#include "workspace/qt/qt_ports.h"
#include "workspace/qt/qt_text.h"

namespace {

constexpr const char* version = "tavlo " TAVLO_VERSION;
constexpr const char* help =
    "Usage: tavlo [FILE]\n"
    "\n"
    "Life data analysis: times to failure and suspensions, fitted and shown on\n"
    "probability paper.\n"
    "\n"
    "  FILE       a project or a file with data, opened in the window; a macro\n"
    "             (*.vkm) is run without one\n"
    "  --version  show the version\n"
    "  --help     show this text\n"
    "\n"
    "tavlo-cli does the same work without windows, see tavlo-cli --help.";

/// What is answered on the terminal, without a display.
std::optional<std::string> answer_to(int count, char** words) {
  const std::string_view asked = count > 1 ? words[1] : "";
  if (asked == "--version") return version;
  if (asked == "--help") return help;
  return std::nullopt;
}

/// The words with blanks between them, without quotes around the whole.
std::string command_line(int count, char** words) {
  std::string line;
  for (int i = 1; i < count; ++i) line += (i > 1 ? " " : "") + std::string(words[i]);
  const bool is_quoted = line.size() >= 2 && line.front() == line.back() &&
                         (line.front() == '"' || line.front() == '\'');
  return is_quoted ? line.substr(1, line.size() - 2) : line;
}

/// The list of recent files is read in other folders.
std::string absolute(const std::string& path) {
  return tavlo::from_qt(QFileInfo(tavlo::to_qt(path)).absoluteFilePath());
}

}  // namespace

int main(int argc, char** argv) {
  if (const auto answer = answer_to(argc, argv)) {
    std::puts(answer->c_str());
    return 0;
  }
  tavlo::return_large_blocks();
  QApplication application(argc, argv);
  tavlo::set_look(application);
  tavlo::Program program;
  const tavlo::StartResult start = tavlo::start_program(
      program.session,
      {command_line(argc, argv), tavlo::system_grouped_number(), tavlo::system_half()});
  if (start.exit_code) return *start.exit_code;
  if (start.macro) return tavlo::run_macro_with_break(*start.macro);
  tavlo::begin_recovery(program.session, program.session.places.IniPath + "/Recovery");
  tavlo::MainWindow window(program);
  window.show_as_last_time();
  if (!start.file.empty()) window.open_at_start(absolute(start.file));
  window.files().offer_copy();
  return QApplication::exec();
}
