#include "workspace/frame/chart_commands.h"

#include "actions/file_faults.h"
#include "actions/recent_files.h"
#include "workspace/chart/look_choice.h"
#include "workspace/format/format_dialog.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

ChartCommands::ChartCommands(Program& program, ProjectWindows& windows, QWidget& frame)
    : program_(program),
      windows_(windows),
      frame_(frame),
      link_(program, windows),
      files_(program.session) {}

QMenu& ChartCommands::attach(ChartWindow& chart) {
  auto* looks = new LookChoice(chart, program_.commands);
  windows_.add_bar(chart, looks->make_bar(&chart));
  connect(&chart, &ChartWindow::format_wanted, this,
          [this, &chart](drawing::Place place) { format(chart, place); });
  return looks->menu();
}

void ChartCommands::bring_to_front() { windows_.bring_to_front({Block::chart, chart().index()}); }

void ChartCommands::toggle_zoom() {
  bring_to_front();
  chart().set_zooming(chart().tool() != ChartTool::zoom);
}

void ChartCommands::toggle_precise_reading() {
  bring_to_front();
  chart().set_precise(!chart().is_precise());
}

void ChartCommands::read_value() {
  bring_to_front();
  chart().read_value();
}

void ChartCommands::show_row() {
  if (const auto& point = chart().chosen_point()) link_.show_row(*point);
}

void ChartCommands::toggle_sub_populations() {
  chart().set_sub_populations(!chart().stage().chart().SubPopulations);
}

void ChartCommands::format_at_menu() {
  const auto& place = chart().menu_place();
  place ? format(chart(), *place) : format();
}

void ChartCommands::save() { files_.save(chart().stage(), &frame_); }

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

namespace {

/// The grid of fits, and below it the answers of the Life panel.
std::unique_ptr<QStandardItemModel> fits_with_life(const QAbstractItemModel& fits,
                                                   const LifeTable& life) {
  auto model = std::make_unique<QStandardItemModel>(fits.rowCount(), fits.columnCount());
  const auto put = [&](int row, int column, const QString& text, Qt::Alignment side) {
    auto* item = new QStandardItem(text);
    item->setTextAlignment(side);
    model->setItem(row, column, item);
  };
  for (int c = 0; c < fits.columnCount(); ++c) {
    model->setHorizontalHeaderItem(
        c, new QStandardItem(fits.headerData(c, Qt::Horizontal).toString()));
    for (int r = 0; r < fits.rowCount(); ++r) {
      const QModelIndex cell = fits.index(r, c);
      put(r, c, cell.data().toString(),
          Qt::Alignment(QFlag(cell.data(Qt::TextAlignmentRole).toInt())));
    }
  }
  if (life.slot == 0) return model;
  int row = fits.rowCount() + 1;  // a blank line between
  put(row++, fit_column::model, QObject::tr("Life, ") + to_qt(life.fit), Qt::AlignLeft);
  for (const LifeAnswer& answer : life.rows) {
    if (answer.answer.empty()) continue;
    put(row, fit_column::model, to_qt(answer.name), Qt::AlignLeft);
    put(row++, fit_column::scale, to_qt(answer.answer), Qt::AlignRight);
  }
  if (!life.remark.empty()) put(row, fit_column::model, to_qt(life.remark), Qt::AlignLeft);
  return model;
}

}  // namespace

PrintJob ChartCommands::job() {
  const QMdiSubWindow* active = windows_.activeSubWindow();
  const QString title = active ? active->windowTitle() : QString();
  const int index = windows_.current_index();
  switch (windows_.active_block()) {
    case Block::sheet:
      return table_job({title, windows_.sheet(index).model(),
                        program_.session.gDataForm(index)->last_row(), true});
    case Block::panel: {
      FitWindow& panel = windows_.panel(index);
      printed_fits_ = fits_with_life(*panel.grid().model(), panel.life().table());
      return table_job({title, printed_fits_.get(), printed_fits_->rowCount(), false});
    }
    case Block::log: return text_job(title, program_.session.project.log);
    case Block::chart: break;
  }
  return chart_job(title, chart().drawing());
}

void ChartCommands::print() {
  const auto write = [this](const std::string& path, const std::string& bytes) {
    const FileResult done = program_.files.write_whole(path, bytes);
    if (!done) return tell_fault(program_.session, path, done);
    program_.views.status("Printed to: " + bare_file_name(path));
  };
  const QString why = printing_.print(&frame_, job(), write);
  if (!why.isEmpty())
    program_.prompts.show({"Print", from_qt(why + QObject::tr(" Nothing was printed.")),
                           BoxIcon::exclamation, BoxButtons::ok});
}

void ChartCommands::preview() { printing_.preview(&frame_, job()); }

void ChartCommands::set_up_printer() {
  if (!printing_.set_up(&frame_))
    program_.prompts.show({"Print Setup",
                           "This computer has no printer to set up.\nPrint writes PDF files.",
                           BoxIcon::information, BoxButtons::ok});
}

}  // namespace tavlo
