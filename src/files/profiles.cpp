#include "files/profiles.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "files/chart_section.h"
#include "project/chart_looks.h"
#include "project/code_page.h"
#include "project/size_limits.h"

namespace tavlo {

namespace {

constexpr const char* profile_filter = "Profile (*.vpr)|*.vpr|All Files (*.*)|*.*";
constexpr const char* profile_extension = ".vpr";
constexpr const char* format_title = "Chart Format";
constexpr const char* load_title = "LOAD a chart profile";
constexpr const char* save_title = "SAVE a chart profile";

void tell(Session& session, const char* title, std::string text) {
  session.ports.prompts.show({title, std::move(text), BoxIcon::exclamation, BoxButtons::ok});
}

bool ask(Session& session, std::string text) {
  const Box doubt = {save_title, std::move(text), BoxIcon::question, BoxButtons::ok_cancel};
  return session.ports.prompts.show(doubt) == BoxAnswer::ok;
}

/// A name without an extension gets the usual one. The file dialog has asked
/// about the name as it was typed, so a file of the longer name is asked for here.
std::optional<std::string> whole_name(Session& session, const std::string& typed) {
  const std::size_t mark = typed.find_last_of("./\\");
  if (mark != std::string::npos && typed[mark] == '.') return typed;
  std::string path = typed + profile_extension;
  const bool is_taken = session.ports.file_system.exists(path);
  if (is_taken && !ask(session, path + "\nexists already. Replace it?")) return std::nullopt;
  return path;
}

/// Characters that the file can't hold are lost only with the user's leave.
bool may_lose(Session& session, const std::string& lost) {
  constexpr std::size_t most_shown = 200;
  return lost.empty() ||
         ask(session, "The file can't hold these characters, \"?\" will stand for each:\n" +
                          std::string(utf8_front(lost, most_shown)));
}

bool write_profile(Session& session, const std::string& path, const Chart& chart) {
  ProjectWriter writer;
  if (!RW_Chart(session.errors, writer, chart) || !may_lose(session, writer.lost())) return false;
  const FileResult written = session.ports.file_system.write_whole(path, writer.bytes());
  if (!written) tell(session, "Unsuccessful file save", path + "\n" + written.message);
  return static_cast<bool>(written);
}

bool are_limits(const ChartAxis& axis) {
  return std::isfinite(axis.Min) && std::isfinite(axis.Max) && axis.Min < axis.Max;
}

bool has_size(const ChartItem& box) { return box.Width >= 1 && box.Height >= 1; }

bool has_font(const ChartItem& item) { return std::isfinite(item.FontSize) && item.FontSize > 0; }

}  // namespace

std::optional<std::string> apply_profile_file(FileSystem& files, const std::string& path,
                                              Chart& chart) {
  std::string bytes;
  if (const FileResult read = files.read_whole(path, largest_data_file, bytes); !read)
    return path + ": " + read.message;
  ProjectReader reader(bytes);
  Chart profile = chart;
  if (const auto fault = read_chart(reader, profile))
    return path + ":" + std::to_string(fault->line) + ": " + fault->what;
  apply_profile(chart, profile);
  return std::nullopt;
}

bool load_profile(Session& session, Chart& chart) {
  const auto path = session.ports.prompts.choose_file({load_title, profile_filter, 1, false});
  if (!path || path->empty()) return false;
  std::string bytes;
  const FileResult read = session.ports.file_system.read_whole(*path, largest_data_file, bytes);
  if (!read) {
    tell(session, "Unsuccessful file load", *path + "\n" + read.message);
    return false;
  }
  ProjectReader reader(bytes);
  Chart profile = chart;
  if (!RW_Chart(session.errors, reader, profile)) return false;
  apply_profile(chart, profile);
  return true;
}

bool save_profile(Session& session, const Chart& chart) {
  if (!has_valid_looks(chart)) {
    tell(session, format_title, "Please Check for invalid data.  Then try again.");
    return false;
  }
  const auto name = session.ports.prompts.choose_file({save_title, profile_filter, 1, true});
  if (!name || name->empty()) return false;
  const auto path = whole_name(session, *name);
  return path && write_profile(session, *path, chart);
}

bool has_valid_looks(const Chart& chart) {
  return are_limits(chart.Axes(0)) && are_limits(chart.Axes(1)) &&
         has_size(chart.Boxes(chart_item::chart_box)) &&
         has_size(chart.Boxes(chart_item::plot_box)) &&
         std::all_of(chart.Boxes.begin(), chart.Boxes.end(), has_font);
}

}  // namespace tavlo
