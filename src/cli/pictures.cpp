#include "cli/pictures.h"

#include <dlfcn.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>

#include "chart/auto_scale.h"
#include "chart/make_chart.h"
#include "cli/cli_ports.h"
#include "painter/picture_door.h"

namespace tavlo::cli {

namespace {

/// The folder of the running program, with a slash at its end.
std::string program_folder() {
  std::string path(PATH_MAX, '\0');
  const ssize_t size = ::readlink("/proc/self/exe", path.data(), path.size());
  path.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
  return path.substr(0, path.rfind('/') + 1);
}

/// The painting function of the module; null with words when it can't be had.
/// The module stays loaded until the program ends.
WritePicture load_painter(std::string& error) {
  // Remarks of the toolkit on its surroundings are no messages of this program.
  ::setenv("QT_LOGGING_RULES", "*.debug=false;*.info=false;*.warning=false", 0);
  for (const char* const place : {"", "../lib/tavlo/", "../lib/"}) {
    const std::string module = program_folder() + place + picture_module;
    if (::access(module.c_str(), F_OK) != 0) continue;
    void* const loaded = ::dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const symbol = loaded ? ::dlsym(loaded, write_picture_symbol) : nullptr;
    if (symbol) return reinterpret_cast<WritePicture>(symbol);
    error = std::string("pictures can't be drawn: ") + ::dlerror();
    return nullptr;
  }
  error = std::string("pictures can't be drawn: ") + picture_module + " is not installed";
  return nullptr;
}

FileResult write_picture(WritePicture paint, Session& session, const DrawingRecord& drawing,
                         const std::string& path, const PixelSize& size) {
  std::string bytes;
  std::string error;
  const std::string format = extension(path).substr(1);
  if (!paint(drawing, format.c_str(), size.width, size.height, bytes, error))
    return {FileFault::device_error, error};
  return session.ports.file_system.write_whole(path, bytes);
}

/// Row `row` of the plot sets shows fit `slot`; rows behind the first have no
/// symbols, the data stand there once.
void show_fit(Session& session, Chart& chart, int row, int slot) {
  ChartMarker& marker = chart.Markers(row);
  marker.DataId = session.gData(1).UniqueId;
  marker.FitId = session.gFit(1).UniqueId;
  marker.FitNumber = slot;
  if (row == 1) return;
  marker.SymbolStyle = pen_style::none;
  marker.SymbolFill = 0;
}

void use_paper_of(Chart& chart, const Model& model) {
  chart.Axes(0).ScaleType = static_cast<std::int16_t>(model.x_scale());
  chart.Axes(1).ScaleType = static_cast<std::int16_t>(model.y_scale());
}

}  // namespace

void show_on_chart(Session& session, const std::vector<FitOutcome>& outcomes,
                   const std::string& title) {
  Chart& chart = session.gChart(1);
  chart.Boxes(chart_item::main_title).Text2 = title;
  int row = 0;
  for (const FitOutcome& outcome : outcomes) {
    if (outcome.slot == 0) continue;
    if (row == chart.nMarkers) {
      complain("warning: the chart shows only the first " + std::to_string(row) + " fits");
      break;
    }
    if (row == 0) use_paper_of(chart, *outcome.choice.model);
    show_fit(session, chart, ++row, outcome.slot);
  }
}

std::optional<std::string> write_pictures(Session& session, const std::vector<std::string>& paths,
                                          const PixelSize& size) {
  std::string error;
  const WritePicture paint = load_painter(error);
  if (!paint) return paths.front() + ": " + error;
  SetAutoScale(session, session.gChart(1));
  const DrawingRecord drawing = fl_Make_WMF(session, 1);
  for (const std::string& path : paths)
    if (const FileResult written = write_picture(paint, session, drawing, path, size); !written)
      return path + ": " + written.message;
  return std::nullopt;
}

}  // namespace tavlo::cli
