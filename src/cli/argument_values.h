// Argument values: the texts behind options, turned into models, numbers and
// sizes. A wrong one is a CLI::ValidationError in the user's words.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cli/arguments.h"

namespace tavlo::cli {

/// "W2P,W3T" or model codes.
std::vector<const Model*> parse_models(const std::string& text);

/// "rr,mle".
std::vector<const Method*> parse_methods(const std::string& text);

/// "W2P/mle" for every file, "2:W2P/mle" for the second.
struct FileFit {
  std::size_t file = 0;  ///< from 1; 0 is every file
  FitChoice choice;
};
FileFit parse_file_fit(const std::string& text);

/// "1,10,50": percents between 0 and 100, given back as fractions.
std::vector<double> parse_percents(const std::string& text);

/// The fraction of a percentage; `text` is how the user wrote it.
double parse_fraction(double percent, const std::string& text);

/// "2026-11-22", a day of the calendar.
DateTime parse_date(const std::string& text);

/// "A4" or "Letter", in any case.
PaperSize parse_paper(const std::string& text);

/// "benard" or "exact".
RankKind parse_rank_kind(const std::string& text);

/// The slope of a Weibayes, as is_slope allows it.
double parse_slope(const std::string& text);

/// A Weibayes has no slope of its own, and no other model takes one.
enum class SlopeFault { none, missing, not_wanted };
SlopeFault slope_fault(const FitQuestions& questions);
void require_slope_of_weibayes(const FitQuestions& questions);

/// "x=Hours,status=Failed?"; an empty name is no column.
std::vector<ColumnChoice> parse_columns(const std::string& text);

/// "yes,1,F": none of them empty.
std::vector<std::string> parse_words(const std::string& text);

/// "comma" or "point".
DecimalSign parse_decimal_sign(const std::string& text);

/// The number of a data set, from 1.
int parse_set(const std::string& text);

/// Number of lines at work in a batch.
int parse_jobs(const std::string& text);

/// "500,1e3".
std::vector<double> parse_numbers(const std::string& text);

/// "1000x600".
PixelSize parse_size(const std::string& text);

/// Pixels an inch, "300".
int parse_density(const std::string& text);

/// The name of a factory chart type, written in any capitals or small letters.
std::string parse_chart_type(const std::string& text);

/// Refuses an empty heading, as an unset variable of the shell gives it.
void require_heading(const std::string& option, const std::string& heading);

/// Refuses a picture whose extension names no format that can be written.
void require_report_name(const std::string& path);
void require_picture_name(const std::string& path);
void require_log_name(const std::string& path);

/// Extension of a file name in lower case, with its full stop; may be empty.
std::string extension(const std::string& path);

}  // namespace tavlo::cli
