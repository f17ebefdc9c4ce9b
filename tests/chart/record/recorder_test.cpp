#include "chart/record/recorder.h"

#include <gtest/gtest.h>

#include <limits>

namespace tavlo {
namespace {

using namespace drawing;

TEST(Recorder, PensByStyleAndWidth) {
  constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
  struct Case {
    std::int32_t style, width;
    bool made;
    std::int32_t drawn_width;
  };
  for (const Case& c :
       {Case{0, 20, true, 20}, Case{2, 20, true, 1}, Case{6, -15, true, 15}, Case{5, 20, false, 0},
        Case{0, 0, false, 0}, Case{7, 20, false, 0}, Case{0, least, true, 32767}}) {
    DrawingRecord drawing;
    Recorder recorder(drawing);
    bool made = !c.made;
    const Handle handle = recorder.fl_MakePen(c.style, c.width, -1, made);
    EXPECT_EQ(made, c.made) << c.style << " " << c.width;
    if (!c.made) {
      EXPECT_EQ(handle, c.style > 6 ? no_object : null_pen);
      continue;
    }
    const auto& pen = std::get<CreatePen>(drawing.records.at(0));
    EXPECT_EQ(pen.width, c.drawn_width);
    EXPECT_EQ(pen.colour, 0xFFFFFF);
  }
}

TEST(Recorder, FontsArePointsTimesFourteen) {
  const std::pair<float, std::int32_t> sizes[] = {
      {10.0f, -140},   {18.0f, -252}, {8.5f, -119},
      {1e30f, -22932}, {-4.0f, -14},  {std::numeric_limits<float>::quiet_NaN(), -14}};
  for (const auto& [size, height] : sizes) {
    DrawingRecord drawing;
    Recorder recorder(drawing);
    ChartItem item;
    item.FontSize = size;
    item.FontBold = true;
    item.FontName = std::string(40, 'n');
    bool made = false;
    recorder.fl_MakeFont(item, 900, made);
    const auto& font = std::get<CreateFont>(drawing.records.at(0));
    EXPECT_EQ(font.height, height);
    EXPECT_EQ(font.weight, 600);
    EXPECT_EQ(font.face.size(), 31u);
  }
}

TEST(Recorder, AScopePutsTheEarlierObjectBack) {
  DrawingRecord drawing;
  Recorder recorder(drawing);
  {
    const auto outer = Selected::pen(recorder, 0, 5, 0);
    const auto inner = Selected::pen(recorder, 0, 9, 0);
    const auto nothing = Selected::pen(recorder, 99, 9, 0);
  }
  const std::vector<Record> expected = {
      CreatePen{1, 0, 5, 0}, SelectObject{1}, CreatePen{2, 0, 9, 0},  SelectObject{2},
      SelectObject{1},       DeleteObject{2}, SelectObject{null_pen}, DeleteObject{1}};
  EXPECT_EQ(drawing.records, expected);
}

}  // namespace
}  // namespace tavlo
