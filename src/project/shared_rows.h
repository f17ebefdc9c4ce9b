// SharedRows: a long list of rows whose copies share what neither has changed. It is kept
// in chunks: a change of one row of a million copies a chunk, not the list, so that every
// step of an undo history may keep a list of its own.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace tavlo {

template <class Row>
class SharedRows {
 public:
  static constexpr std::size_t chunk_rows = 1024;

  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }

  const Row& operator[](std::size_t index) const {
    return (*chunks_[index / chunk_rows])[index % chunk_rows];
  }

  /// The row, to be changed. Only the thread that owns the list may call this.
  Row& edit(std::size_t index) { return own(index / chunk_rows)[index % chunk_rows]; }

  void resize(std::size_t size) {
    const std::size_t chunks = (size + chunk_rows - 1) / chunk_rows;
    while (chunks_.size() < chunks) chunks_.push_back(std::make_shared<Chunk>(chunk_rows));
    chunks_.resize(chunks);
    if (size < size_) clear_behind(size);
    size_ = size;
  }

  void push_back(Row row) {
    resize(size_ + 1);
    edit(size_ - 1) = std::move(row);
  }

  /// The sum of a measure over the rows that the list doesn't share with another one.
  template <class Measure>
  std::size_t sum_unshared(const SharedRows& other, Measure&& measure) const {
    std::size_t sum = 0;
    for (std::size_t i = 0; i < chunks_.size(); ++i)
      if (i >= other.chunks_.size() || chunks_[i] != other.chunks_[i])
        for (const Row& row : *chunks_[i]) sum += measure(row);
    return sum;
  }

  friend bool operator==(const SharedRows& a, const SharedRows& b) {
    return a.size_ == b.size_ && std::equal(a.chunks_.begin(), a.chunks_.end(), b.chunks_.begin(),
                                            [](const auto& one, const auto& other) {
                                              return one == other || *one == *other;
                                            });
  }

 private:
  using Chunk = std::vector<Row>;

  Chunk& own(std::size_t chunk) {
    std::shared_ptr<Chunk>& held = chunks_[chunk];
    if (held.use_count() > 1) held = std::make_shared<Chunk>(*held);
    return *held;
  }

  // Rows that have gone leave no trace: they may come back, and lists are compared.
  void clear_behind(std::size_t size) {
    if (size % chunk_rows == 0) return;
    Chunk& last = own(size / chunk_rows);
    const std::size_t end = std::min(size_ - (size / chunk_rows) * chunk_rows, chunk_rows);
    std::fill(last.begin() + static_cast<std::ptrdiff_t>(size % chunk_rows),
              last.begin() + static_cast<std::ptrdiff_t>(end), Row{});
  }

  std::vector<std::shared_ptr<Chunk>> chunks_;
  std::size_t size_ = 0;
};

}  // namespace tavlo
