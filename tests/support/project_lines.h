// Project lines: a project file by its form alone, without anything of the program: plain
// structs of what stands in its lines, a strict reader and a writer. Tests compare what the
// program reads and writes with it. Texts are UTF-8; a bound is the size of a list less one.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tavlo::test {

/// The values of one line of one type, in the file's order.
using Flags = std::vector<bool>;
using Ints = std::vector<std::int16_t>;
using Longs = std::vector<std::int32_t>;
using Singles = std::vector<float>;
using Doubles = std::vector<double>;

struct ItemLines {
  Flags flags = Flags(6);
  float font_size = 0;
  Longs longs = Longs(13);
  Ints ints = Ints(5);      ///< two on the line of the Longs, three before the last bound
  Singles points = {0, 0};  ///< x, y of each point
  std::array<std::string, 3> texts;
};

struct AxisLines {
  Flags automatic = Flags(2);
  Doubles limits = Doubles(2);
  Longs longs = Longs(6);
  std::int16_t scale = 0;
  ItemLines label;
};

struct MarkerLines {
  Longs longs = Longs(14);
  Ints ints = Ints(5);
  std::string label;
};

struct ChartLines {
  std::int16_t version = 0;
  std::int32_t id = 0;
  Flags flags = Flags(2);
  std::int16_t spare = 0;
  Longs data_ids, fit_ids;
  std::vector<AxisLines> axes;
  std::vector<ItemLines> boxes;
  std::vector<MarkerLines> markers;
  std::vector<ItemLines> texts;
  std::array<std::string, 3> names;  ///< name, date format, profile
};

struct PointLines {
  Doubles units = Doubles(2);  ///< failures, suspensions
  Singles place = Singles(2);  ///< X, Y
  std::int32_t order = 0;
  Ints ints = Ints(2);  ///< mode, spare
  std::string comment;
};

struct InspectionLines {
  Singles place = Singles(2);  ///< time, count
  std::int16_t flag = 0;
};

struct ProfileLines {
  std::string title;
  std::int32_t spare = 0;
  std::int16_t kind = 0;
  std::vector<Doubles> table;
};

struct DataLines {
  std::string title;
  Flags flags = Flags(2);     ///< FitsCurrent, Flag2
  Doubles head = Doubles(5);  ///< Reserved, XMax, XMin, YMax, YMin
  std::int32_t id = 0;
  std::int16_t changed = 0;
  Ints scales = Ints(2);
  std::vector<std::string> modes = {""};
  std::vector<PointLines> points;
  std::vector<std::vector<InspectionLines>> inspection = {{}};  ///< more than one, or not there
  std::vector<ProfileLines> profiles = {{}};                    ///< the same
};

struct FitRowLines {
  Doubles numbers = Doubles(4);  ///< scale, fraction, shape, T0
  std::int32_t applies = 0;
};

struct FitLines {
  double quality = 0;
  Ints ints = Ints(3);  ///< model, method, status
  std::string label;
  std::vector<FitRowLines> rows;  ///< row 1 is the first
};

struct FitSetLines {
  std::int32_t id = 0;
  std::string title;
  Longs data_ids;
  std::vector<FitLines> fits;  ///< fit 1 is the first
};

struct ProjectLines {
  bool utf8 = false;
  std::vector<ChartLines> charts;  ///< chart 0 is the template
  std::vector<DataLines> data;     ///< set 1 is the first
  std::vector<FitSetLines> fits;
  std::string log;
};

/// Throws std::runtime_error, which names the line, for anything that isn't as it must be.
ProjectLines lines_of(std::string_view bytes);

std::string bytes_of(ProjectLines lines);

}  // namespace tavlo::test
