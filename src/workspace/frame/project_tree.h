// ProjectTree: the windows of the project as a tree. A window that is hidden
// stands below "Recycle" until it is brought back.
#pragma once

#include <QTreeWidget>

#include "project/project.h"

namespace tavlo {

class ProjectTree : public QTreeWidget {
  Q_OBJECT

 public:
  explicit ProjectTree(QWidget* parent = nullptr);

  /// Shows the windows of these records; those in the bin stay there.
  void rebuild(const Project& project);

  /// Moves the node of a window below "Recycle" or back to its own parent.
  void recycle(const QString& key);
  void restore(const QString& key);

  /// The node with that key, or null.
  QTreeWidgetItem* node(const QString& key) const;

 signals:
  /// A click on a node, or Enter; for every node but "(None)".
  void chosen(const QString& key);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void add_record(const char* image, QChar kind, int index, const QString& title);
  void add_node(const QString& image, const QString& text, const QString& key,
                const QString& parent_key);
  void move_below(const QString& key, const QString& parent_key);
  void choose(const QTreeWidgetItem* item);
};

}  // namespace tavlo
