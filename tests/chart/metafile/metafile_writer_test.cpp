#include "chart/metafile/metafile_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

#include "chart/chart_world.h"
#include "numerics/run_time_error.h"

namespace tavlo {
namespace {

using namespace drawing;

using Places = std::vector<Place>;

int word_at(const std::string& bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes.at(at)) | static_cast<unsigned char>(bytes.at(at + 1))
                                                        << 8;
}

std::size_t long_at(const std::string& bytes, std::size_t at) {
  return static_cast<std::size_t>(word_at(bytes, at)) +
         (static_cast<std::size_t>(word_at(bytes, at + 2)) << 16);
}

/// One record as it stands in the file; parameters as signed words.
struct FileRecord {
  int function = 0;
  std::vector<int> words;
  friend bool operator==(const FileRecord&, const FileRecord&) = default;
};

/// The records between mapping mode, which every file begins with, and the end;
/// checks sizes, counts and that each slot holds an object when it is used.
std::vector<FileRecord> records_of(const std::string& bytes) {
  std::vector<FileRecord> records;
  std::size_t at = 40, largest = 0, highest = 0;
  std::vector<bool> slots(40000);
  while (at < bytes.size()) {
    const std::size_t size = long_at(bytes, at);
    FileRecord record{word_at(bytes, at + 4), {}};
    for (std::size_t i = 3; i < size; ++i)
      record.words.push_back(static_cast<std::int16_t>(word_at(bytes, at + 2 * i)));
    if (record.function == 0x2FA || record.function == 0x2FB || record.function == 0x2FC) {
      const auto slot =
          static_cast<std::size_t>(std::find(slots.begin(), slots.end(), false) - slots.begin());
      slots[slot] = true;
      highest = std::max(highest, slot + 1);
    }
    if (record.function == 0x12D || record.function == 0x1F0) {
      EXPECT_TRUE(slots.at(static_cast<std::size_t>(record.words.at(0))));
      if (record.function == 0x1F0) slots[static_cast<std::size_t>(record.words[0])] = false;
    }
    largest = std::max(largest, size);
    at += 2 * size;
    records.push_back(std::move(record));
  }
  EXPECT_EQ(at, bytes.size());
  EXPECT_EQ(records.back(), (FileRecord{0, {}}));
  EXPECT_EQ(long_at(bytes, 28), (bytes.size() - 22) / 2);
  EXPECT_EQ(static_cast<std::size_t>(word_at(bytes, 32)), highest);
  EXPECT_EQ(long_at(bytes, 34), largest);
  records.pop_back();
  return records;
}

constexpr std::size_t stock = 8;  // extent, mode, three objects made and selected

std::vector<FileRecord> written(const std::vector<Record>& records) {
  auto found = records_of(metafile_bytes({10000, 6000, records, {}}));
  found.erase(found.begin(), found.begin() + stock);
  return found;
}

// The usual checksum: the exclusive or of the first ten words.
TEST(Metafile, ChecksumHoldsForEverySizeAndOthersAreRefused) {
  std::mt19937_64 random(3);
  std::uniform_int_distribution<std::int32_t> size(1, 32767);
  for (int round = 0; round < 200; ++round) {
    const std::int32_t width = size(random), height = size(random);
    EXPECT_EQ(22289 ^ width ^ height ^ 1000, word_at(metafile_bytes({width, height, {}, {}}), 20));
  }
  for (const std::int32_t side : {32768, 2147483647, 0, -1}) {
    EXPECT_THROW(metafile_bytes({side, 10, {}, {}}), RunTimeError) << side;
    EXPECT_THROW(metafile_bytes({10, side, {}, {}}), RunTimeError) << side;
  }
}

TEST(Metafile, EveryRecordHasItsFormAndPlace) {
  const std::vector<FileRecord> expected = {
      {0x102, {1}},
      {0x2FA, {2, 15, 0, 0x0201, 3}},
      {0x12D, {3}},
      {0x2FC, {0, 0x0605, 4, 0}},
      {0x12D, {4}},
      {0x2FB, {-140, 0, 900, 0, 600, 0x0101, 0, 0, 2, 0x7241, 0x6169, 0x6C, 0,
               0,    0, 0,   0, 0,   0,      0, 0, 0, 0,      0,      0}},
      {0x12D, {5}},
      {0x12E, {6}},
      {0x209, {0x0807, 9}},
      {0x41B, {40, 30, 20, 10}},
      {0x418, {80, 70, 60, 50}},
      {0x325, {3, 1, 2, 3, 4, 5, 6}},
      {0x214, {2, 1}},
      {0x213, {4, 3}},
      {0x324, {3, -1, -2, 3, 4, 5, 6}},
      {0x521, {3, 0x6261, 0x63, 12, 11}}};
  EXPECT_EQ(written({TransparentBackground{}, CreatePen{1, 2, 15, 0x030201}, SelectObject{1},
                     CreateBrush{2, 0x040605}, SelectObject{2},
                     CreateFont{3, -140, 900, 600, true, true, "Arial"}, SelectObject{3},
                     SetTextAlign{TextAlign::centre}, SetTextColour{0x090807},
                     Rectangle{10, 20, 30, 40}, Ellipse{50, 60, 70, 80},
                     Polyline{{{1, 2}, {3, 4}, {5, 6}}}, Polyline{{{1, 2}, {3, 4}}},
                     Polygon{{{-1, -2}, {3, 4}, {5, 6}}}, Text{{11, 12}, "abc"}}),
            expected);
}

TEST(Metafile, NothingWrapsAround) {
  constexpr std::int32_t far = std::numeric_limits<std::int32_t>::max(), back = -far - 1;
  EXPECT_EQ(written({Polyline{{{0, 0}, {far, 0}}}}),
            (std::vector<FileRecord>{{0x214, {0, 0}}, {0x213, {0, 30000}}}));
  EXPECT_EQ(written({Rectangle{back, back, far, 100}}).at(0),
            (FileRecord{0x41B, {100, 30000, -30000, -30000}}));
  EXPECT_EQ(written({Polygon{{{0, 0}, {far, 0}, {far, 10}, {0, 10}}}}).at(0),
            (FileRecord{0x324, {4, 0, 0, 30000, 0, 30000, 10, 0, 10}}));
  EXPECT_EQ(written({CreatePen{1, 77, far, back}, CreatePen{1, 5, back, -1},
                     CreateFont{2, back, far, far, false, false, std::string(99, 'x')}}),
            (std::vector<FileRecord>{
                {0x2FA, {0, 32767, 0, 0, 0}},
                {0x2FA, {5, 0, 0, -1, 255}},
                {0x2FB, {-32768, 0,      32767,  0,      32767,  0,      0,      0,      2,
                         0x7878, 0x7878, 0x7878, 0x7878, 0x7878, 0x7878, 0x7878, 0x7878, 0x7878,
                         0x7878, 0x7878, 0x7878, 0x7878, 0x7878, 0x7878, 0x78}}}));
  EXPECT_TRUE(written({Rectangle{40000, 0, 40010, 9}, Ellipse{29990, 0, 40000, 10},
                       Ellipse{back, back, far, far}, Polygon{{{0, far}, {9, far}, {9, far - 9}}},
                       Polyline{{{back, back}, {back, far}}}, Polyline{{{1, 1}}}, Polyline{},
                       Polygon{}, Text{{40000, 0}, "far"}, Text{{0, 0}, ""}})
                  .empty());
}

TEST(Metafile, TextsAreAnsiAndTellWhatTheyLose) {
  DrawingRecord drawing{100, 100, {}, {}};
  drawing.records = {Text{{1, 2}, "\u00E4\u20AC\u03A9"}, Text{{1, 2}, std::string(70000, 'y')}};
  std::string lost;
  const auto records = records_of(metafile_bytes(drawing, &lost));
  EXPECT_EQ(lost, "\u03A9");
  EXPECT_EQ(records.at(stock),
            (FileRecord{0x521, {3, static_cast<std::int16_t>(0x80E4), '?', 2, 1}}));
  EXPECT_EQ(records.at(stock + 1).words.size(), 1U + 16384U + 2U);
  EXPECT_EQ(records.at(stock + 1).words.front(), 32767);
}

TEST(Metafile, LongLinesGoOnInTheNextRecord) {
  Polyline line;
  for (int i = 0; i < 100000; ++i) line.places.push_back({i % 9999, i % 5});
  Places joined;
  for (const FileRecord& record : written({line})) {
    ASSERT_EQ(record.function, 0x325);
    ASSERT_EQ(record.words.size(), 1 + 2 * static_cast<std::size_t>(record.words[0]));
    for (std::size_t i = joined.empty() ? 1 : 3; i < record.words.size(); i += 2)
      joined.push_back({record.words[i], record.words[i + 1]});
  }
  EXPECT_EQ(joined, line.places);
}

TEST(Metafile, AMillionRecordsAndObjectsEnd) {
  std::vector<Record> records;
  for (int i = 1; i <= 250000; ++i) {
    records.push_back(CreatePen{i, 0, i, i});
    records.push_back(SelectObject{i});
    records.push_back(Ellipse{i % 9000, i % 5000, i % 9000 + 9, i % 5000 + 9});
    records.push_back(DeleteObject{i});
  }
  const auto found = written(records);
  EXPECT_EQ(found.size(), 32764U * 2 + 250000U);  // the table is full, the drawing goes on
}

// A composed chart, also one whose numbers are absurd.
TEST(Metafile, EveryChartIsSound) {
  const float sizes[] = {10.0F, std::numeric_limits<float>::quiet_NaN(), 1e30F, -5.0F};
  for (const float size : sizes) {
    test::ChartWorld here;
    here.world.prompts.accept_all();
    here.show_published();
    for (ChartItem& item : here.chart().Boxes) item.FontSize = size;
    if (!(size == 10.0F)) here.chart().Boxes(chart_item::main_title).Left = 2147483647;
    const DrawingRecord drawing = here.draw();
    const auto records = records_of(metafile_bytes(drawing));
    const auto count = [&](int function) {
      return static_cast<std::size_t>(std::ranges::count(records, function, &FileRecord::function));
    };
    EXPECT_EQ(count(0x418), test::all<Ellipse>(drawing).size());
    EXPECT_EQ(count(0x2FA) + count(0x2FB) + count(0x2FC), 3 + count(0x1F0)) << "all are deleted";
  }
}

}  // namespace
}  // namespace tavlo
