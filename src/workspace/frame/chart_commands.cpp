#include "workspace/frame/chart_commands.h"

#include "workspace/chart/chart_files.h"
#include "workspace/chart/chart_menu.h"
#include "workspace/chart/look_choice.h"
#include "workspace/format/format_dialog.h"
#include "workspace/frame/command_table.h"

namespace tavlo {

ChartCommands::ChartCommands(Program& program, ProjectWindows& windows, QWidget& frame)
    : program_(program), windows_(windows), frame_(frame) {}

void ChartCommands::set_up_menus(Menus& menus) {
  QMenu& options = menus.menu(QStringLiteral("&Options"));
  sub_populations_ = options.addAction(tr("S&ub-Populations"));
  sub_populations_->setObjectName(QStringLiteral("mnu_SubPopulations"));
  connect(sub_populations_, &QAction::triggered, this,
          [this](bool on) { program_.commands.run([&] { chart().set_sub_populations(on); }); });
  zoom_ = menus.action(command::zoom);
  precise_reading_ = menus.action(command::precise_reading);
  copy_ = menus.action(command::copy);
  for (QAction* entry : {zoom_, precise_reading_, sub_populations_}) entry->setCheckable(true);
  connect(&windows_, &QMdiArea::subWindowActivated, this, &ChartCommands::show_state);

  // The command of that number does nothing, by definition; its entry leads here.
  QAction* preview = menus.action(command::print_preview);
  preview->setEnabled(true);
  connect(preview, &QAction::triggered, this, program_.commands.slot([this] { this->preview(); }));
}

void ChartCommands::attach(ChartWindow& chart) {
  auto* looks = new LookChoice(chart, program_.commands);
  windows_.add_bar(chart, looks->make_bar(&chart));
  new ChartMenu(chart, program_.commands,
                {zoom_, precise_reading_, sub_populations_, copy_, &looks->menu(),
                 [this, &chart] {
                   const auto& place = chart.menu_place();
                   place ? format(chart, *place) : format();
                 },
                 [this, &chart] { save_chart(program_.session, chart.drawing()); },
                 [this] { print(); }, [this] { preview(); }});
  connect(&chart, &ChartWindow::state_changed, this, &ChartCommands::show_state);
  connect(&chart, &ChartWindow::format_wanted, this,
          [this, &chart](drawing::Place place) { format(chart, place); });
}

ChartWindow& ChartCommands::chart() { return windows_.chart(windows_.current_chart()); }

void ChartCommands::toggle_zoom() {
  windows_.bring_to_front(chart());
  chart().set_zooming(chart().tool() != ChartTool::zoom);
}

void ChartCommands::toggle_precise_reading() {
  windows_.bring_to_front(chart());
  chart().set_precise(!chart().is_precise());
}

void ChartCommands::format() {
  FormatDialog::run(program_.session, program_.commands, chart().index(), ChartPart::boxes,
                    &frame_);
}

void ChartCommands::format(ChartWindow& chart, drawing::Place place) {
  constexpr double reach = 8;  // pixels
  const ChartStage& stage = chart.stage();
  const ChartPart part =
      chart_part_at(program_.session, stage.chart(), stage.drawing(), place, stage.units(reach));
  FormatDialog::run(program_.session, program_.commands, chart.index(), part, &frame_);
}

PrintJob ChartCommands::job() {
  const QMdiSubWindow* active = windows_.activeSubWindow();
  const QString title = active ? active->windowTitle() : QString();
  if (active && active->widget() == &windows_.log())
    return {title, false, [this](QPrinter& printer) {
              windows_.log().print(&printer);
              return true;
            }};
  if (active && active->widget() != &chart()) return window_job(title, *active->widget());
  return chart_job(title, chart().drawing());
}

void ChartCommands::print() {
  if (!printing_.print(&frame_, job()))
    program_.prompts.show({"Print", "The printer can't be used, or the file can't be written.",
                           BoxIcon::exclamation, BoxButtons::ok});
}

void ChartCommands::preview() { printing_.preview(&frame_, job()); }

void ChartCommands::set_up_printer() { printing_.set_up(&frame_); }

void ChartCommands::show_state() {
  if (windows_.current_chart() == 0) return;
  zoom_->setChecked(chart().tool() == ChartTool::zoom);
  precise_reading_->setChecked(chart().is_precise());
  sub_populations_->setChecked(chart().stage().chart().SubPopulations);
}

}  // namespace tavlo
