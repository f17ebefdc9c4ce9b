#include "workspace/frame/project_tree.h"

#include <QKeyEvent>
#include <QTreeWidgetItemIterator>
#include <array>

#include "workspace/qt/icons.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

struct Node {
  const char* image;
  const char* text;
  const char* key;
  const char* parent;
};

constexpr std::array<Node, 7> nodes = {{{"tavlo", "Project", "P", ""},
                                        {"doc", "Log", "L1", "P"},
                                        {"editor", "Data", "D", "P"},
                                        {"pc", "Fit", "F", "P"},
                                        {"graph", "Chart", "C", "P"},
                                        {"recycle", "Recycle", "R", "P"},
                                        {"trash", "(None)", "R1", "R"}}};

constexpr int key_role = Qt::UserRole;
const QString bin_key = QStringLiteral("R");
const QString none_key = QStringLiteral("R1");

/// "D1" belongs below "D"; the log stands directly below the project.
QString home_of(const QString& key) {
  const QString kind = key.left(1);
  return kind == u"L" ? QStringLiteral("P") : kind;
}

}  // namespace

ProjectTree::ProjectTree(QWidget* parent) : QTreeWidget(parent) {
  setObjectName(QStringLiteral("tv_Forms"));
  setAccessibleName(tr("Project"));
  setHeaderHidden(true);
  setIndentation(14);
  setFrameShape(QFrame::NoFrame);
  connect(this, &QTreeWidget::itemClicked, this, &ProjectTree::choose);
}

void ProjectTree::rebuild(const Project& project) {
  QStringList binned;
  if (const QTreeWidgetItem* bin = node(bin_key))
    for (int i = 0; i < bin->childCount(); ++i)
      binned.append(bin->child(i)->data(0, key_role).toString());
  clear();
  for (const Node& each : nodes)
    add_node(to_qt(each.image), to_qt(each.text), to_qt(each.key), to_qt(each.parent));
  for (int i = 1; i <= project.data.bound(); ++i)
    add_record("editor", u'D', i, to_qt(project.data(i).Title));
  for (int i = 1; i <= project.fits.bound(); ++i)
    add_record("pc", u'F', i, to_qt(project.fits(i).Title));
  for (int i = 1; i <= project.charts.bound(); ++i)
    add_record("graph", u'C', i, tr("Chart%1").arg(i));
  for (const QString& key : binned) recycle(key);
  expandAll();
}

void ProjectTree::add_record(const char* image, QChar kind, int index, const QString& title) {
  add_node(to_qt(image), title, kind + QString::number(index), QString(kind));
}

void ProjectTree::add_node(const QString& image, const QString& text, const QString& key,
                           const QString& parent_key) {
  auto* item = new QTreeWidgetItem({text});
  item->setIcon(0, icon(image));
  item->setData(0, key_role, key);
  if (QTreeWidgetItem* parent = node(parent_key)) {
    parent->addChild(item);
  } else {
    addTopLevelItem(item);
  }
}

QTreeWidgetItem* ProjectTree::node(const QString& key) const {
  for (QTreeWidgetItemIterator it(const_cast<ProjectTree*>(this)); *it; ++it)
    if ((*it)->data(0, key_role) == key) return *it;
  return nullptr;
}

void ProjectTree::move_below(const QString& key, const QString& parent_key) {
  QTreeWidgetItem* item = node(key);
  QTreeWidgetItem* parent = node(parent_key);
  if (!item || !parent || item->parent() == parent) return;
  item->parent()->removeChild(item);
  // The log keeps its place in front of the groups.
  parent->insertChild(parent_key == u"P" ? 0 : parent->childCount(), item);
  if (QTreeWidgetItem* bin = node(bin_key)) node(none_key)->setHidden(bin->childCount() > 1);
  parent->setExpanded(true);
}

void ProjectTree::recycle(const QString& key) { move_below(key, bin_key); }
void ProjectTree::restore(const QString& key) { move_below(key, home_of(key)); }

void ProjectTree::choose(const QTreeWidgetItem* item) {
  const QString key = item->data(0, key_role).toString();
  if (key != none_key) emit chosen(key);
}

void ProjectTree::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && currentItem()) return choose(currentItem());
  QTreeWidget::keyPressEvent(event);
}

}  // namespace tavlo
