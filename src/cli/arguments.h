// Arguments: what the user asked for on the command line, checked and in the
// program's own terms.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "chart/report/report.h"
#include "cli/exit_code.h"
#include "cli/sample_arguments.h"
#include "files/read_options.h"
#include "fit/sample.h"
#include "life/models.h"
#include "ports/clock.h"

namespace tavlo::cli {

/// Size of a picture in pixels, and how many of them are an inch on paper.
struct PixelSize {
  int width = 1000;
  int height = 600;
  int dots_per_inch = 96;
  bool is_given = false;  ///< the sides, by the person
};

/// What every command on data knows.
struct CommonArguments {
  std::vector<std::string> files;  ///< "-" is standard input
  int set = 0;                     ///< the data set of each file, from 1; 0 is all of them
  ReadOptions reading = {.comments = false};
  std::optional<RankKind> ranks;  ///< that were asked for; without, those of each project
  bool json = false;
};

struct FitChoice {
  const Model* model = nullptr;
  const Method* method = nullptr;
};

/// What is asked of every data set.
struct FitQuestions {
  std::vector<FitChoice> choices;
  std::optional<double> slope;  ///< of a Weibayes
  RankKind ranks = RankKind::benard;
  bool censored = false;       ///< suspensions take part in the likelihood of a mixture
  bool strict = false;         ///< doubts are answered with Cancel
  std::vector<double> b_life;  ///< fractions failed
  std::vector<double> at;      ///< times
};

struct FitArguments {
  CommonArguments common;
  FitQuestions questions;  ///< every model with every method
  std::string by;          ///< heading of the column that names the data set of a row; empty: none
  std::vector<std::string> charts;
  bool sub_populations = false;  ///< on the charts
  std::string log;
  std::string project;
  PixelSize size;
};

/// One method for all models; the base of the likelihood-ratio test is among them.
struct CompareArguments {
  CommonArguments common;
  FitQuestions questions;
};

struct RankArguments {
  CommonArguments common;
};

struct ChartArguments {
  CommonArguments common;
  std::vector<FitQuestions> questions;  ///< one for each file
  std::string out;
  std::string type;     ///< a factory chart type; empty for the usual chart
  std::string profile;  ///< a profile file; empty for none
  std::string title;    ///< of the chart; empty for the names of the files
  bool sub_populations = false;
  PixelSize size;
};

struct ReportArguments {
  CommonArguments common;  ///< with one file
  FitQuestions questions;
  std::vector<double> times;   ///< that the shares which survive them are told of
  bool asks_for_fits = false;  ///< by an option: a project has fits of its own otherwise
  std::string out;
  std::string title;             ///< empty for the name of the file
  std::optional<DateTime> date;  ///< of the report; today without
  std::optional<PaperSize> paper;
};

struct ConvertArguments {
  CommonArguments common;  ///< with one file
  std::string out;
};

struct BatchArguments {
  int jobs = 0;  ///< lines at work at the same time; 0 is one for each core
};

using Command = std::variant<FitArguments, RankArguments, CompareArguments, ChartArguments,
                             ReportArguments, ConvertArguments, BatchArguments, SampleArguments>;

/// The command; or, when help was given or the usage was wrong, which has been
/// said already, the code to end with.
std::variant<ExitCode, Command> parse_arguments(int argc, const char* const* argv);

/// The name of a model on the command line; its code where it has no name.
std::string command_name(const Model& model);

}  // namespace tavlo::cli
