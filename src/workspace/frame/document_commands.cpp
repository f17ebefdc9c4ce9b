#include "workspace/frame/document_commands.h"

#include "actions/clipboard_text.h"
#include "actions/project_report.h"
#include "actions/recent_files.h"
#include "actions/work.h"
#include "painter/report_pages.h"
#include "project/html_text.h"
#include "workspace/frame/export_file.h"
#include "workspace/frame/printing.h"

namespace tavlo {

namespace {

std::string log_file(const RichText& log, const std::string& extension, PaperSize paper) {
  if (extension == "rtf") return log.rtf();
  if (extension == "txt") return log.plain();
  if (extension == "html" || extension == "htm") return html_text(log);
  return extension == "pdf" ? pdf_file(text_job(QStringLiteral("Log"), log), paper) : "";
}

}  // namespace

void DocumentCommands::export_report() {
  Session& session = program_.session;
  const ExportRequest request{"Export Report", file_title(project_title(session)) + " report",
                              "PDF document (*.pdf)|*.pdf|Web page (*.html)|*.html", "pdf",
                              "report"};
  export_file(session, request, [&](const std::string& extension) -> std::optional<std::string> {
    const auto report = project_report(session);
    if (!report) return std::nullopt;
    return report_file(*report, extension == "htm" ? "html" : extension,
                       usual_paper(session.ports.host));
  });
}

void DocumentCommands::export_log() {
  Session& session = program_.session;
  windows_.log().end_edit();
  const ExportRequest request{"Export Log", file_title(project_title(session)) + " log",
                              "Rich text (*.rtf)|*.rtf|PDF document (*.pdf)|*.pdf|"
                              "Web page (*.html)|*.html|Text (*.txt)|*.txt",
                              "rtf", "log"};
  export_file(session, request, [&](const std::string& extension) {
    return log_file(session.project.log, extension, usual_paper(session.ports.host));
  });
}

void DocumentCommands::choose_log_font() { windows_.log().choose_font(); }

void DocumentCommands::find_in_log() {
  windows_.bring_to_front({Block::log, 1});
  windows_.log().open_search();
}

void DocumentCommands::cut_from_log() {
  LogWindow& log = windows_.log();
  const ClipboardText selected = log.selected();
  if (selected.plain.empty()) return;
  program_.session.ports.clipboard.set_text(selected);
  log.textCursor().removeSelectedText();
}

void DocumentCommands::paste_into_log() {
  const Ports& ports = program_.session.ports;
  const ClipboardText text = ports.clipboard.rich_text();
  if (text.rtf.empty() && text.plain.empty()) {
    if (ports.clipboard.is_too_long()) ports.prompts.show(too_long_paste());
    return;
  }
  windows_.log().insert(RichText::from_rtf(text.rtf.empty() ? text.plain : text.rtf));
}

}  // namespace tavlo
