// Set work: one data set on its way from its file to its answers, the part that the commands
// on data share.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/fit_report.h"
#include "cli/fitting.h"
#include "cli/input_files.h"

namespace tavlo::cli {

struct SetWork {
  std::string file;
  std::size_t file_number = 0;  ///< of those on the command line, from 0
  InputFile::Kind kind = InputFile::Kind::text;
  std::shared_ptr<const Project> origin;  ///< what the file holds, see data_set for a text
  int number = 1;                         ///< of the data set in its file
  DataRows data;
  RankKind ranks = RankKind::benard;  ///< as asked for, or else as in its project
  std::vector<float> own_ranks;       ///< one a row, or none where the ranks are to be made
  Sample sample;
  std::vector<FitOutcome> outcomes;
  std::optional<std::string> fault;  ///< why there are no answers, in the user's words

  /// How many data sets the file holds.
  int sets() const { return kind == InputFile::Kind::text ? 1 : origin->data.bound(); }

  /// The name of the data set: its own or, where it has none, "Data1".
  std::string title() const;

  /// What messages and headings are about: the file, and the set where it holds several.
  std::string subject() const { return sets() > 1 ? file + ": " + title() : file; }

  /// Ranks the rows. Those are freed unless they are kept, as a sample has all of them.
  void rank(bool keep_rows);

  /// Fits the sample; does not throw.
  void answer(const FitQuestions& questions);

  FitReport report(const FitQuestions& questions) const {
    return {sample, data.mode_names, questions, outcomes};
  }

  /// The data set with all that its file has of it. The rows of a text move into it.
  const DataSet& data_set();
};

/// What the data set of a work is called where people see it: by its file (`titles` has one for
/// each on the command line), and by its own name or its number where this holds several.
std::string set_name(const SetWork& work, const std::vector<std::string>& titles);

/// True where a data set of a project would have other ranks by --ranks than it was saved with.
bool asks_for_other_ranks(const CommonArguments& common, const Project& project);

/// The data sets that are asked for of an input, in order.
std::vector<SetWork> works_of(const CommonArguments& common, std::size_t file_number,
                              InputFile input);

/// The data sets of all files, one after another. A file that can't be read is one with a fault.
class SetQueue {
 public:
  explicit SetQueue(const CommonArguments& common) : common_(common) {}

  /// False behind the last one.
  bool next(SetWork& work);

 private:
  const CommonArguments& common_;
  std::size_t files_ = 0;  ///< that were read
  std::vector<SetWork> works_;
  std::size_t next_ = 0;
};

/// Tells why a file has no answers, as JSON too when that is wanted.
ExitCode tell_fault(const SetWork& work, bool json);

}  // namespace tavlo::cli
