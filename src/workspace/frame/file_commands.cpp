#include "workspace/frame/file_commands.h"

#include <QTimer>

#include "actions/new_project.h"
#include "actions/open_project.h"
#include "actions/recent_files.h"
#include "actions/recovery.h"
#include "actions/save_project.h"
#include "actions/undo.h"
#include "actions/work.h"
#include "files/example_files.h"
#include "files/plain_lines.h"
#include "workspace/data/import_dialog.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr int milliseconds_between_copies = 2 * 60 * 1000;

void grey_if_empty(QMenu& menu, const char* reason) {
  QAction& entry = *menu.menuAction();
  entry.setEnabled(!menu.isEmpty());
  entry.setToolTip(menu.isEmpty() ? QString::fromUtf8(reason) : QString());
  entry.setStatusTip(entry.toolTip());
}

/// A text of a menu; an ampersand in it is one.
QString menu_text(const std::string& text) {
  return to_qt(text).replace(QStringLiteral("&"), QStringLiteral("&&"));
}

}  // namespace

FileCommands::FileCommands(Program& program, QWidget& frame, FileViews views)
    : program_(program),
      session_(program.session),
      frame_(frame),
      views_(std::move(views)),
      copies_(program.timer.every(milliseconds_between_copies, [this] { tend_copies(session_); })) {
}

void FileCommands::attach(QMenu& file, QMenu& recent, QMenu& examples, QMenu& recovery) {
  QObject::connect(&file, &QMenu::aboutToShow, &frame_, [this, &recent, &examples, &recovery] {
    fill_recent(recent);
    fill_examples(examples);
    fill_recovery(recovery);
  });
}

void FileCommands::begin_work(std::function<bool()> act) {
  program_.commands.run_later([this, act = std::move(act)] {
    if (act()) views_.show_work();
  });
}

void FileCommands::new_project() {
  begin_work([this] {
    start_project(session_);
    return true;
  });
}

void FileCommands::open() {
  begin_work([this] { return open_project(session_); });
}

void FileCommands::open_path(const std::string& path) {
  begin_work([this, path] { return open_project(session_, path); });
}

void FileCommands::save() { save_project(session_, views_.current_set()); }

void FileCommands::import() {
  begin_work([this] {
    const auto name = session_.ports.prompts.choose_file(
        {.title = "Import",
         .filter = "Data (*.txt;*.csv;*.tsv;*.dat)|*.txt;*.csv;*.tsv;*.dat|All (*.*)|*.*"});
    if (name && !name->empty()) preview_import(*name, false);
    return false;
  });
}

// Projects may be larger than data files; they are known by their name before they are read.
void FileCommands::take_file(const std::string& path) {
  if (lower_case(path).ends_with(".tavlo")) return open_path(path);
  begin_work([this, path] {
    preview_import(path, true);
    return false;
  });
}

void FileCommands::preview_import(const std::string& path, bool may_open) {
  auto file = std::make_unique<ImportFile>();
  if (!file->load(session_, path)) return;
  if (!file->is_to_be_opened())
    return ImportDialog::run({session_, program_.commands, program_.progress}, std::move(file),
                             views_.show_set, &frame_);
  if (may_open) return open_path(path);
  session_.ports.prompts.show(
      {"Import", path + "\nThis is a project or a file of another program.  File > Open opens it.",
       BoxIcon::information, BoxButtons::ok});
}

void FileCommands::fill_recent(QMenu& menu) {
  menu.clear();
  const auto& files = session_.settings.RecentFiles;
  for (int place = 1; place < static_cast<int>(files.size()); ++place) {
    const std::string& path = files[static_cast<std::size_t>(place)];
    if (path.empty()) continue;
    QAction* entry = menu.addAction(QStringLiteral("&%1  ").arg(place % 10) + menu_text(path));
    QObject::connect(entry, &QAction::triggered, &frame_, [this, place] {
      begin_work([this, place] { return open_recent(session_, place); });
    });
  }
  grey_if_empty(menu, "No project has been opened or saved yet.");
}

void FileCommands::fill_examples(QMenu& menu) {
  menu.clear();
  for (const std::string& path : example_files(session_.ports.host, session_.ports.file_system)) {
    QAction* entry = menu.addAction(menu_text(bare_file_name(path)));
    QObject::connect(entry, &QAction::triggered, &frame_, [this, path] { open_path(path); });
  }
  grey_if_empty(menu, "The examples were not installed with the program.");
}

void FileCommands::fill_recovery(QMenu& menu) {
  menu.clear();
  for (const RecoveryCopy& copy : recovery_copies(session_)) {
    QAction* entry = menu.addAction(
        menu_text(copy.time + "   " + copy.name + "   " + std::to_string(copy.points) + " points"));
    QObject::connect(entry, &QAction::triggered, &frame_, [this, copy] {
      begin_work([this, copy] { return recover(session_, copy); });
    });
  }
  grey_if_empty(menu,
                "No earlier run has left anything unsaved; Undo brings back what this one let go.");
}

bool FileCommands::may_leave() {
  std::vector<std::int64_t> asked = {session_.project.work};
  if (!may_leave_project("")) return false;
  while (const auto former = uncopied_work(session_, asked)) {
    asked.push_back(*former);
    program_.commands.run([&] {
      return_to_work(session_, *former);
      views_.show_work();
    });
    if (!may_leave_project(", which another project has replaced and of which there is no copy,"))
      return false;
  }
  return true;
}

bool FileCommands::may_leave_project(const std::string& what_of_it) {
  if (!is_unsaved(session_)) {
    drop_copy(session_);
    return true;
  }
  const BoxAnswer answer = session_.ports.prompts.show(
      {"Tavlo",
       "Save the changes of " + project_title(session_) + what_of_it + " before you leave?",
       BoxIcon::question, BoxButtons::yes_no_cancel});
  if (answer == BoxAnswer::yes) return save_project(session_, views_.current_set());
  if (answer != BoxAnswer::no) return false;
  keep_copy(session_, CopyReason::replaced);
  finish_copies(session_, true);
  return true;
}

// Behind a file that is opened at the start, whose own line it takes the place of.
void FileCommands::offer_copy() {
  QTimer::singleShot(0, &frame_, [this] {
    for (const RecoveryCopy& copy : recovery_copies(session_)) {
      if (!copy.after_crash) continue;
      return session_.ports.views.status("Kept from before the program broke off: " + copy.name +
                                         ", " + copy.time + ", " + std::to_string(copy.points) +
                                         " points (File > Recover)");
    }
  });
}

}  // namespace tavlo
