#include "workspace/frame/document_commands.h"

#include "actions/clipboard_text.h"
#include "actions/read_rows.h"
#include "actions/recent_files.h"
#include "actions/report.h"
#include "actions/work.h"
#include "painter/report_pages.h"
#include "project/fit_records.h"
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

/// A report tells of the rows that are seen. One that can't be read is told in a box.
bool DocumentCommands::reads_all_rows() const {
  Session& session = program_.session;
  for (int i = 1; i <= session.project.data.bound(); ++i) {
    const bool has_news =
        !session.project.data(i).is_read() && session.gDataForm(i)->last_row() > 0;
    if (has_news && !read_rows(session, i)) return false;
  }
  return true;
}

// What is out of date is said in the report; its maker is to know it first.
bool DocumentCommands::wants_old_fits() const {
  const Project& project = program_.session.project;
  int old = 0;
  for (int i = 1; i <= project.fits.bound(); ++i)
    for (int slot = 1; slot <= project.fits(i).nFits; ++slot)
      old += is_out_of_date(project.fits(i).Fits(slot), project.data(data_of_fits(project, i)));
  if (old == 0) return true;
  const std::string fits = old == 1 ? "A fit is" : std::to_string(old) + " fits are";
  return program_.prompts.show({"Export Report",
                                fits + " out of date: the report will have no numbers of " +
                                    (old == 1 ? "it" : "them") +
                                    ".\nExport it all the same? With No you can press "
                                    "Calculate Fit first.",
                                BoxIcon::question, BoxButtons::yes_no}) == BoxAnswer::yes;
}

void DocumentCommands::export_report() {
  if (!reads_all_rows() || !wants_old_fits()) return;
  Session& session = program_.session;
  const std::string title = file_title(project_title(session));
  const ExportRequest request{"Export Report", title + " report",
                              "PDF document (*.pdf)|*.pdf|Web page (*.html)|*.html", "pdf",
                              "report"};
  export_file(session, request, [&](const std::string& extension) {
    ReportRequest asked{title, bare_file_name(present_work(session).path)};
    asked.b_life.clear();
    for (const double percent : session.life_questions.percents)
      asked.b_life.push_back(percent / 100);
    asked.times = session.life_questions.times;
    const Report report = make_report(session, asked);
    return report_file(report, extension == "htm" ? "html" : extension,
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
