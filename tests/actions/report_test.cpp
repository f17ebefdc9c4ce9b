#include "actions/report.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "actions/fit_world.h"

namespace tavlo {
namespace {

using Cells = std::vector<std::string>;

const ReportPart& part(const Report& report, const std::string& title) {
  return *std::find_if(report.parts.begin(), report.parts.end(),
                       [&](const ReportPart& each) { return each.title == title; });
}

TEST(Report, AnswersWhatIsAskedAndNothingOfAnOutOfDateFit) {
  test::FitWorld world({{100}, {200}, {300}, {400}, {500}});
  world.fit();
  ReportRequest asked{"Pumps", "pumps.tavlo", {0.1, 0.5}, {150}};
  const auto lives = [&] { return part(make_report(world.session, asked), "Life").tables.front(); };
  const ReportTable sure = lives();
  EXPECT_EQ(sure.headings, Cells({"Fit", "B10 life", "B50 life", "R(150)", "Mean life"}));
  ASSERT_EQ(sure.rows.size(), 1u);
  EXPECT_EQ(sure.rows[0].size(), 5u);
  asked.times = {150, 160, 170, 180, 190};
  const ReportTable turned = lives();
  ASSERT_EQ(turned.rows.size(), 8u) << "too wide for a page";
  EXPECT_EQ(turned.headings, Cells({"Life", sure.rows[0][0]}));
  EXPECT_EQ(turned.rows[1], Cells({"B50 life", sure.rows[0][2]}));

  asked.times = {150};
  world.put({{100}, {200}, {300}, {400}, {900}});
  const ReportTable old = lives();
  EXPECT_EQ(std::count(old.rows[0].begin(), old.rows[0].end(), "out of date"), 4);
  const ReportTable fits = part(make_report(world.session, asked), "Fits").tables.front();
  EXPECT_EQ(fits.rows[0][2], "out of date");
  EXPECT_EQ(fits.rows[0][3], "");
  EXPECT_EQ(fits.remarks.size(), 1u);
}

}  // namespace
}  // namespace tavlo
