// Life table: the answers that a person came for, read off one fit: the times by which given
// percentages have failed, the reliability at given times, and the mean life. What no number
// can answer honestly is said in words.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "life/life.h"
#include "ports/clipboard.h"
#include "project/session.h"

namespace tavlo {

enum class LifeAnswerKind { b_life, reliability, mean };

struct LifeAnswer {
  LifeAnswerKind kind = LifeAnswerKind::mean;
  double asked = 0;            ///< the percentage or the time
  std::string name;            ///< "B10", "R(500)", "Mean life"
  std::string answer;          ///< "164", "0.49", "never", "infinite"; empty without a fit
  std::string tip;             ///< the name in a sentence, and why there is no number
  std::optional<double> time;  ///< where the answer lies on a chart; nothing without a place
};

struct LifeTable {
  int slot = 0;        ///< of the fit that answers; 0 for none
  std::string fit;     ///< "W4P/MLE"; empty without a fit
  std::string remark;  ///< what must be known of all rows, or what to do first
  std::vector<LifeAnswer> rows;
};

/// The answers of the fit in a row of the fit grid, else of the last fit of the set.
LifeTable life_table(Session& session, int fit_index, int grid_row);

/// Takes typed percentages into the questions, "5", "0,1; 20 %" or "B5" in the system's
/// punctuation. Empty when all were taken; else the reason why none was.
std::string ask_percents(Session& session, const std::string& typed);

/// The same for times at which the reliability is asked.
std::string ask_times(Session& session, const std::string& typed);

/// Takes a question off the list again. The mean life stays.
void drop_question(Session& session, const LifeAnswer& answer);

/// The table as text and HTML in the locale's numbers; nothing where there is no fit.
ClipboardText copied(const LifeTable& table, const NumberPunctuation& punctuation);

}  // namespace tavlo
