// ProjectTree: the windows of the project as a tree. A window that is hidden
// stands below "Recycle" until it is brought back.
#pragma once

#include <QHash>
#include <QTreeWidget>

#include "project/session.h"

namespace tavlo {

class ProjectTree : public QTreeWidget {
  Q_OBJECT

 public:
  explicit ProjectTree(QWidget* parent = nullptr);

  /// Shows the windows of the project's records; those in the bin stay there.
  void show_records(const Project& project);

  /// Shows grey which fits and charts the data have left behind.
  void show_age(const Session& session);

  /// Moves the node of a window below "Recycle" or back to its own parent.
  void recycle(const QString& key);
  void restore(const QString& key);

  /// The key of the current node where it stands for a data set, fits or a chart; else empty.
  QString record() const;

  /// Lets the person type another name for the current node.
  void rename();
  bool can_rename() const;

  /// The node with that key, or null.
  QTreeWidgetItem* node(const QString& key) const;

 signals:
  /// A click on a node, or Enter; for every node but "(None)".
  void chosen(const QString& key);
  void renamed(const QString& key, const QString& title);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct Record {
    const char* image;
    QChar kind;
    int index;
    QString title;
    QString key() const { return kind + QString::number(index); }
  };

  bool has_nodes_of(const QList<Record>& records) const;
  void rebuild(const QList<Record>& records);
  void add_node(const QString& image, const QString& text, const QString& key,
                const QString& parent_key);
  static int place_below(const QTreeWidgetItem& parent, const QString& key);
  void move_below(const QString& key, const QString& parent_key);
  void choose(const QTreeWidgetItem* item);

  QHash<QString, QTreeWidgetItem*> nodes_;  ///< by their keys
};

}  // namespace tavlo
