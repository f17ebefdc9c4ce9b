#include "files/lost_in_export.h"

#include <algorithm>
#include <set>
#include <utility>

#include "files/point_list.h"
#include "files/separated_writer.h"
#include "files/text_lines.h"

namespace tavlo {

namespace {

class LostThings {
 public:
  /// "1 fit", "2 fits"; `behind` and `before` say more of them.
  void add(std::size_t number, const std::string& one, const std::string& behind = "",
           const std::string& before = "") {
    if (number == 0) return;
    words_.push_back(before + std::to_string(number) + ' ' + one + (number == 1 ? "" : "s") +
                     behind);
  }

  std::vector<std::string> take() { return std::move(words_); }

 private:
  std::vector<std::string> words_;
};

template <class Holds>
std::size_t count_rows(const DataSet& data, Holds holds, std::size_t from = 0) {
  std::size_t number = 0;
  for (std::size_t i = from; i < data.rows.size(); ++i) number += holds(data.rows[i]) ? 1 : 0;
  return number;
}

bool has_comment(const SheetRow& row) { return !row.text(sheet_column::comment).empty(); }

bool has_blanks_around(const std::string& text) { return trimmed(text).size() < text.size(); }

/// Names that a reader takes for others, or for none.
std::size_t modes_without_own_name(const Slots<std::string>& names) {
  std::set<std::string_view> different;
  for (int mode = 1; mode <= names.bound(); ++mode)
    if (const auto name = trimmed(names(mode)); !name.empty()) different.insert(name);
  return static_cast<std::size_t>(names.bound()) - different.size();
}

/// Slot 0 counts with the others; a list of slot 0 alone is none.
template <class List>
std::size_t length(const List& list) {
  return list.bound() == 0 ? 0 : static_cast<std::size_t>(list.bound()) + 1;
}

std::size_t fits_of(const Project& project, int set) {
  std::size_t number = 0;
  for (int i = 1; i <= project.fits.bound(); ++i)
    if (data_of_fits(project, i) == set) number += static_cast<std::size_t>(project.fits(i).nFits);
  return number;
}

/// What no data file holds.
void add_everywhere(const Project& project, int set, LostThings& lost) {
  const DataSet& data = project.data(set);
  const auto is_left_out = [](const SheetRow& row) { return row.is_left_out(); };
  const auto is_no_point = [](const SheetRow& row) {
    return !row.is_blank() && !row.is_left_out() && !can_be_exported(row);
  };
  const auto is_negative = [](const SheetRow& row) {
    return row.time < 0.0F && can_be_exported(row);
  };
  const auto is_unreadable = [](const SheetRow& row) { return row.unreadable_column() != 0; };
  lost.add(count_rows(data, is_left_out), "row", " left out of the analysis");
  lost.add(count_rows(data, is_no_point), "row", " without a time or units");
  lost.add(count_rows(data, can_be_exported, export_end(data)), "row",
           " behind the first 1e15 units");
  lost.add(count_rows(data, is_unreadable), "row", " with a cell that can't be read");
  lost.add(count_rows(data, is_negative), "time", " below 0, unless the reader is told of such");
  if (data.own_ranks) lost.add(data.rows.size(), "rank", " that the rows came with");
  lost.add(length(data.Inspection), "inspection list");
  lost.add(length(data.Profiles), "warranty profile");
  lost.add(fits_of(project, set), "fit");
}

}  // namespace

std::vector<std::string> lost_in_separated_text(const Project& project, int set) {
  LostThings lost;
  const DataSet& data = project.data(set);
  const auto& modes = data.ModeNames;
  const auto has_blanks = [](const SheetRow& row) {
    return has_blanks_around(row.text(sheet_column::comment));
  };
  lost.add(rows_too_long(data), "row", ", longer than a line may be", "the comment or mode of ");
  lost.add(count_rows(data, has_blanks), "comment", "", "the blanks around ");
  lost.add(
      static_cast<std::size_t>(std::count_if(modes.begin() + 1, modes.end(), has_blanks_around)),
      "failure mode", "", "the blanks around ");
  lost.add(modes_without_own_name(modes), "failure mode", " without a name of its own");
  add_everywhere(project, set, lost);
  return lost.take();
}

std::vector<std::string> lost_in_notation(const Project& project, int set) {
  LostThings lost;
  const DataSet& data = project.data(set);
  lost.add(static_cast<std::size_t>(data.ModeNames.bound()), "failure mode");
  lost.add(count_rows(data, has_comment), "comment");
  add_everywhere(project, set, lost);
  return lost.take();
}

bool holds_rows(std::string_view bytes, bool is_separated_text) {
  return std::count(bytes.begin(), bytes.end(), '\n') > (is_separated_text ? 1 : 0);
}

}  // namespace tavlo
