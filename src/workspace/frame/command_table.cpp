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
      {{1, "&File|&New", "&Project", "Ctrl+N", "new"},
       {.run = [&] { frame.files().new_project(); }}},
      {{2, "&File|&New", "&Data/Fit"}, {.run = [&] { frame.add_data_and_fit(); }}},
      {{3, "&File|&New", "&Chart"}, {.run = [&] { frame.add_chart(); }}},
      {{4, file, "&Open", "Ctrl+O", "open"}, {.run = [&] { frame.files().open(); }}},
      {{103, file, "&Import...", "", "import"},
       {.name = "Import", .run = [&] { frame.files().import(); }}},
      {{0, "&File|&Examples"}},
      {{0, "&File|Recent &Files"}},
      {{0, "&File|Re&cover"}},
      {{5, file, "&Save", "Ctrl+S", "save"}, {.run = [&] { frame.files().save(); }}},
      {{6, file, "Save &As"}, {.run = [&] { frame.files().save(); }}},
      {{0, file}},
      {{7, file, "&Print", "Ctrl+P", "print"}, {.run = [&] { charts.print(); }}},
      {{8, file, "Print Pre&view"}, {.run = [&] { charts.preview(); }}},
      {{9, file, "Print Set&up"}, {.run = [&] { charts.set_up_printer(); }}},
      {{command::export_report, file, "Export &Report..."},
       {.name = "ExportReport", .run = [&] { frame.documents().export_report(); }}},
      {{0, file}},
      {{10, file, "Setup/&Language", "", "options"}, {.run = [&] { frame.show_options(); }}},
      {{11, file, "Li&brary"}, {.run = [&] { frame.open_library(); }}},
      {{0, file}},
      {{12, file, "E&xit", "Ctrl+Q", "exit"}, {.run = [&] { frame.leave(); }}},
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
      {{14, edit, "Cu&t", "Ctrl+X", "cut"}, {.run = [&] { frame.cut(); }, .refusal = without_text}},
      {{15, edit, "&Copy", "Ctrl+C", "copy"}, {.run = [&] { frame.copy(); }}},
      {{170, edit, "Copy with &Headings", "Ctrl+Shift+C"},
       {.name = "CopyTable",
        .run = [&] { frame.sheets().copy_with_headings(); },
        .refusal = without_sheet,
        .reach = CommandReach::sheet}},
      {{16, edit, "&Paste", "Ctrl+V", "paste"},
       {.run = [&] { frame.paste(); }, .refusal = without_text}},
      {{0, edit}},
      {{18, edit, "&Undo", "Ctrl+Z", "undo"},
       {.run = [&] { frame.undo(); },
        .refusal = unless([&] { return frame.history().can_undo(); }, "There is nothing to undo."),
        .object = [&] { return frame.history().undo_name(); }}},
      {{19, edit, "&Redo", "Ctrl+Y; Ctrl+Shift+Z", "redo"},
       {.run = [&] { frame.redo(); },
        .refusal = unless([&] { return frame.history().can_redo(); }, "There is nothing to redo."),
        .object = [&] { return frame.history().redo_name(); }}},
      {{0, edit}},
      {{20, edit, "D&escription"}, {.run = [&] { frame.sheets().describe(); }}},
      {{0, edit}},
  };
}

/// The columns of the sheets; the menu stays open while they are ticked.
Rows column_commands(SheetCommands& sheets) {
  constexpr std::array captions = {"Data &X",      "Data &Y",       "&Failures",
                                   "&Suspensions", "Failure &Mode", "&Comments"};
  Rows rows;
  for (int column = sheet_column::x; column < sheet_column::count; ++column)
    rows.push_back(
        {{20 + column, columns, captions[static_cast<std::size_t>(column) - 1]},
         {.run = [&sheets, column] { sheets.toggle_column(column); },
          .refusal =
              unless([&sheets, column] { return !sheets.shows(column) || sheets.may_hide(column); },
                     "The last column that is shown stays."),
          .checked = [&sheets, column] { return sheets.shows(column); }}});
  rows.push_back({{27, columns, "(Close &View Menu)"}, {.run = [] {}}});
  return rows;
}

/// What makes the effects of commands on a sheet.
auto effects_on(SheetCommands& sheets) {
  return [&sheets](const char* name, void (*run)(SheetCommands&), const Reason& refusal) {
    return CommandEffect{.name = name,
                         .run = [&sheets, run] { run(sheets); },
                         .refusal = refusal,
                         .reach = CommandReach::sheet};
  };
}

Reason without_sheet(SheetCommands& sheets) {
  return unless([&] { return sheets.any(); }, "Bring a data sheet to the front first.");
}

/// Those of the rows of a sheet, with keys that it hears.
Rows sheet_commands(SheetCommands& sheets) {
  const Reason no_sheet = without_sheet(sheets);
  const Reason no_rows =
      unless([&] { return sheets.has_rows(); }, "Bring a data sheet with rows to the front first.");
  const auto act = effects_on(sheets);
  CommandEffect leave_out = act(
      "LeaveOut", [](SheetCommands& to) { to.toggle_left_out(); }, no_rows);
  leave_out.checked = [&sheets] { return sheets.is_left_out(); };
  return {
      {{164, edit, "Leave &Out of Analysis", "Ctrl+E"}, leave_out},
      {{160, edit, "&Insert Rows", "Ctrl++; Ctrl+="},
       act(
           "InsertRows", [](SheetCommands& to) { to.insert_rows(); }, no_sheet)},
      {{161, edit, "De&lete Rows", "Ctrl+-"},
       act(
           "DeleteRows", [](SheetCommands& to) { to.delete_rows(); }, no_rows)},
      {{162, edit, "Fill &Down", "Ctrl+D"},
       act(
           "FillDown", [](SheetCommands& to) { to.fill_down(); }, no_rows)},
      {{163, edit, "Clear Cell&s", "Del"},
       act(
           "ClearCells", [](SheetCommands& to) { to.clear_cells(); }, no_rows)},
      {{165, edit, "Sort Ascendin&g"},
       act(
           "SortUp", [](SheetCommands& to) { to.sort(SortOrder::ascending); }, no_rows)},
      {{166, edit, "Sort Desce&nding"},
       act(
           "SortDown", [](SheetCommands& to) { to.sort(SortOrder::descending); }, no_rows)},
      {{0, edit}},
  };
}

Rows sheet_search_commands(SheetCommands& sheets) {
  const Reason no_sheet = without_sheet(sheets);
  const auto act = effects_on(sheets);
  return {
      {{167, edit, "&Find...", "Ctrl+F"},
       act(
           "FindCell", [](SheetCommands& to) { to.open_find(); }, no_sheet)},
      {{168, edit, "Find Ne&xt", "F3"},
       act(
           "FindNext", [](SheetCommands& to) { to.find_again(SearchWay::forward); }, no_sheet)},
      {{169, edit, "Find Previous", "Shift+F3"},
       act(
           "FindPrevious", [](SheetCommands& to) { to.find_again(SearchWay::backward); },
           no_sheet)},
      {{0, edit}},
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
      {{28, options, "&Sample", "", "sample"}, {.run = [&] { frame.draw_samples(); }}},
      {{29, options, "&Calculator", "", "calculator"}, {.run = [&] { frame.start_calculator(); }}},
      {{30, options, "&Precise Reading"},
       {.run = [&] { charts.toggle_precise_reading(); }, .refusal = no_chart, .checked = precise}},
      {{31, options, "&Report", "Ctrl+R"}, {.run = [&] { frame.toggle_report(); }}},
      {{32, options, "&Label/Style", "", "format"},
       {.run =
            [&] {
              frame.documents().log_is_in_front() ? frame.documents().choose_log_font()
                                                  : charts.format();
            },
        .refusal = no_chart}},
      {{33, options, "&Zoom", "", "zoom"},
       {.run = [&] { charts.toggle_zoom(); }, .refusal = no_chart, .checked = zooms}},
      {{102, options, "S&ub-Populations"},
       {.name = "SubPopulations",
        .run = [&] { charts.toggle_sub_populations(); },
        .refusal = no_chart,
        .checked = shows_parts}},
      {{141, options, "Suspensions in mi&xture likelihood"},
       {.name = "MixtureSuspensions",
        .run = [&] { frame.toggle_censored(); },
        .checked = [&] { return frame.panel().censored; }}},
  };
}

Rows reading_commands(ChartCommands& charts) {
  const auto on_point =
      of_chart(charts, [](ChartWindow& chart) { return chart.chosen_point().has_value(); });
  return {
      {{240, options, "Read &Value...", "Ctrl+G"},
       {.name = "ReadValue",
        .run = [&] { charts.read_value(); },
        .refusal = without_chart(charts)}},
      {{241, "", "Show Ro&w in Sheet"},
       {.name = "ShowRow",
        .run = [&] { charts.show_row(); },
        .refusal = unless(on_point, "Click a data point of the chart first.")}},
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
      {{116, marks, "A&rrow"}, adds("AddArrow", MarkKind::arrow)},
      {{117, marks, "S&ymbol"}, adds("AddSymbol", MarkKind::symbol)},
  };
}

/// Those that no menu shows: a number of old, and what the print button offers.
Rows unlisted_commands(MainWindow& frame) {
  return {
      {{17, "", "New Data"}, {.run = [&] { frame.add_data_and_fit(); }}},
      {{command::export_file, "", "&Export to File"},
       {.name = "ExportFile",
        .run =
            [&] {
              frame.documents().log_is_in_front() ? frame.documents().export_log()
                                                  : frame.charts().save();
            },
        .refusal = unless(
            [&] {
              const auto front = frame.windows().active_block();
              return front == Block::chart || front == Block::log;
            },
            "Bring a chart or the log to the front first.")}},
  };
}

/// Those of the log's pop-up alone. The log itself hears the keys of its search.
Rows log_commands(DocumentCommands& documents) {
  return {
      {{command::find_in_log, "", "&Find..."},
       {.name = "FindInLog", .run = [&] { documents.find_in_log(); }}},
      {{command::log_font, "", "F&ont..."},
       {.name = "LogFont", .run = [&] { documents.choose_log_font(); }}},
      {{command::export_log, "", "&Export to File..."},
       {.name = "ExportLog", .run = [&] { documents.export_log(); }}},
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
      {{122, "", "&Delete Fit", "Del", "delete"},
       {.name = "DeleteFit",
        .run = [&] { frame.delete_fit(); },
        .refusal = unless([&] { return frame.has_fit(); }, "There is no fit to delete."),
        .reach = CommandReach::fits}},
      {{123, "", "Re&name", "F2"},
       {.name = "Rename",
        .run = [&] { frame.tree().rename(); },
        .refusal = unless(can_rename, "Choose a data set or its fits in the project tree first."),
        .reach = CommandReach::tree}},
      {{124, "", "&Delete", "Del", "delete"},
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
      {{101, analysis, "&Calculate Fit", "Alt+C", "calculate"},
       {.name = "Calculate", .run = [&] { frame.calculate(); }}},
      {{34, analysis, "&Distribution Analysis", "", "compare"},
       {.run = [&] { frame.compare_models(); }}},
      {{49, analysis, "&3 Parameter"}, {.run = [&] { frame.fit_as(model_code::weibull3); }}},
      {{50, analysis, "&Weibayes"}, {.run = [&] { frame.fit_as(model_code::weibayes); }}},
      {{51, "", "&Method"}, {.name = "MethodMenu", .run = [&] { frame.open_method_menu(); }}},
      {{35, "&Tools", "&Fit Wizard", "", "wizard"}, {.run = [&] { frame.open_wizard(); }}},
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
      {{191, analysis, "Copy L&ife Table", "Ctrl+Shift+B"},
       {.name = "CopyLife",
        .run = [&] { frame.copy_life(); },
        .refusal = [&] { return frame.why_no_life_copy(); }}},
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
      {{40, window, "&Arrange Icons"},
       {.run = [&] { windows.arrange_icons(); },
        .refusal = unless([&] { return windows.any_icon(); }, "No window is minimised.")}},
      {{41, window, "C&lose All"}, {.run = [&] { windows.hide_all(); }, .refusal = none_shown}},
      {{43, "&Window|&RestoreForm", "&Undelete", "Ctrl+U"},
       {.run = [&] { windows.restore_all(); },
        .refusal = unless([&] { return windows.any_binned(); }, "No window is closed.")}},
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
      {{150, "", "Pop-Up Menu", "Shift+F10"},
       {.name = "PopUpMenu", .run = [&] { frame.open_pop_up(); }}},
      {{136, window, "&Project Tree", "Ctrl+0", "tavlo"}, {.run = [&] { frame.show_tree(); }}},
  };
}

Rows help_commands(MainWindow& frame) {
  return {
      {{44, help, "&Index", "", "help"}, {.run = [&] { frame.show_help("contents"); }}},
      {{142, help, "Help on This &Window", "F1"},
       {.name = "HelpOnWindow", .run = [&] { frame.help_on_window(); }}},
      {{45, help, "&QuickHelp (1 page)"}, {.run = [&] { frame.show_help("quick"); }}},
      {{143, help, "&Keyboard"},
       {.name = "HelpOnKeys", .run = [&] { frame.show_help("keyboard"); }}},
      {{46, help, "&About", "", "tavlo"}, {.run = [&] { frame.show_about(); }}},
      {{47, "&Help|&Other Tools", "QM &Weibull"},
       {.run = [&] { frame.start_sibling("quellw.exe"); }}},
      {{48, "&Help|&Other Tools", "QM &Visual"},
       {.run = [&] { frame.start_sibling("quellv.exe"); }}},
  };
}

}  // namespace

std::vector<Command> all_commands(MainWindow& frame) {
  Rows all;
  for (Rows& rows :
       std::array{file_commands(frame), edit_commands(frame), sheet_commands(frame.sheets()),
                  sheet_search_commands(frame.sheets()), column_commands(frame.sheets()),
                  option_commands(frame), reading_commands(frame.charts()),
                  mark_commands(frame.charts()), chart_commands(frame.charts()),
                  log_commands(frame.documents()), record_commands(frame), unlisted_commands(frame),
                  choice_commands(frame), analysis_commands(frame), life_commands(frame),
                  layout_commands(frame.windows()), window_commands(frame), help_commands(frame)})
    all.insert(all.end(), std::make_move_iterator(rows.begin()),
               std::make_move_iterator(rows.end()));
  return all;
}

std::span<const int> sheet_pop_up() {
  static constexpr std::array ids = {command::cut,
                                     command::copy,
                                     command::copy_with_headings,
                                     command::paste,
                                     command::clear_cells,
                                     0,
                                     command::leave_out,
                                     0,
                                     command::insert_rows,
                                     command::delete_rows,
                                     command::fill_down,
                                     command::sort_ascending,
                                     command::sort_descending,
                                     0,
                                     command::select_all,
                                     command::find_cell,
                                     command::find_next,
                                     command::find_previous};
  return ids;
}

std::span<const int> heading_pop_up() {
  static constexpr std::array ids = {command::sort_ascending,
                                     command::sort_descending,
                                     0,
                                     command::leave_out,
                                     command::insert_rows,
                                     command::delete_rows,
                                     command::fill_down,
                                     0,
                                     command::copy,
                                     command::copy_with_headings,
                                     command::clear_cells};
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
  static constexpr std::array ids = {command::undo,
                                     command::redo,
                                     0,
                                     command::cut,
                                     command::copy,
                                     command::paste,
                                     command::select_all,
                                     0,
                                     command::find_in_log,
                                     command::log_font,
                                     0,
                                     command::export_log,
                                     command::print,
                                     command::print_preview};
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
                                     command::read_value,
                                     command::show_row,
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
