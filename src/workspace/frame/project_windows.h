// ProjectWindows: the child windows of the project in their area of the frame:
// one sheet, panel and chart a record and one log. Each is made when it is first
// looked at, so that hundreds of records open at once; closing one puts it into
// the bin, and it lives as long as its record.
#pragma once

#include <QMdiArea>
#include <array>
#include <vector>

#include "workspace/frame/child_window.h"
#include "workspace/frame/view_maker.h"
#include "workspace/frame/window_layout.h"

namespace tavlo {

class ProjectWindows : public QMdiArea {
  Q_OBJECT

 public:
  explicit ProjectWindows(Program& program, QWidget* parent = nullptr);
  ~ProjectWindows() override;

  /// Ends all windows; after this the records may go.
  void end_all();

  /// Each record of the session has a window, and those that are made show what it holds now.
  void follow_records();

  /// The choices of the panel that a choice is made for may have changed.
  void follow_choices();

  /// All windows in blocks, out of the bin, the first sheet in front.
  void show_from_start();

  /// True while the mouse moves or draws on a chart.
  bool is_dragging() const;

  // Views by the index of their record, from 1; made when they are first asked for.
  SheetView& sheet(int index) { return view<SheetView>(Block::sheet, index); }
  FitWindow& panel(int index) { return view<FitWindow>(Block::panel, index); }
  ChartWindow& chart(int index) { return view<ChartWindow>(Block::chart, index); }
  LogWindow& log() { return view<LogWindow>(Block::log, 1); }

  /// How many windows the project has, made or not.
  int count() const;

  /// Those that are made.
  std::vector<ChildWindow*> children() const;

  /// The window of that key; null for none and for one that is not made.
  ChildWindow* child(WindowKey key) const;

  /// The index of the sheet or panel that has the keyboard; 0 when none has.
  int focused_sheet() const;
  int focused_panel() const;

  /// The index of the chart that has the keyboard; 0 when none has.
  int focused_chart() const;

  /// The index of the chart whose window is active, else 1; 0 without charts.
  int current_chart() const;

  /// The kind of the active window; a chart when none is.
  Block active_block() const;

  /// True when any window is not in the bin.
  bool any() const;

  /// Shows the window of that key and gives it the focus; nothing happens without its record.
  void bring_to_front(WindowKey key);

  /// Gives the focus to the next window in the order of the sets, or to the one before.
  void go_round(bool forward);

  /// Puts a tool bar above a chart, in the window around it.
  void add_bar(const ChartWindow& chart, QWidget* bar);

  /// The record index of the sheet or panel that had the focus last.
  int current_index() const;

  /// Places the visible windows in blocks, and again whenever the frame changes
  /// its size, until the user moves one.
  void Tile_Block();
  void tile(bool side_by_side);
  void cascade();

  /// Minimised windows stand in rows at the lower edge.
  void arrange_icons();
  bool any_icon() const;
  bool any_binned() const;

  /// The places of the last run, for the next one.
  QVariantMap places() const { return layout_.places(shown()); }
  void take_places(const QVariantMap& places);

  /// Puts every window into the bin, or takes all out of it.
  void hide_all();
  void restore_all();

 signals:
  void child_hidden(const QString& node_key);
  void child_shown(const QString& node_key);
  void hint_wanted(const QString& hint);
  void wizard_wanted();
  void rows_pasted();
  void content_changed();
  /// The view of a record was made.
  void made(Block block, int index);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Where the window of a record belongs.
  struct Seat {
    ChildWindow* window = nullptr;  ///< null until it is first looked at
    bool is_binned = false;

    bool is_shown() const { return window && !window->isHidden(); }
  };
  using Seats = std::vector<Seat>;
  using Ids = std::vector<std::int32_t>;

  static std::size_t slot(int index) { return static_cast<std::size_t>(index) - 1; }
  Seats& seats(Block block) { return seats_[static_cast<std::size_t>(block)]; }
  const Seats& seats(Block block) const { return seats_[static_cast<std::size_t>(block)]; }
  bool has(WindowKey key) const { return key.index >= 1 && key.index <= ssize(seats(key.block)); }
  Seat& seat(WindowKey key) { return seats(key.block).at(slot(key.index)); }
  ChildWindow& window(WindowKey key);
  template <class View>
  View& view(Block block, int index) {
    return static_cast<View&>(*window({block, index}).widget());
  }
  /// The view of an index if it is made, else null; and all that are.
  template <class View>
  View* made_view(Block block, int index) const;
  template <class View, class Act>
  void for_each_made(Block block, const Act& act) const;
  template <class Act>
  void for_each_seat(const Act& act);

  void connect_views();
  void catch_up();
  void follow(Block block, const Ids& ids);
  void take_place_of_next(WindowKey key);
  void set_count(Block block, int count);
  void make(WindowKey key);
  void show_front();
  void show_all();
  void set_binned(WindowKey key, bool is_binned);
  void close_up(WindowKey key);
  std::vector<ChildWindow*> shown() const;
  const ChildWindow* active() const;
  void note_chart(int index);
  void raise_partner(const ChildWindow& window);
  void note_active();
  void place_later();

  Program& program_;
  ViewMaker views_;
  WindowLayout layout_{*this};
  std::array<Seats, block_count> seats_;
  std::array<Ids, block_count> ids_;  ///< identities of the records behind the windows
  bool will_place_ = false;
  int last_set_ = 1;
};

}  // namespace tavlo
