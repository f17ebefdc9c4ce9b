#include "workspace/frame/project_tree.h"

#include <QKeyEvent>
#include <algorithm>
#include <array>

#include "chart/parts/plot_sets.h"
#include "project/fit_records.h"
#include "workspace/qt/icons.h"
#include "workspace/qt/qt_text.h"
#include "workspace/qt/tones.h"

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

bool is_record(const QString& key) {
  return key.size() > 1 && QStringLiteral("DFC").contains(key.front());
}

/// What a chart is about: its title, and the data that it shows.
QString title_of(const Session& session, const Chart& chart) {
  const std::string& title = chart.Boxes(chart_item::main_title).Text2;
  const std::string data = names_of_data(session, plot_sets(session, chart));
  return to_qt(title.empty() || data.empty() ? title + data : title + ": " + data);
}

bool has_old_fits(const Project& project, int index) {
  const FitSet& fits = project.fits(index);
  const DataSet& data = project.data(data_of_fits(project, index));
  return std::any_of(fits.Fits.begin() + 1, fits.Fits.end(),
                     [&](const FitResult& fit) { return is_out_of_date(fit, data); });
}

}  // namespace

ProjectTree::ProjectTree(QWidget* parent) : QTreeWidget(parent) {
  setObjectName(QStringLiteral("tv_Forms"));
  setAccessibleName(tr("Project"));
  setHeaderHidden(true);
  setIndentation(14);
  setFrameShape(QFrame::NoFrame);
  setEditTriggers(NoEditTriggers);
  connect(this, &QTreeWidget::itemClicked, this, &ProjectTree::choose);
  connect(this, &QTreeWidget::itemChanged, this, [this](const QTreeWidgetItem* item) {
    emit renamed(item->data(0, key_role).toString(), item->text(0));
  });
}

void ProjectTree::show_records(const Project& project) {
  const QSignalBlocker no_edits(this);
  QList<Record> records;
  for (int i = 1; i <= project.data.bound(); ++i)
    records.append({"editor", u'D', i, to_qt(project.data(i).Title)});
  for (int i = 1; i <= project.fits.bound(); ++i)
    records.append({"pc", u'F', i, to_qt(project.fits(i).Title)});
  for (int i = 1; i <= project.charts.bound(); ++i)
    records.append({"graph", u'C', i, tr("Chart%1").arg(i)});
  // A tree that is built anew would lose the place of the person who has renamed a record.
  if (!has_nodes_of(records)) rebuild(records);
  for (const Record& each : records) node(each.key())->setText(0, each.title);
}

void ProjectTree::show_age(const Session& session) {
  const QSignalBlocker no_edits(this);
  const Project& project = session.project;
  const auto mark = [this](const QString& key, bool is_old, const QString& title = {}) {
    QTreeWidgetItem* item = node(key);
    if (!item) return;
    item->setForeground(0, is_old ? quiet_ink(palette()) : palette().color(QPalette::Text));
    item->setToolTip(0, is_old ? tr("Out of date: calculate the fits again") : title);
  };
  for (int i = 1; i <= project.fits.bound(); ++i)
    mark(QStringLiteral("F%1").arg(i), has_old_fits(project, i));
  for (int i = 1; i <= project.charts.bound(); ++i)
    mark(QStringLiteral("C%1").arg(i), is_out_of_date(session, project.charts(i)),
         title_of(session, project.charts(i)));
}

/// Those of the records, and no others.
bool ProjectTree::has_nodes_of(const QList<Record>& records) const {
  const auto nodes_of_records = std::count_if(nodes_.keyBegin(), nodes_.keyEnd(),
                                              [](const QString& key) { return is_record(key); });
  return nodes_of_records == records.size() &&
         std::all_of(records.begin(), records.end(),
                     [this](const Record& each) { return node(each.key()) != nullptr; });
}

void ProjectTree::rebuild(const QList<Record>& records) {
  QStringList binned;
  if (const QTreeWidgetItem* bin = node(bin_key))
    for (int i = 0; i < bin->childCount(); ++i)
      binned.append(bin->child(i)->data(0, key_role).toString());
  clear();
  nodes_.clear();
  for (const Node& each : nodes)
    add_node(to_qt(each.image), to_qt(each.text), to_qt(each.key), to_qt(each.parent));
  for (const Record& each : records)
    add_node(to_qt(each.image), each.title, each.key(), QString(each.kind));
  for (const QString& key : binned) recycle(key);
  expandAll();
}

void ProjectTree::add_node(const QString& image, const QString& text, const QString& key,
                           const QString& parent_key) {
  auto* item = new QTreeWidgetItem({text});
  item->setIcon(0, icon(image));
  item->setData(0, key_role, key);
  nodes_.insert(key, item);
  if (is_record(key) && key.front() != u'C') item->setFlags(item->flags() | Qt::ItemIsEditable);
  if (QTreeWidgetItem* parent = node(parent_key)) {
    parent->addChild(item);
  } else {
    addTopLevelItem(item);
  }
}

QTreeWidgetItem* ProjectTree::node(const QString& key) const { return nodes_.value(key); }

/// What comes back stands at its old place: the log in front of the groups, a record by its
/// number. The bin takes them as they come.
int ProjectTree::place_below(const QTreeWidgetItem& parent, const QString& key) {
  const QString parent_key = parent.data(0, key_role).toString();
  if (parent_key == u"P") return 0;
  if (parent_key == bin_key) return parent.childCount();
  const auto number = [](const QString& of) { return of.mid(1).toInt(); };
  int place = 0;
  while (place < parent.childCount() &&
         number(parent.child(place)->data(0, key_role).toString()) < number(key))
    ++place;
  return place;
}

void ProjectTree::move_below(const QString& key, const QString& parent_key) {
  QTreeWidgetItem* item = node(key);
  QTreeWidgetItem* parent = node(parent_key);
  if (!item || !parent || item->parent() == parent) return;
  item->parent()->removeChild(item);
  parent->insertChild(place_below(*parent, key), item);
  if (QTreeWidgetItem* bin = node(bin_key)) node(none_key)->setHidden(bin->childCount() > 1);
  parent->setExpanded(true);
}

QString ProjectTree::record() const {
  const QString key = currentItem() ? currentItem()->data(0, key_role).toString() : QString();
  return is_record(key) ? key : QString();
}

bool ProjectTree::can_rename() const { return !record().isEmpty() && !record().startsWith(u'C'); }

void ProjectTree::rename() {
  if (can_rename()) editItem(currentItem());
}

void ProjectTree::recycle(const QString& key) { move_below(key, bin_key); }
void ProjectTree::restore(const QString& key) { move_below(key, home_of(key)); }

void ProjectTree::choose(const QTreeWidgetItem* item) {
  const QString key = item->data(0, key_role).toString();
  if (key != none_key) emit chosen(key);
}

void ProjectTree::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  // An edit of a name passes its Enter on.
  if (enter && currentItem() && state() != EditingState) return choose(currentItem());
  QTreeWidget::keyPressEvent(event);
}

}  // namespace tavlo
