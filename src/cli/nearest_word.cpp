#include "cli/nearest_word.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace tavlo::cli {

namespace {

int lower(char c) { return std::tolower(static_cast<unsigned char>(c)); }

/// Letters that differ, are left out, added or swapped with their neighbour (optimal string
/// alignment); half of it for one that differs in case alone.
double distance(std::string_view a, std::string_view b) {
  std::vector<double> before(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) last[j] = static_cast<double>(j);
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = static_cast<double>(i);
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool is_same = a[i - 1] == b[j - 1];
      const double change = is_same ? 0 : lower(a[i - 1]) == lower(b[j - 1]) ? 0.25 : 1;
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + change});
      const bool is_swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (is_swapped) row[j] = std::min(row[j], before[j - 2] + 1);
    }
    std::swap(before, last);
    std::swap(last, row);
  }
  return last[b.size()];
}

}  // namespace

std::string did_you_mean(std::string_view word, const std::vector<std::string>& candidates) {
  constexpr std::size_t longest = 40;
  const std::string* nearest = nullptr;
  double least = word.size() < 3 ? 0.6 : word.size() < 4 ? 1.01 : 2.01;
  for (const std::string& candidate : candidates) {
    const double found = word.size() > longest ? least : distance(word, candidate);
    if (found >= least || found >= static_cast<double>(candidate.size())) continue;
    least = found;
    nearest = &candidate;
  }
  return nearest ? "; did you mean '" + *nearest + "'?" : "";
}

}  // namespace tavlo::cli
