#include "chart/metafile/chart_exits.h"

#include <filesystem>

#include "chart/metafile/metafile_writer.h"
#include "project/code_page.h"

namespace tavlo {

namespace {

/// Nothing was drawn.
bool is_blank(const DrawingRecord& drawing) { return drawing.width == 0 && drawing.height == 0; }

std::string trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string asked_name(Prompts& prompts) {
  const auto name =
      prompts.choose_file({"Enter Name to save", "All (*.*)|*.*|Metafile (*.wmf)|*.wmf|", 2, true});
  return trimmed(name.value_or(""));
}

/// Full stops in the names of folders don't count.
bool has_full_stop(const std::string& path) {
  return std::filesystem::path(path).filename().string().find('.') != std::string::npos;
}

bool may_lose(Prompts& prompts, const std::string& characters) {
  if (characters.empty()) return true;
  constexpr std::size_t longest_list = 200;
  const Box doubt = {"Save chart",
                     "A metafile can't hold these characters, \"?\" will stand for each:\n" +
                         std::string(utf8_front(characters, longest_list)),
                     BoxIcon::question, BoxButtons::ok_cancel};
  return prompts.show(doubt) == BoxAnswer::ok;
}

/// The names of a metafile on the clipboard: of freedesktop.org, of older
/// programs, and of the office suites that came from StarOffice.
constexpr const char* metafile_names[] = {
    "image/wmf", "image/x-wmf", "application/x-openoffice-wmf;windows_formatname=\"Image WMF\""};

}  // namespace

std::optional<std::string> metafile_to_save(Session& session, const DrawingRecord& drawing) {
  using Bytes = std::optional<std::string>;
  return guarded(session.errors, Bytes(), error_words("SaveWMF_Error: "), [&]() -> Bytes {
    std::string lost;
    std::string bytes = metafile_bytes(drawing, &lost);
    if (!may_lose(session.ports.prompts, lost)) return std::nullopt;
    return bytes;
  });
}

bool save_picture_file(const Ports& ports, const std::string& name, const std::string& bytes) {
  const FileResult written = ports.file_system.write_whole(name, bytes);
  if (!written)
    ports.prompts.show({"Unsuccessful file save",
                        "Unable to save file: \n" + name + "\n" + written.message,
                        BoxIcon::exclamation, BoxButtons::ok});
  return static_cast<bool>(written);
}

bool SaveWMF(Session& session, const DrawingRecord& drawing, std::string file_name) {
  if (is_blank(drawing)) return false;
  if (file_name.empty()) file_name = asked_name(session.ports.prompts);
  if (file_name.empty()) return false;
  if (!has_full_stop(file_name)) file_name += ".wmf";
  const auto bytes = metafile_to_save(session, drawing);
  return bytes && save_picture_file(session.ports, file_name, *bytes);
}

void CopyClipChart(Session& session, const DrawingRecord& drawing,
                   const std::vector<ClipboardForm>& painted) {
  const auto tell = [&](const char* text) {
    session.ports.prompts.show({"Tavlo", text, BoxIcon::exclamation, BoxButtons::ok});
  };
  if (is_blank(drawing)) return tell("No Metafile to copy to clipboard");
  guarded(session.errors, error_words("CopyClipChart_Error: "), [&] {
    const std::string metafile = metafile_bytes(drawing);
    std::vector<ClipboardForm> forms;
    for (const char* const name : metafile_names) forms.push_back({name, metafile});
    forms.insert(forms.end(), painted.begin(), painted.end());
    if (!session.ports.clipboard.set_picture(forms)) tell("The clipboard did not take the chart.");
  });
}

}  // namespace tavlo
