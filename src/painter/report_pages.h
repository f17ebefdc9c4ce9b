// Report pages: a report on paper: a PDF with the charts as vector graphics, the title and the
// number on each page, and tables whose headings are repeated where they go on.
#pragma once

#include <QByteArray>
#include <string>

#include "chart/report/report.h"

namespace tavlo {

/// The whole file. The same report gives the same bytes: the file says that it was made on the
/// date of the report. Empty when it can't be made.
QByteArray pdf_report(const Report& report, PaperSize paper);

/// The file of a format, "pdf" or "html"; empty for another one.
std::string report_file(const Report& report, const std::string& format, PaperSize paper);

}  // namespace tavlo
