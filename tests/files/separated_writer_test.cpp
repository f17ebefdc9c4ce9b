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

TEST(SeparatedWriter, WhatIsWrittenReadsBackTheSame) {
  RandomNumbers random(11);
  for (int run = 0; run < 500; ++run) {
    const DataSet written = random_set(random);
    DataSet read;
    const std::string text = write_separated_text(written);
    const auto fault = read_data_text(text, {.negative_is_value = true}, read);
    ASSERT_FALSE(fault) << fault->line << ": " << fault->what << '\n' << text;
    ASSERT_EQ(read.rows, written.rows) << text;
    ASSERT_EQ(read.ModeNames, written.ModeNames) << text;
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
  project.data(1) = fuStandardData();
  project.fits(1) = fuStandard_Fit();
  EXPECT_EQ(lost_in_notation(project), Words());
}

}  // namespace
}  // namespace tavlo
