#include "workspace/format/format_draft.h"

#include "chart/compose/preview.h"
#include "files/chart_repair.h"
#include "project/chart_types.h"

namespace tavlo {

FormatDraft::FormatDraft(Session& session, UserCommands& commands, int chart_index)
    : session_(session), commands_(commands), index_(chart_index) {
  drop();
  compose();
}

void FormatDraft::edit(const std::function<void(Chart&)>& change) {
  commands_.run([&] {
    change(chart());
    emit edited();
  });
}

void FormatDraft::replace(const std::function<bool(Chart&)>& change) {
  commands_.run([&] {
    if (!change(chart())) return;
    compose();
    emit replaced();
  });
}

void FormatDraft::compose() { drawing_ = preview_chart(session_, chart()); }

void FormatDraft::keep() {
  make_drawable(chart());
  const std::string& type = chart().Profile;
  if (is_chart_look(type) && type != session_.project.charts(index_).Profile)
    session_.settings.ChartType = type;
  session_.project.charts(index_) = chart();
  session_.step = "Chart Format";
}

void FormatDraft::drop() { session_.gChartNow = session_.project.charts(index_); }

}  // namespace tavlo
