#include "project/grid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace tavlo {
namespace {

std::vector<std::string> column_of(const Grid& grid, int column) {
  std::vector<std::string> texts;
  for (int r = 1; r < grid.rows(); ++r) texts.push_back(grid.text(r, column));
  return texts;
}

Grid grid_of(const std::vector<std::string>& keys) {
  Grid grid(static_cast<int>(keys.size()) + 1, 2);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    grid.set_text(static_cast<int>(i) + 1, 0, std::to_string(i));
    grid.set_text(static_cast<int>(i) + 1, 1, keys[i]);
  }
  return grid;
}

TEST(Grid, SortsWholeRowsAsNumbersAndKeepsTheOrderOfEqualOnes) {
  Grid grid = grid_of({"10", "9", "", "1E2", "9", "-1", "word"});
  grid.sort_rows(1, 7, 1, true);
  EXPECT_EQ(column_of(grid, 1),
            (std::vector<std::string>{"-1", "", "word", "9", "9", "10", "1E2"}));
  EXPECT_EQ(column_of(grid, 0), (std::vector<std::string>{"5", "2", "6", "1", "4", "0", "3"}));

  grid.sort_rows(1, 7, 1, false);
  EXPECT_EQ(column_of(grid, 1), (std::vector<std::string>{"1E2", "10", "9", "9", "-1", "", "word"}))
      << "cells without a number stand last, behind negative ones";
}

TEST(Grid, SortingKeepsTheRows) {
  std::mt19937_64 random(7);
  for (int round = 0; round < 50; ++round) {
    std::vector<std::string> keys(random() % 40 + 1);
    for (std::string& key : keys) key = std::to_string(random() % 20);
    std::vector<std::string> rows;
    for (std::size_t i = 0; i < keys.size(); ++i) rows.push_back(std::to_string(i));
    const bool up = round % 2 == 0;
    std::stable_sort(rows.begin(), rows.end(), [&](const std::string& a, const std::string& b) {
      const int x = std::stoi(keys[std::stoul(a)]), y = std::stoi(keys[std::stoul(b)]);
      return up ? x < y : x > y;
    });
    Grid grid = grid_of(keys);
    grid.sort_rows(1, grid.rows() - 1, 1, up);
    EXPECT_EQ(column_of(grid, 0), rows);
  }
}

}  // namespace
}  // namespace tavlo
