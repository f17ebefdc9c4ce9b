// FormatDraft: the working copy of a chart that the format dialog edits. The chart
// itself is not touched before the person says OK.
#pragma once

#include <QObject>
#include <functional>

#include "chart/record/drawing_record.h"
#include "project/session.h"
#include "workspace/qt/user_commands.h"

namespace tavlo {

class FormatDraft : public QObject {
  Q_OBJECT

 public:
  /// Copies the chart into `gChartNow`.
  FormatDraft(Session& session, UserCommands& commands, int chart_index);

  Session& session() { return session_; }
  UserCommands& commands() { return commands_; }
  Chart& chart() { return session_.gChartNow; }

  /// One field changes, as a command of its own.
  void edit(const std::function<void(Chart&)>& change);

  /// So much changes that all fields have to show it. `change` tells whether it did.
  void replace(const std::function<bool(Chart&)>& change);

  /// How the working copy looks; sets its automatic limits.
  void compose();
  const DrawingRecord& drawing() const { return drawing_; }

  /// The chart becomes the working copy, or the working copy the chart.
  void keep();
  void drop();

 signals:
  void edited();
  void replaced();

 private:
  Session& session_;
  UserCommands& commands_;
  int index_;
  DrawingRecord drawing_;
};

}  // namespace tavlo
