#include "cli/pictures.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <functional>

#include "chart/compose/auto_scale.h"
#include "chart/compose/chart_shape.h"
#include "chart/compose/make_chart.h"
#include "chart/metafile/chart_exits.h"
#include "cli/argument_values.h"
#include "cli/output.h"
#include "painter/picture_door.h"

namespace tavlo::cli {

namespace {

/// A function of the painting module; null with words when it can't be had. The module
/// stays loaded until the program ends.
void* load_painter(Host& host, const char* name, std::string& error) {
  // Remarks of the toolkit on its surroundings are no messages of this program.
  ::setenv("QT_LOGGING_RULES", "*.debug=false;*.info=false;*.warning=false", 0);
  for (const char* const place : {"/", "/../lib/tavlo/", "/../lib/"}) {
    const std::string module = host.program_folder() + place + picture_module;
    if (::access(module.c_str(), F_OK) != 0) continue;
    void* const loaded = ::dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const symbol = loaded ? ::dlsym(loaded, name) : nullptr;
    if (symbol) return symbol;
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
  const auto paint =
      reinterpret_cast<WritePicture>(load_painter(session.ports.host, write_picture_symbol, error));
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

/// A metafile has a size of its own.
bool is_metafile(const std::string& path) { return extension(path) == ".wmf"; }

using Draw = DrawingRecord (*)(Session&, int chart_index);

/// Draws chart 1, where one of the paths is wanted, and writes it to each of these.
std::optional<std::string> write_each(Session& session, const std::vector<std::string>& paths,
                                      const std::function<bool(const std::string&)>& is_wanted,
                                      Draw draw, const PixelSize& size) {
  if (std::none_of(paths.begin(), paths.end(), is_wanted)) return std::nullopt;
  const DrawingRecord drawing = draw(session, 1);
  for (const std::string& path : paths) {
    if (!is_wanted(path)) continue;
    if (const FileResult written = write_picture(session, drawing, path, size); !written)
      return path + ": " + written.message;
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> write_pictures(Session& session, const std::vector<std::string>& paths,
                                          const PixelSize& size) {
  SetAutoScale(session, session.project.charts(1));
  if (const auto fault = write_each(session, paths, is_metafile, make_metafile_drawing, size))
    return fault;
  give_shape(session.project.charts(1), size.width, size.height);
  return write_each(session, paths, std::not_fn(is_metafile), fl_Make_WMF, size);
}

std::optional<std::string> write_report(Session& session, const Report& report,
                                        const std::string& path, PaperSize paper) {
  std::string bytes, error;
  const auto write =
      reinterpret_cast<WriteReport>(load_painter(session.ports.host, write_report_symbol, error));
  const char* const format = extension(path) == ".pdf" ? "pdf" : "html";
  if (!write || !write(report, format, paper, bytes, error)) return path + ": " + error;
  const FileResult written = session.ports.file_system.write_whole(path, bytes);
  return written ? std::nullopt : std::optional(path + ": " + written.message);
}

}  // namespace tavlo::cli
