#include "cli/pictures.h"

#include <dlfcn.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>

#include "chart/compose/auto_scale.h"
#include "chart/compose/make_chart.h"
#include "chart/metafile/chart_exits.h"
#include "cli/output.h"
#include "painter/picture_door.h"
#include "project/plot_rows.h"

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

FileResult not_made(const std::string& why) { return {FileFault::device_error, why}; }

/// A metafile comes from the core; the other formats need the painter.
FileResult make_picture(Session& session, const DrawingRecord& drawing, const std::string& type,
                        const PixelSize& size, std::string& bytes) {
  if (drawing.width <= 0) return not_made("the chart is empty");
  if (type == ".wmf") {
    const auto metafile = metafile_to_save(session, drawing);
    bytes = metafile.value_or("");
    return metafile ? FileResult() : not_made("the chart was not saved");
  }
  std::string error;
  const WritePicture paint = load_painter(error);
  const PictureSize wanted{size.width, size.height, size.dots_per_inch};
  const bool made = paint && paint(drawing, type.c_str() + 1, wanted, bytes, error);
  return made ? FileResult() : not_made(error);
}

FileResult write_picture(Session& session, const DrawingRecord& drawing, const std::string& path,
                         const PixelSize& size) {
  std::string bytes;
  const FileResult made = make_picture(session, drawing, extension(path), size, bytes);
  return made ? session.ports.file_system.write_whole(path, bytes) : made;
}

/// A further plot set for fit `slot`. It has no symbols, the data stand on the chart
/// once; the looks have ten colours, dashes tell the next ten lines from them.
void show_further_fit(Session& session, Chart& chart, int slot) {
  constexpr int colours = 10;
  constexpr int styles = 5;
  const int row =
      add_plot_set(chart, session.project.data(1).UniqueId, session.project.fits(1).UniqueId, slot);
  ChartMarker& marker = chart.Markers(row);
  marker.Label = chart.Markers(1).Label;
  marker.SymbolStyle = pen_style::none;
  marker.SymbolFill = 0;
  marker.LineStyle = (row - 1) / colours % styles;
}

/// A model without axes of its own is drawn on the paper that the chart has.
void use_paper_of(Chart& chart, const Model& model) {
  if (model.y_scale() == 0) return;
  chart.Axes(0).ScaleType = static_cast<std::int16_t>(model.x_scale());
  chart.Axes(1).ScaleType = static_cast<std::int16_t>(model.y_scale());
}

}  // namespace

void show_on_chart(Session& session, const std::string& title, Paper paper) {
  Chart& chart = session.project.charts(1);
  chart.Boxes(chart_item::main_title).Text2 = title;
  chart.Markers(1).Label = title;
  chart.Markers(1).DataId = session.project.data(1).UniqueId;
  chart.Markers(1).FitId = session.project.fits(1).UniqueId;
  const FitSet& fits = session.project.fits(1);
  if (fits.nFits < 1) return;
  chart.Markers(1).FitNumber = 1;
  const Model* const first = find_model(fits.Fits(1).ModelCode);
  if (first && paper == Paper::of_first_fit) use_paper_of(chart, *first);
  for (int slot = 2; slot <= fits.nFits; ++slot) show_further_fit(session, chart, slot);
}

std::optional<std::string> write_pictures(Session& session, const std::vector<std::string>& paths,
                                          const PixelSize& size) {
  SetAutoScale(session, session.project.charts(1));
  const DrawingRecord drawing = fl_Make_WMF(session, 1);
  for (const std::string& path : paths)
    if (const FileResult written = write_picture(session, drawing, path, size); !written)
      return path + ": " + written.message;
  return std::nullopt;
}

}  // namespace tavlo::cli
