#include "workspace/frame/manual.h"

#include <QFile>
#include <QKeySequence>
#include <algorithm>
#include <array>

#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr const char* keyboard_key = "keyboard";

constexpr std::array keys = {"contents",   "quick",   "first-steps",  "sheet",
                             "import",     "models",  "methods",      "fit-panel",
                             "mixtures",   "charts",  "comparison",   "samples",
                             "wizard",     "library", "files",        "log-and-reports",
                             keyboard_key, "setup",   "command-line", "licences"};

QString text_of(const char* key) {
  QFile file(QStringLiteral(":/manual/%1.md").arg(to_qt(key)));
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString title_of(const QString& text) {
  const QString line = text.section(u'\n', 0, 0);
  return line.mid(line.indexOf(u' ') + 1).trimmed();
}

QString place_of(CommandReach reach) {
  switch (reach) {
    case CommandReach::frame: return QStringLiteral("everywhere");
    case CommandReach::chart: return QStringLiteral("in a chart");
    case CommandReach::fits: return QStringLiteral("in the grid of fits");
    case CommandReach::sheet: return QStringLiteral("in a data sheet");
    case CommandReach::tree: return QStringLiteral("in the project tree");
  }
  return {};
}

/// "Ctrl+Y, Ctrl+Shift+Z"
QString shown_keys(const Command& command) {
  QStringList shown;
  for (const QKeySequence& each :
       QKeySequence::listFromString(to_qt(command.keys), QKeySequence::PortableText))
    shown += each.toString(QKeySequence::NativeText);
  return shown.join(QStringLiteral(", "));
}

/// "Edit > Copy"
QString path_of(const Command& command) {
  QString path =
      to_qt(command.menu.empty() ? command.caption : command.menu + "|" + command.caption);
  return path.remove(u'&').replace(u'|', QStringLiteral(" > ")).remove(QStringLiteral("..."));
}

}  // namespace

std::vector<ManualPage> manual_pages(const QString& keyboard) {
  std::vector<ManualPage> pages;
  for (const char* key : keys) {
    const QString text = key == keyboard_key ? keyboard + text_of(key) : text_of(key);
    pages.push_back({to_qt(key), title_of(text), text});
  }
  return pages;
}

QString keys_of(const std::vector<Command>& commands) {
  QString page = QStringLiteral("# Keyboard\n\n| Keys | Command | Where |\n|---|---|---|\n");
  for (const Command& each : commands)
    if (each.id != 0 && !each.keys.empty())
      page += QStringLiteral("| %1 | %2 | %3 |\n")
                  .arg(shown_keys(each), path_of(each), place_of(each.reach));
  return page + u'\n';
}

bool has_words(const ManualPage& page, const QString& words) {
  return page.text.contains(words.trimmed(), Qt::CaseInsensitive);
}

}  // namespace tavlo
