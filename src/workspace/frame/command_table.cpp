#include "workspace/frame/command_table.h"

#include <array>
#include <iterator>

#include "chart/scales/chart_view.h"
#include "workspace/fit/fit_choices.h"
#include "workspace/frame/main_window.h"

namespace tavlo {

namespace {

using Rows = std::vector<Command>;

constexpr const char* file = "&File";
constexpr const char* edit = "&Edit";
constexpr const char* columns = "&Edit|&View Columns";
constexpr const char* options = "&Options";
constexpr const char* marks = "&Options|Add &Mark";
constexpr const char* analysis = "&Analysis";
constexpr const char* window = "&Window";
constexpr const char* help = "&Help";

/// What holds of the chart in front; false without one.
auto of_chart(ChartCommands& charts, bool (*holds)(ChartWindow&)) {
  return [&charts, holds] { return charts.any() && holds(charts.chart()); };
}

Reason without_chart(ChartCommands& charts) {
  return unless([&charts] { return charts.any(); }, "The project has no chart.");
}

Rows file_commands(MainWindow& frame) {
  ChartCommands& charts = frame.charts();
  return {
      {{1, "&File|&New", "&Project", "Ctrl+N"}, {.run = [&] { frame.files().new_project(); }}},
      {{2, "&File|&New", "&Data/Fit"}, {.run = [&] { frame.add_data_and_fit(); }}},
      {{3, "&File|&New", "&Chart"}, {.run = [&] { frame.add_chart(); }}},
      {{4, file, "&Open", "Ctrl+O"}, {.run = [&] { frame.files().open(); }}},
      {{103, file, "&Import..."}, {.name = "Import", .run = [&] { frame.files().import(); }}},
      {{0, "&File|Recent &Files"}},
      {{0, "&File|Reco&ver"}},
      {{5, file, "&Save", "Ctrl+S"}, {.run = [&] { frame.files().save(); }}},
      {{6, file, "Save &As"}, {.run = [&] { frame.files().save(); }}},
      {{0, file}},
      {{7, file, "&Print", "Ctrl+P"}, {.run = [&] { charts.print(); }}},
      {{8, file, "Print Pre&view"}, {.run = [&] { charts.preview(); }}},
      {{9, file, "Print Set&up"}, {.run = [&] { charts.set_up_printer(); }}},
      {{0, file}},
      {{10, file, "Setup/&Language"}, {.run = [&] { frame.show_options(); }}},
      {{11, file, "Li&brary"},
       {.refusal = always("The library of typical parameters comes with the next version.")}},
      {{0, file}},
      {{12, file, "E&xit", "Ctrl+Q"}, {.run = [&] { frame.leave(); }}},
  };
}

// Whether there is something to cut is not asked: that would walk the sheet at each key.
Rows edit_commands(MainWindow& frame) {
  const auto sheet = [&] { return frame.windows().active_block() == Block::sheet; };
  const auto text = [&, sheet] { return sheet() || frame.windows().active_block() == Block::log; };
  const Reason without_sheet = unless(sheet, "Bring a data sheet to the front first.");
  const Reason without_text = unless(text, "Bring a data sheet or the log to the front first.");
  return {
      {{13, edit, "Select &All", "Ctrl+A"},
       {.run = [&] { frame.select_all(); }, .refusal = without_text}},
      {{14, edit, "Cu&t", "Ctrl+X"}, {.run = [&] { frame.cut(); }, .refusal = without_sheet}},
      {{15, edit, "&Copy", "Ctrl+C"}, {.run = [&] { frame.copy(); }}},
      {{16, edit, "&Paste", "Ctrl+V"}, {.run = [&] { frame.paste(); }, .refusal = without_sheet}},
      {{0, edit}},
      {{18, edit, "&Undo", "Ctrl+Z"},
       {.run = [&] { frame.undo(); },
        .refusal = unless([&] { return frame.history().can_undo(); }, "There is nothing to undo."),
        .object = [&] { return frame.history().undo_name(); }}},
      {{19, edit, "&Redo", "Ctrl+Y; Ctrl+Shift+Z"},
       {.run = [&] { frame.redo(); },
        .refusal = unless([&] { return frame.history().can_redo(); }, "There is nothing to redo."),
        .object = [&] { return frame.history().redo_name(); }}},
      {{0, edit}},
      {{20, edit, "D&escription"}},
      {{21, columns, "Data &X"}},
      {{22, columns, "Data &Y"}},
      {{23, columns, "&Failures"}},
      {{24, columns, "&Suspensions"}},
      {{25, columns, "Failure &Mode"}},
      {{26, columns, "&Comments"}},
      {{27, columns, "(Close &View Menu)"}},
  };
}

Rows option_commands(MainWindow& frame) {
  ChartCommands& charts = frame.charts();
  const Reason no_chart = without_chart(charts);
  const auto precise = of_chart(charts, [](ChartWindow& chart) { return chart.is_precise(); });
  const auto zooms =
      of_chart(charts, [](ChartWindow& chart) { return chart.tool() == ChartTool::zoom; });
  const auto shows_parts = of_chart(
      charts, [](ChartWindow& chart) { return chart.stage().chart().SubPopulations != 0; });
  return {
      {{28, options, "&Sample"}, {.run = [&] { frame.draw_samples(); }}},
      {{29, options, "&Calculator"}},
      {{30, options, "&Precise Reading"},
       {.run = [&] { charts.toggle_precise_reading(); }, .refusal = no_chart, .checked = precise}},
      {{31, options, "&Report", "Ctrl+R"}, {.run = [&] { frame.toggle_report(); }}},
      {{32, options, "&Label/Style"}, {.run = [&] { charts.format(); }, .refusal = no_chart}},
      {{33, options, "&Zoom"},
       {.run = [&] { charts.toggle_zoom(); }, .refusal = no_chart, .checked = zooms}},
      {{102, options, "S&ub-Populations"},
       {.name = "SubPopulations",
        .run = [&] { charts.toggle_sub_populations(); },
        .refusal = no_chart,
        .checked = shows_parts}},
  };
}

Rows mark_commands(ChartCommands& charts) {
  const auto adds = [&charts](const char* name, MarkKind kind) {
    return CommandEffect{.name = name,
                         .run = [&charts, kind] { charts.chart().add_mark(kind); },
                         .refusal = without_chart(charts)};
  };
  return {
      {{114, marks, "&Text"}, adds("AddText", MarkKind::text)},
      {{115, marks, "&Line"}, adds("AddLine", MarkKind::line)},
      {{116, marks, "&Arrow"}, adds("AddArrow", MarkKind::arrow)},
      {{117, marks, "&Symbol"}, adds("AddSymbol", MarkKind::symbol)},
  };
}

/// Those of the pop-up alone, with keys that the chart hears while it has the keyboard.
Rows chart_commands(ChartCommands& charts) {
  const auto act = [&charts](const char* name, void (*run)(ChartWindow&), const Reason& refusal) {
    return CommandEffect{.name = name,
                         .run = [&charts, run] { run(charts.chart()); },
                         .refusal = refusal,
                         .reach = CommandReach::chart};
  };
  const Reason no_chart = without_chart(charts);
  const auto zoomed =
      of_chart(charts, [](ChartWindow& chart) { return zoom_depth(chart.stage().chart()) > 0; });
  const auto on_mark =
      of_chart(charts, [](ChartWindow& chart) { return chart.selected().is_mark(); });
  const auto moved = of_chart(charts, [](ChartWindow& chart) { return chart.can_free_selected(); });
  const Reason unzoomed = unless(zoomed, "The chart is not zoomed.");
  const Reason without_mark = unless(on_mark, "Click a mark of the chart first.");
  const Reason unmoved = unless(moved, "Click a box that was moved by hand first.");
  return {
      {{110, "", "&Format..."},
       {.name = "FormatChart", .run = [&] { charts.format_at_menu(); }, .refusal = no_chart}},
      {{111, "", "Zoom &In", "+"},
       act(
           "ZoomIn", [](ChartWindow& chart) { chart.zoom_in(); }, no_chart)},
      {{112, "", "Zoom &Back", "Backspace; -"},
       act(
           "ZoomBack", [](ChartWindow& chart) { chart.zoom_back(); }, unzoomed)},
      {{113, "", "&Automatic Limits", "Home"},
       act(
           "ZoomAutomatic", [](ChartWindow& chart) { chart.zoom_to_automatic(); }, no_chart)},
      {{118, "", "&Edit Mark..."},
       act(
           "EditMark", [](ChartWindow& chart) { chart.edit_selected(); }, without_mark)},
      {{119, "", "&Delete Mark", "Del"},
       act(
           "DeleteMark", [](ChartWindow& chart) { chart.delete_selected(); }, without_mark)},
      {{120, "", "Find Its &Own Place"},
       act(
           "FreeBox", [](ChartWindow& chart) { chart.free_selected(); }, unmoved)},
      {{121, "", "&Save As..."},
       {.name = "SaveChart", .run = [&] { charts.save(); }, .refusal = no_chart}},
  };
}

/// Those of the pop-ups of fits and tree, with keys that these hear.
Rows record_commands(MainWindow& frame) {
  const auto can_delete = [&] { return !frame.deletable_record().empty(); };
  const auto can_rename = [&] { return frame.tree().can_rename(); };
  return {
      {{122, "", "&Delete Fit", "Del"},
       {.name = "DeleteFit", .run = [&] { frame.delete_fit(); }, .reach = CommandReach::fits}},
      {{123, "", "Re&name", "F2"},
       {.name = "Rename",
        .run = [&] { frame.tree().rename(); },
        .refusal = unless(can_rename, "Choose a data set or its fits in the project tree first."),
        .reach = CommandReach::tree}},
      {{124, "", "&Delete", "Del"},
       {.name = "DeleteRecord",
        .run = [&] { frame.delete_record(); },
        .refusal = unless(can_delete,
                          "Choose a data set or a chart in the project tree; the first one stays."),
        .object = [&] { return frame.deletable_record(); },
        .reach = CommandReach::tree}},
  };
}

/// "Alt+B" for "3&b".
std::string mnemonic_key(const std::string& caption) {
  const auto mark = caption.find('&');
  return mark == std::string::npos ? "" : std::string("Alt+") + caption[mark + 1];
}

/// The letters underlined in the panel, heard from every window.
Rows choice_commands(MainWindow& frame) {
  Rows rows;
  for (const ModelOption& option : model_options()) {
    Command row{{command::first_model + option.index, "&Analysis|M&odel", option.label,
                 mnemonic_key(option.caption)}};
    if (model_of_option(option.index)) {
      row.run = [&frame, index = option.index] { frame.choose_model(index); };
      row.checked = [&frame, index = option.index] { return option_of(frame.panel()) == index; };
    }
    if (!row.caption.empty()) rows.push_back(row);
  }
  for (const Method& method : methods())
    rows.push_back(
        {{command::first_method + method.code, "&Analysis|&Method",
          method_menu_caption(method.code)},
         {.run = [&frame, code = method.code] { frame.choose_method(code); },
          .checked = [&frame, code = method.code] { return frame.panel().nMethod == code; }}});
  return rows;
}

Rows analysis_commands(MainWindow& frame) {
  return {
      {{101, analysis, "&Calculate Fit", "Alt+C"},
       {.name = "Calculate", .run = [&] { frame.calculate(); }}},
      {{34, analysis, "&Distribution Analysis"}, {.run = [&] { frame.compare_models(); }}},
      {{49, analysis, "&3 Parameter"}, {.run = [&] { frame.fit_as(model_code::weibull3); }}},
      {{50, analysis, "&Weibayes"}, {.run = [&] { frame.fit_as(model_code::weibayes); }}},
      {{51, "", "&Method"}, {.name = "MethodMenu", .run = [&] { frame.open_method_menu(); }}},
      {{35, "&Tools", "&Fit Wizard"},
       {.refusal = always("The fit wizard comes with the next version.")}},
  };
}

/// The answers beside the fit grid, and what a person does with a row of the grid.
Rows life_commands(MainWindow& frame) {
  const auto has_fit = [&] { return frame.has_fit(); };
  const Reason without_fit = unless(has_fit, "There is no fit yet: calculate one first.");
  const auto of_row = [&frame, without_fit](const char* name, void (MainWindow::*run)()) {
    return CommandEffect{.name = name,
                         .run = [&frame, run] { (frame.*run)(); },
                         .refusal = without_fit,
                         .reach = CommandReach::fits};
  };
  return {
      {{190, analysis, "&Life Panel", "Ctrl+L"},
       {.name = "LifePanel",
        .run = [&] { frame.toggle_life(); },
        .checked = [&] { return frame.shows_life(); }}},
      {{191, analysis, "Copy L&ife Table", "Ctrl+Shift+C"},
       {.name = "CopyLife", .run = [&] { frame.copy_life(); }, .refusal = without_fit}},
      {{192, analysis, "Mar&k on Chart", "Ctrl+M"},
       {.name = "MarkLife",
        .run = [&] { frame.mark_life(); },
        .refusal = [&] { return frame.why_no_life_mark(); }}},
      {{193, "", "Fit &Notes...", "Ctrl+I"}, of_row("FitNotes", &MainWindow::show_fit_notes)},
      {{194, "", "&Show on Chart", "Space"}, of_row("ShowFit", &MainWindow::toggle_fit)},
      {{195, "", "Line C&olour...", "Ctrl+Shift+L"},
       of_row("FitColour", &MainWindow::choose_fit_colour)},
  };
}

Rows layout_commands(ProjectWindows& windows) {
  const Reason none_shown = unless([&] { return windows.any(); }, "All windows are closed.");
  return {
      {{36, window, "&Cascade"}, {.run = [&] { windows.cascade(); }, .refusal = none_shown}},
      {{37, window, "Tile &Horizontal"},
       {.run = [&] { windows.tile(false); }, .refusal = none_shown}},
      {{38, window, "Tile &Vertical"}, {.run = [&] { windows.tile(true); }, .refusal = none_shown}},
      {{39, window, "Tile &Block", "Ctrl+B"}, {.run = [&] { windows.Tile_Block(); }}},
      {{40, window, "&Arrange Icons"}},
      {{41, window, "C&lose All"}, {.run = [&] { windows.hide_all(); }, .refusal = none_shown}},
      {{43, "&Window|&RestoreForm", "&Undelete", "Ctrl+U"},
       {.run = [&] { windows.restore_all(); }}},
  };
}

Rows window_commands(MainWindow& frame) {
  ProjectWindows& windows = frame.windows();
  const auto opens = [&](Block block) { return [&frame, block] { frame.open_child({block, 1}); }; };
  const auto opens_of_set = [&](Block block) {
    return [&frame, block] { frame.open_child({block, frame.windows().current_index()}); };
  };
  return {
      {{0, window}},
      {{130, window, "&Next Window", "F6; Ctrl+Tab"}, {.run = [&] { windows.go_round(true); }}},
      {{131, window, "Previous &Window", "Shift+F6; Ctrl+Shift+Tab"},
       {.run = [&] { windows.go_round(false); }}},
      {{0, window}},
      {{132, window, "&Data", "Ctrl+1", "editor"}, {.run = opens_of_set(Block::sheet)}},
      {{133, window, "&Fit", "Ctrl+2", "pc"}, {.run = opens_of_set(Block::panel)}},
      {{134, window, "Char&t", "Ctrl+3", "graph"}, {.run = opens(Block::chart)}},
      {{135, window, "L&og", "Ctrl+4", "doc"}, {.run = opens(Block::log)}},
      {{136, window, "&Project Tree", "Ctrl+0", "tavlo"}, {.run = [&] { frame.show_tree(); }}},
  };
}

Rows help_commands(MainWindow& frame) {
  return {
      {{44, help, "&Index"}},
      {{45, help, "&QuickHelp (1 page)"}},
      {{46, help, "&About"}, {.run = [&] { frame.show_about(); }}},
      {{47, "&Help|&Other Tools", "QM &Weibull"}},
      {{48, "&Help|&Other Tools", "QM &Visual"}},
  };
}

}  // namespace

std::vector<Command> all_commands(MainWindow& frame) {
  Rows all;
  for (Rows& rows : std::array{
           file_commands(frame), edit_commands(frame), option_commands(frame),
           mark_commands(frame.charts()), chart_commands(frame.charts()), record_commands(frame),
           choice_commands(frame), analysis_commands(frame), life_commands(frame),
           layout_commands(frame.windows()), window_commands(frame), help_commands(frame)})
    all.insert(all.end(), std::make_move_iterator(rows.begin()),
               std::make_move_iterator(rows.end()));
  return all;
}

std::span<const int> sheet_pop_up() {
  static constexpr std::array ids = {command::cut, command::copy, command::paste, 0,
                                     command::select_all};
  return ids;
}

std::span<const int> fits_pop_up() {
  static constexpr std::array ids = {command::copy,
                                     0,
                                     command::show_fit,
                                     command::fit_colour,
                                     command::fit_notes,
                                     0,
                                     command::calculate,
                                     command::delete_fit,
                                     0,
                                     command::life_panel,
                                     command::copy_life,
                                     command::mark_life};
  return ids;
}

std::span<const int> tree_pop_up() {
  static constexpr std::array ids = {command::rename, command::delete_record};
  return ids;
}

std::span<const int> log_pop_up() {
  static constexpr std::array ids = {command::copy, command::select_all, 0, command::print};
  return ids;
}

std::span<const int> chart_pop_up() {
  static constexpr std::array ids = {command::format_chart,
                                     0,
                                     command::zoom,
                                     command::zoom_in,
                                     command::zoom_back,
                                     command::zoom_automatic,
                                     0,
                                     command::precise_reading,
                                     command::sub_populations,
                                     0,
                                     command::add_text,
                                     command::add_line,
                                     command::add_arrow,
                                     command::add_symbol,
                                     command::edit_mark,
                                     command::delete_mark,
                                     command::free_box,
                                     0,
                                     command::copy,
                                     command::save_chart,
                                     command::print,
                                     command::print_preview};
  return ids;
}

}  // namespace tavlo
