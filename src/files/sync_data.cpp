#include "files/sync_data.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "numerics/number_text.h"
#include "numerics/rounding.h"
#include "project/fit_records.h"
#include "project/ranking.h"

namespace tavlo {

namespace {

std::string y_format(const Settings& settings) {
  return "0." + std::string(static_cast<std::size_t>(std::clamp(settings.DigitsData, 0, 15)), '0');
}

double number_or_zero(const std::string& text) { return parse_number(text).value_or(0.0); }

/// Numbers the failure modes that the sheet names: those that are known keep their order,
/// new ones follow, and a name that no row has any more goes.
class ModeIndex {
 public:
  ModeIndex(const Grid& grid, DataSet& data) {
    std::unordered_set<std::string> used;
    for (int r = 1; r <= data.Count; ++r) used.insert(grid.text(r, sheet_column::mode));
    used.erase("");
    Slots<std::string> names;
    const int known = std::min(data.nModes, data.ModeNames.bound());
    for (int m = 1; m <= known; ++m)
      if (used.erase(data.ModeNames(m)) > 0) names.push_back(data.ModeNames(m));
    for (int r = 1; r <= data.Count; ++r)
      if (const std::string& name = grid.text(r, sheet_column::mode); used.erase(name) > 0)
        names.push_back(name);
    for (int m = 1; m <= names.bound(); ++m) numbers_[names(m)] = m;
    data.nModes = names.bound();
    data.ModeNames = std::move(names);
  }

  std::int16_t operator()(const std::string& name) const {
    const auto found = numbers_.find(name);
    return found == numbers_.end() ? std::int16_t{0} : ToInt16(found->second);
  }

 private:
  std::unordered_map<std::string, int> numbers_;
};

/// The sheet shows a rank rounded: only a text that differs from that picture
/// replaces the stored rank.
void take_y(const std::string& text, const std::string& format, DataPoint& point) {
  if (text.empty()) return;
  const double typed = number_or_zero(text);
  const bool same = format_number(typed, format) == format_number(point.Y, format);
  if (!same) point.Y = ToSingle(typed);
}

void sheet_to_record(const DataSheet& sheet, const std::string& format, DataSet& data) {
  const Grid& grid = sheet.grd_Data;
  data.Count = std::min(sheet.lrows, grid.rows() - 1);
  data.Points.resize(data.Count);
  mark_changed(data);
  const ModeIndex mode_index(grid, data);
  for (int r = 1; r <= data.Count; ++r) {
    DataPoint& point = data.Points(r);
    point.X = ToSingle(number_or_zero(grid.text(r, sheet_column::x)));
    take_y(grid.text(r, sheet_column::y), format, point);
    point.Fails = number_or_zero(grid.text(r, sheet_column::fails));
    point.Susps = number_or_zero(grid.text(r, sheet_column::susps));
    point.Mode = mode_index(grid.text(r, sheet_column::mode));
    point.Comment = grid.text(r, sheet_column::comment);
    point.Order = ToInt32(number_or_zero(grid.text(r, sheet_column::order)));
  }
}

/// Tells which time is too large for the 32 bits that a record has for it.
void add_large_time_line(ErrorReporter& reporter, const Grid& grid) {
  for (int r = 1; r < grid.rows(); ++r) {
    const std::string& x = grid.text(r, sheet_column::x);
    if (std::fabs(number_or_zero(x)) <= std::numeric_limits<float>::max()) continue;
    reporter.add_lines({"Row " + grid.text(r, sheet_column::order) + ": Data X is " + x +
                        ", and a time can be 3.4E+38 at the most."});
    return;
  }
}

std::string text_unless_zero(double value, int digits = 15) {
  return value == 0.0 ? std::string() : number_text(value, digits);
}

void record_to_sheet(const DataSet& data, const std::string& format, DataSheet& sheet) {
  constexpr int single_digits = 7;
  Grid& grid = sheet.grd_Data;
  grid.set_rows(1);
  sheet.grow_to(std::max(data.Count, DataSheet::least_rows));
  for (int r = 1; r <= data.Count; ++r) {
    const DataPoint& point = data.Points(r);
    grid.set_text(r, sheet_column::order, std::to_string(point.Order <= 0 ? r : point.Order));
    grid.set_text(r, sheet_column::x, text_unless_zero(point.X, single_digits));
    if (point.Y != 0.0f) grid.set_text(r, sheet_column::y, format_number(point.Y, format));
    grid.set_text(r, sheet_column::fails, text_unless_zero(point.Fails));
    grid.set_text(r, sheet_column::susps, text_unless_zero(point.Susps));
    if (point.Mode != 0) grid.set_text(r, sheet_column::mode, data.ModeNames(point.Mode));
    grid.set_text(r, sheet_column::comment, point.Comment);
  }
  sheet.lrows = data.Count;
}

}  // namespace

bool Sync_Data(Session& session, int index, bool to_record, bool rank) {
  if (index < 1 || index > session.project.data.bound() || index > session.gDataForm.bound()) {
    session.ports.prompts.show({"Sync_Data: Array out of range.",
                                "ID number out of bounds while updating Data."
                                "  Data file may be missing data.",
                                BoxIcon::stop, BoxButtons::ok});
    return false;
  }
  DataSet& data = session.project.data(index);
  DataSheet& sheet = *session.gDataForm(index);
  const auto words = [&sheet](ErrorReporter& reporter) {
    reporter.add_lines({"Data Synchronization error: ", "Sync_Data routine:"});
    add_large_time_line(reporter, sheet.grd_Data);
  };
  return guarded(session.errors, false, words, [&] {
    const std::string format = y_format(session.settings);
    if (to_record) sheet_to_record(sheet, format, data);
    if (rank) Make_Ranks(session.errors, session.settings.Benard, data);
    if (rank || !to_record) record_to_sheet(data, format, sheet);
    return true;
  });
}

}  // namespace tavlo
