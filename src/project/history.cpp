#include "project/history.h"

#include <algorithm>

namespace tavlo {

namespace {

template <class Item>
std::size_t bytes_of(const Slots<Item>& items) {
  return (static_cast<std::size_t>(items.bound()) + 1) * sizeof(Item);
}

std::size_t bytes_of_row(const SheetRow& row) {
  return sizeof(SheetRow) + (row.texts ? sizeof(RowTexts) : 0);
}

std::size_t unshared(const SharedRows<SheetRow>& rows, const SharedRows<SheetRow>& other) {
  return rows.sum_unshared(other, bytes_of_row);
}

/// Bytes of rows that neither the state before has nor, for those that were read, the sheet.
std::size_t own_rows(const DataSet& data, const DataSet* before) {
  const SharedRows<SheetRow>& read = data.reading.rows();
  if (!before) return unshared(data.rows, {}) + unshared(read, data.rows);
  return unshared(data.rows, before->rows) +
         std::min(unshared(read, data.rows), unshared(read, before->reading.rows()));
}

const DataSet* same_set(const Project* project, int index, const DataSet& data) {
  const bool stands =
      project && index <= project->data.bound() && project->data(index).UniqueId == data.UniqueId;
  return stands ? &project->data(index) : nullptr;
}

/// What a state takes beside the one before it. Rows are shared, all else is copied.
std::size_t own_bytes(const Project& state, const Project* before) {
  std::size_t bytes = sizeof(Project);
  for (int i = 1; i <= state.data.bound(); ++i) {
    const DataSet& data = state.data(i);
    bytes += sizeof(DataSet) + bytes_of(data.ModeNames) + own_rows(data, same_set(before, i, data));
  }
  for (const FitSet& fits : state.fits) bytes += sizeof(FitSet) + 2 * bytes_of(fits.Fits);
  for (const Chart& chart : state.charts)
    bytes += sizeof(Chart) + bytes_of(chart.Boxes) + bytes_of(chart.Markers) +
             bytes_of(chart.Texts) + bytes_of(chart.Axes);
  return bytes;
}

}  // namespace

void History::restart(const Project& start) {
  states_.assign(1, {});
  at_ = 0;
  keep(0, start);
}

void History::note(const Project& now, const std::string& name) {
  states_.resize(++at_);
  states_.emplace_back().step = name;
  keep(at_, now);
  while (at_ > 1 && (states_.size() > most_steps + 1 || bytes() > most_bytes_)) drop_oldest();
}

void History::note_view(const Project& now) { keep(at_, now); }

// What it shared with the next one is that one's alone now.
void History::drop_oldest() {
  states_.pop_front();
  --at_;
  states_.front().bytes = own_bytes(states_.front().project, nullptr);
}

std::size_t History::bytes() const {
  std::size_t sum = 0;
  for (const State& state : states_) sum += state.bytes;
  return sum;
}

const Project& History::undo() {
  if (can_undo()) --at_;
  return states_[at_].project;
}

const Project& History::redo() {
  if (can_redo()) ++at_;
  return states_[at_].project;
}

void History::keep(std::size_t place, const Project& now) {
  State& state = states_[place];
  state.project = now;
  state.bytes = own_bytes(now, place > 0 ? &states_[place - 1].project : nullptr);
  forget_samples(state.project);
}

bool History::holds_work(std::int64_t work) const {
  return std::any_of(states_.begin(), states_.end(),
                     [work](const State& state) { return state.project.work == work; });
}

}  // namespace tavlo
