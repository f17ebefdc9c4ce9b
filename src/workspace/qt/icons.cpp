#include "workspace/qt/icons.h"

#include <QFile>
#include <QHash>

#include "workspace/qt/drawn_icon.h"

// The linker would leave the drawings of a static library out.
static void keep_icons() { Q_INIT_RESOURCE(workspace); }

namespace tavlo {

namespace {

/// The names that the desktops have agreed on.
QString theme_name(const QString& key) {
  static const QHash<QString, QString> names = {
      {QStringLiteral("new"), QStringLiteral("document-new")},
      {QStringLiteral("open"), QStringLiteral("document-open")},
      {QStringLiteral("save"), QStringLiteral("document-save")},
      {QStringLiteral("print"), QStringLiteral("document-print")},
      {QStringLiteral("cut"), QStringLiteral("edit-cut")},
      {QStringLiteral("copy"), QStringLiteral("edit-copy")},
      {QStringLiteral("paste"), QStringLiteral("edit-paste")},
      {QStringLiteral("undo"), QStringLiteral("edit-undo")},
      {QStringLiteral("redo"), QStringLiteral("edit-redo")},
      {QStringLiteral("delete"), QStringLiteral("edit-delete")},
      {QStringLiteral("find"), QStringLiteral("edit-find")},
      {QStringLiteral("zoom"), QStringLiteral("zoom-in")},
      {QStringLiteral("help"), QStringLiteral("help-contents")},
      {QStringLiteral("exit"), QStringLiteral("application-exit")},
      {QStringLiteral("back"), QStringLiteral("go-previous")},
      {QStringLiteral("forward"), QStringLiteral("go-next")},
  };
  return names.value(key);
}

QIcon made_icon(const QString& key) {
  keep_icons();
  QFile drawing(QStringLiteral(":/icons/%1.svg").arg(key));
  return drawing.open(QIODevice::ReadOnly) ? drawn_icon(key, drawing.readAll(), theme_name(key))
                                           : QIcon();
}

}  // namespace

QIcon icon(const QString& key) {
  // Hundreds of windows and nodes share a few. Kept to the end: a picture must not go after
  // the application.
  static auto& made = *new QHash<QString, QIcon>;
  auto found = made.find(key);
  if (found == made.end()) found = made.insert(key, made_icon(key));
  return *found;
}

}  // namespace tavlo
