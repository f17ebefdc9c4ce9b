// Report: the results of an analysis as a document for somebody else, as a value: what was
// fitted, how long units live, the charts and the data. It holds words and drawings alone, so
// that each format writes the same.
#pragma once

#include <string>
#include <vector>

#include "chart/record/drawing_record.h"
#include "ports/host.h"

namespace tavlo {

struct ReportTable {
  std::string title;                           ///< what it is about; may be empty
  std::vector<std::string> headings;           ///< one a column
  std::vector<bool> is_text;                   ///< a column of words, at the left; others numbers
  std::vector<std::vector<std::string>> rows;  ///< as many cells each as there are headings
  bool has_totals = false;                     ///< the last row sums up
  std::vector<std::string> remarks = {};       ///< sentences below it
};

struct ReportPart {
  std::string title;
  std::vector<ReportTable> tables = {};
  std::vector<std::string> lines = {};  ///< sentences below the tables
  std::vector<DrawingRecord> drawings = {};
};

struct Report {
  std::string title;
  std::vector<std::vector<std::string>> facts;  ///< "File", "pumps.txt"
  std::string date;                             ///< "2026-11-22"
  std::string maker;                            ///< the program and its version
  std::vector<ReportPart> parts;
};

/// Sizes of paper.
enum class PaperSize { a4, letter };

/// The paper of the place that the environment names as "en_US.UTF-8" (LC_ALL, LC_PAPER, LANG):
/// Letter where that is the usual paper, A4 in the rest of the world and where no country is told.
PaperSize usual_paper(Host& host);

}  // namespace tavlo
