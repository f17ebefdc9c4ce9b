#include "workspace/frame/export_file.h"

#include <QDir>
#include <QFileInfo>

#include "actions/file_faults.h"
#include "actions/recent_files.h"
#include "actions/work.h"
#include "workspace/qt/own_store.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

QString folder_key(const ExportRequest& request) {
  return QStringLiteral("export/") + to_qt(request.kind);
}

/// That of the last export, else that of the project, while it is there.
QString folder_of(Session& session, const ExportRequest& request) {
  if (const auto store = own_store(session.places)) {
    const QString last = store->value(folder_key(request)).toString();
    if (!last.isEmpty() && QDir(last).exists()) return last;
  }
  const std::string& project = present_work(session).path;
  return project.empty() ? QDir::currentPath() : QFileInfo(to_qt(project)).absolutePath();
}

/// A title of a project may hold what a name can't.
QString file_name_of(const ExportRequest& request) {
  QString name = to_qt(request.name);
  for (QChar& c : name)
    if (c == u'/' || c < u' ') c = u'_';
  return name.left(120) + u'.' + to_qt(request.suffix);
}

}  // namespace

bool export_file(Session& session, const ExportRequest& request, const FileMaker& make) {
  const QString proposed = QDir(folder_of(session, request)).filePath(file_name_of(request));
  const auto chosen = session.ports.prompts.choose_file(
      {request.title, request.filter, 1, true, true, request.suffix, {}, from_qt(proposed)});
  const QString path = to_qt(chosen.value_or("")).trimmed();
  if (path.isEmpty()) return false;
  const QFileInfo file(path);
  const auto bytes = make(from_qt(file.suffix().toLower()));
  if (!bytes) return false;
  FileResult done = {FileFault::device_error, "it can't be made"};
  if (!bytes->empty()) done = session.ports.file_system.write_whole(from_qt(path), *bytes);
  if (!done) {
    tell_fault(session, from_qt(path), done);
    return false;
  }
  if (const auto store = own_store(session.places))
    store->setValue(folder_key(request), file.absolutePath());
  session.ports.views.status("Exported: " + bare_file_name(from_qt(path)));
  return true;
}

}  // namespace tavlo
