#include "workspace/frame/point_link.h"

namespace tavlo {

PointLink::PointLink(Program& program, ProjectWindows& windows)
    : program_(program), windows_(windows) {
  connect(&windows, &ProjectWindows::made, this, &PointLink::connect_view);
}

void PointLink::connect_view(Block block, int index) {
  if (block == Block::chart)
    connect(&windows_.chart(index), &ChartWindow::point_chosen, this, &PointLink::select_row);
  if (block == Block::sheet)
    connect(&windows_.sheet(index), &SheetView::current_row_changed, this,
            [this, index](int row) { ring(index, row); });
}

/// The place of its data in the project; 0 when they have gone or its row was changed.
int PointLink::data_of(const DataPoint& point) {
  const Project& project = program_.session.project;
  const int index = find_data(project, point.data_id);
  if (index > 0 && is_as_read(project.data(index), point.row)) return index;
  program_.session.ports.views.status(rows_have_changed);
  return 0;
}

// The sheet stays where it is: the person works on the chart.
void PointLink::select_row(const DataPoint& point) {
  const int index = data_of(point);
  if (index == 0) return;
  windows_.sheet(index).select_row(point.row);
  ring(index, point.row);
}

void PointLink::show_row(const DataPoint& point) {
  select_row(point);
  if (const int index = find_data(program_.session.project, point.data_id))
    windows_.bring_to_front({Block::sheet, index});
}

void PointLink::ring(int data_index, int row) {
  const Project& project = program_.session.project;
  if (data_index > project.data.bound()) return;
  const DataSet& data = project.data(data_index);
  const int ringed = is_as_read(data, row) ? row : 0;
  for (int i = 1; i <= project.charts.bound(); ++i)
    if (windows_.child({Block::chart, i})) windows_.chart(i).ring_row(data.UniqueId, ringed);
}

}  // namespace tavlo
