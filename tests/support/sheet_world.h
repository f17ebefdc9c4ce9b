// A world with times typed into its first sheet.
#pragma once

#include "support/test_world.h"

namespace tavlo::test {

struct SheetWorld : TestWorld {
  explicit SheetWorld(const std::vector<std::string>& typed) {
    int row = 0;
    for (const std::string& text : typed) sheet().enter(++row, sheet_column::x, text);
    panel().nModel = 98;
    panel().nMethod = 0;
  }
  DataSheet& sheet() { return *session.gDataForm(1); }
  std::vector<std::string> column(int column) {
    std::vector<std::string> texts;
    for (int r = 1; r <= sheet().last_row(); ++r) texts.push_back(sheet().text(r, column));
    return texts;
  }
};

}  // namespace tavlo::test
