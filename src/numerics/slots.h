// Slots: an array that the program numbers from 1 and whose slot 0 is a
// summary or a spare. An index outside 0..bound raises error 9.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "numerics/run_time_error.h"

namespace tavlo {

template <class T>
class Slots {
 public:
  Slots() : items_(1) {}
  explicit Slots(int bound) : items_(static_cast<std::size_t>(bound) + 1) {}
  Slots(int bound, const T& fill) : items_(static_cast<std::size_t>(bound) + 1, fill) {}

  /// The highest index; 0 when there is only slot 0.
  int bound() const { return static_cast<int>(items_.size()) - 1; }

  /// Gives the array the indexes 0..bound, keeping what it holds.
  void resize(int bound) { items_.resize(static_cast<std::size_t>(bound) + 1); }
  void reserve(int bound) { items_.reserve(static_cast<std::size_t>(bound) + 1); }
  /// The items behind it move up.
  void erase(int index) {
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(checked(index)));
  }
  void push_back(T item) { items_.push_back(std::move(item)); }

  T& operator()(int index) { return items_[checked(index)]; }
  const T& operator()(int index) const { return items_[checked(index)]; }

  /// The bare storage, slot 0 first, for loops that know their bounds.
  T* data() { return items_.data(); }
  const T* data() const { return items_.data(); }

  auto begin() { return items_.begin(); }
  auto end() { return items_.end(); }
  auto begin() const { return items_.begin(); }
  auto end() const { return items_.end(); }

  friend bool operator==(const Slots&, const Slots&) = default;

 private:
  std::size_t checked(int index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= items_.size())
      throw RunTimeError(run_time::subscript);
    return static_cast<std::size_t>(index);
  }

  std::vector<T> items_;
};

}  // namespace tavlo
