#include "files/separated_writer.h"

#include <gtest/gtest.h>

#include <cmath>

#include "files/data_text.h"
#include "files/lost_in_export.h"
#include "support/random_samples.h"

namespace tavlo {
namespace {

using test::RandomNumbers;

/// Any words but blanks at their ends, which a reader takes off.
std::string random_words(RandomNumbers& random) {
  constexpr const char* pieces[] = {"a", "Riß", ",", ";", "\"", " ", "\t", "\n", "#", ">", "漢"};
  std::string words;
  for (int i = random.whole(0, 6); i > 0; --i) words += pieces[random.whole(0, 10)];
  return std::string(trimmed(words));
}

DataSet random_set(RandomNumbers& random) {
  PointList points(50);
  const bool worded = random.chance(0.7);
  for (int i = random.whole(1, 50); i > 0; --i) {
    const double units = random.log_uniform(1e-3, 1e6);
    const double share = random.chance(0.3) ? random.uniform() : random.whole(0, 1);
    const auto time = static_cast<float>(random.log_uniform(1e-37, 1e38));
    EXPECT_FALSE(points.add(random.chance(0.2) ? -time : time, units * share, units * (1 - share)));
    EXPECT_FALSE(points.set_mode(worded ? random_words(random) : ""));
    points.set_comment(worded ? random_words(random) : "");
  }
  DataSet data;
  fill_data_set(points.take(), data);
  return data;
}

/// Gives a row what a reader refuses or takes for something else.
void make_wild(RandomNumbers& random, DataSet& data) {
  SheetRow& row = data.rows.edit(data.rows.size() / 2);
  const auto size = static_cast<std::size_t>(random.whole(65'470, 65'540));
  switch (random.whole(0, 3)) {
    case 0: row.set_text(sheet_column::comment, "x\t"); break;
    case 1: row.set_text(sheet_column::comment, std::string(size, 'x')); break;
    case 2:
      row.failures = random.uniform(0, 2e15);
      row.set_given(sheet_column::fails, true);
      break;
    default:
      data.ModeNames.push_back((random.chance(0.5) ? " " : "") + data.ModeNames(row.mode));
      row.mode = static_cast<std::int16_t>(data.ModeNames.bound());
  }
}

TEST(SeparatedWriter, WhatIsWrittenReadsBackTheSameOrIsNamed) {
  RandomNumbers random(11);
  for (int run = 0; run < 500; ++run) {
    Project project;
    project.data.push_back(random_set(random));
    DataSet& written = project.data(1);
    if (random.chance(0.3)) make_wild(random, written);
    DataSet read;
    const std::string text = write_separated_text(written);
    const auto fault = read_data_text(text, {.negative_is_value = true}, read);
    ASSERT_FALSE(fault) << fault->line << ": " << fault->what << '\n' << text;
    auto lost = lost_in_separated_text(project);
    std::erase_if(lost, [](const std::string& each) { return each.find("below") < each.size(); });
    ASSERT_EQ(lost.empty(), read.rows == written.rows && read.ModeNames == written.ModeNames)
        << text;
  }
}

using Words = std::vector<std::string>;

TEST(SeparatedWriter, NamesWhatAnExportLosesAndLeavesOutWhatNobodyCanRead) {
  Project project;
  project.data.push_back(fuStandardData());
  project.fits.push_back(fuStandard_Fit());
  DataSet& data = project.data(1);
  fill_data_set({{{7, 1, 0, 1}, {0, 1, 0}, {5, 0, 0}, {-3, 0, 2.5}}, {"rust"}, {"", "", "", "x"}},
                data);
  data.rows.push_back({});  // a blank row is no loss
  EXPECT_EQ(write_separated_text(data),
            "time,failures,suspensions,mode,comment\n7,1,,rust,\n-3,,2.5,,x\n");
  EXPECT_EQ(write_notation(data), "7\n>-3x2.5\n");
  data.rows.edit(3).set_text(sheet_column::fails, "many");
  data.own_ranks = true;
  data.Inspection.resize(1);
  data.Profiles.resize(2);
  project.fits(1).nFits = 1;
  Words lost = {"2 rows without a time or units",
                "1 row with a cell that can't be read",
                "1 time below 0, unless the reader is told of such",
                "5 ranks that the rows came with",
                "2 inspection lists",
                "3 warranty profiles",
                "1 fit"};
  EXPECT_EQ(lost_in_separated_text(project), lost);
  lost.insert(lost.begin(), {"1 failure mode", "1 comment"});
  EXPECT_EQ(lost_in_notation(project), lost);
  project.fits(1) = fuStandard_Fit();
  data = fuStandardData();
  fill_data_set(
      {{{7, 1, 0, 1}, {8, 1e15, 0, 2}}, {"rust", "rust "}, {std::string(70'000, 'x'), " "}}, data);
  lost = {"the comment or mode of 1 row, longer than a line may be", "the blanks around 1 comment",
          "the blanks around 1 failure mode", "1 failure mode without a name of its own",
          "1 row behind the first 1e15 units"};
  EXPECT_EQ(lost_in_separated_text(project), lost);
  EXPECT_EQ(write_notation(data), "7\n");
  data = fuStandardData();
  EXPECT_EQ(lost_in_notation(project), Words());
}

}  // namespace
}  // namespace tavlo
