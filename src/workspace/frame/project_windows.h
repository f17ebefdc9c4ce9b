// ProjectWindows: the child windows of the project in their area of the frame:
// one sheet, panel and chart a record and one log. They are hidden, not
// destroyed, when closed, and live as long as the project.
#pragma once

#include <QMdiArea>
#include <QVariantMap>
#include <vector>

#include "workspace/chart/chart_window.h"
#include "workspace/data/sheet_view.h"
#include "workspace/fit/fit_window.h"
#include "workspace/frame/child_window.h"
#include "workspace/frame/log_window.h"
#include "workspace/frame/program.h"

namespace tavlo {

class ProjectWindows : public QMdiArea {
  Q_OBJECT

 public:
  explicit ProjectWindows(Program& program, QWidget* parent = nullptr);
  ~ProjectWindows() override;

  /// Ends all windows; after this the records may go.
  void end_all();

  /// Each record of the session has a window, and shows what it holds now.
  void follow_records();

  /// All windows in blocks, the first sheet in front.
  void show_from_start();

  /// True while the mouse moves or draws on a chart.
  bool is_dragging() const;

  // Views by the index of their record, from 1.
  SheetView& sheet(int index) { return *sheets_.at(slot(index)); }
  FitWindow& panel(int index) { return *panels_.at(slot(index)); }
  ChartWindow& chart(int index) { return *charts_.at(slot(index)); }
  LogWindow& log() { return *log_; }

  const std::vector<ChildWindow*>& children() const { return children_; }
  ChildWindow* child(const QString& node_key) const;

  /// The index of the sheet or panel that has the keyboard; 0 when none has.
  int focused_sheet() const;
  int focused_panel() const;

  /// The index of the chart that has the keyboard; 0 when none has.
  int focused_chart() const;

  /// The index of the chart whose window is active, else 1; 0 without charts.
  int current_chart() const;

  /// D, F, C or L, as the keys of the tree begin; C when no window is active.
  QChar active_kind() const;

  /// True when any window is shown, or any is hidden.
  bool any(bool shown) const;

  /// Shows the window around a view and gives it the focus.
  void bring_to_front(const QWidget& view);

  /// Puts a tool bar above a view, in the window around it.
  void add_bar(const QWidget& view, QWidget* bar);

  /// The record index of the sheet or panel that had the focus last.
  int current_index() const;

  /// Places the visible windows in blocks, and again whenever the frame changes
  /// its size, until the user moves one.
  void Tile_Block();
  void tile(bool side_by_side);
  void cascade();

  /// The windows that the person has placed by hand, each by its key, as shares of the
  /// area; none while they stand in blocks.
  QVariantMap places() const;

  /// Places windows so, and again whenever the frame changes its size, until the person
  /// moves one. What is no place inside the area is passed over.
  void take_places(const QVariantMap& places);

  /// Hides every window, or shows every hidden one.
  void hide_all();
  void restore_all();

 signals:
  void child_hidden(const QString& node_key);
  void child_shown(const QString& node_key);
  void hint_wanted(const QString& hint);
  void rows_pasted();
  void content_changed();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  static std::size_t slot(int index) { return static_cast<std::size_t>(index) - 1; }
  void connect_views();
  void move_up(char kind, const std::vector<std::int32_t>& ids, std::vector<std::int32_t>& shown);
  void take_place(ChildWindow& window, const ChildWindow& of);
  void note_chart(int index);
  void note_active(const QMdiSubWindow* active);
  void add_sheet();
  void connect_drops(SheetView& view, int index);
  void add_panel();
  void add_chart();
  void add_log();
  template <class View>
  void drop_behind(std::vector<View*>& views, char kind, int count);
  void show_new();
  void tile_later();
  ChildWindow& add(QWidget* content, const QString& key, const QString& name, const QString& image,
                   const std::string& title);
  void catch_up();
  void place_again();
  void leave_layout();

  Program& program_;
  std::vector<ChildWindow*> children_;
  std::vector<ChildWindow*> new_;  ///< not shown yet
  std::vector<SheetView*> sheets_;
  std::vector<FitWindow*> panels_;
  std::vector<ChartWindow*> charts_;
  LogWindow* log_ = nullptr;
  bool in_blocks_ = true;
  bool will_tile_ = false;
  QVariantMap places_;  ///< of the last run; empty once the person has moved a window
  int last_set_ = 1;
  // Identities of the records behind the views.
  std::vector<std::int32_t> data_ids_;
  std::vector<std::int32_t> fit_ids_;
  std::vector<std::int32_t> chart_ids_;
};

}  // namespace tavlo
