#include "support/project_lines.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <iterator>
#include <stdexcept>

namespace tavlo::test {
namespace {

constexpr std::string_view magic = "Tavlo 1.5 alpha 01 Oct 2011";
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

/// What the bytes 0x80 to 0x9F stand for.
constexpr char16_t upper_controls[] = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

std::string utf8_of(unsigned char byte) {
  const unsigned c = byte >= 0x80 && byte < 0xA0 ? upper_controls[byte - 0x80] : byte;
  const auto last = static_cast<char>(c < 0x80 ? c : 0x80 | (c & 63));
  if (c < 0x80) return {last};
  if (c < 0x800) return {static_cast<char>(0xC0 | c >> 6), last};
  return {static_cast<char>(0xE0 | c >> 12), static_cast<char>(0x80 | (c >> 6 & 63)), last};
}

std::string decoded(std::string_view ansi) {
  std::string text;
  for (const char c : ansi) text += utf8_of(static_cast<unsigned char>(c));
  return text;
}

std::string encoded(std::string_view text) {
  std::string ansi;
  while (!text.empty()) {
    int byte = 0;
    while (byte < 256 && !text.starts_with(utf8_of(static_cast<unsigned char>(byte)))) ++byte;
    if (byte == 256) throw std::runtime_error("not in the code page: " + std::string(text));
    ansi += static_cast<char>(byte);
    text.remove_prefix(utf8_of(static_cast<unsigned char>(byte)).size());
  }
  return ansi;
}

struct Reader {
  std::string_view rest = {};
  bool utf8 = false;
  int line_number = 0;
  std::string_view line = {};  ///< what is left of a value line

  [[noreturn]] void fail(const std::string& what) const {
    throw std::runtime_error("line " + std::to_string(line_number) + ": " + what);
  }
  std::string_view next_line() {
    const std::size_t end = rest.find("\r\n");
    ++line_number;
    if (end == std::string_view::npos) fail("has no end");
    const std::string_view found = rest.substr(0, end);
    if (found.find_first_of(std::string_view("\r\n\x1A\0", 4)) != found.npos) fail("control");
    rest.remove_prefix(end + 2);
    return found;
  }
  void text(std::string& into) { into = utf8 ? std::string(next_line()) : decoded(next_line()); }
  std::string_view field() {
    const std::size_t end = std::min(line.find(','), line.size());
    const std::string_view found = line.substr(0, end);
    line.remove_prefix(std::min(end + 1, line.size()));
    ++taken;
    return found;
  }
  void value(bool& into) {
    const std::string_view found = field();
    into = found == "#TRUE#";
    if (!into && found != "#FALSE#") fail("no flag: " + std::string(found));
  }
  template <class Number>
  void value(Number& into) {
    const std::string_view found = field();
    const auto [end, error] = std::from_chars(found.begin(), found.end(), into);
    const bool spelt = found.find_first_not_of("0123456789.E+-") == found.npos;
    if (error != std::errc() || end != found.end() || !spelt)
      fail("no such number: " + std::string(found));
  }
  template <class T>
  void value(std::vector<T>& into) {
    for (auto&& each : into) {
      T one{};
      value(one);
      each = one;
    }
  }
  /// One line with just these values.
  template <class... Values>
  void values(Values&... into) {
    line = next_line();
    const auto fields = std::count(line.begin(), line.end(), ',') + 1;
    taken = 0;
    (value(into), ...);
    if (taken != fields) fail(std::to_string(fields) + " values");
  }
  void fixed(int number) {
    int found = 0;
    values(found);
    if (found != number) fail("not " + std::to_string(number));
  }
  template <class List>
  void size(List& list, int wanted) {
    if (wanted < 0) fail("a negative size");
    list.resize(static_cast<std::size_t>(wanted));
  }
  long taken = 0;
};

struct Writer {
  std::string bytes;
  bool utf8 = false;

  void text(const std::string& from) { bytes += (utf8 ? from : encoded(from)) + "\r\n"; }
  void value(bool from) { bytes += from ? "#TRUE#," : "#FALSE#,"; }
  void value(std::int32_t from) { bytes += std::to_string(from) + ","; }
  void value(std::int16_t from) { value(std::int32_t{from}); }
  void value(float from) { decimal("%.7G,", static_cast<double>(from)); }
  void value(double from) { decimal("%.15G,", from); }
  void decimal(const char* format, double from) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, format, from == 0 ? 0 : from);
    bytes += buffer;
  }
  template <class T>
  void value(const std::vector<T>& from) {
    for (const T each : from) value(each);
  }
  template <class... Values>
  void values(const Values&... from) {
    (value(from), ...);
    bytes.pop_back();
    bytes += "\r\n";
  }
  void fixed(int number) { values(number); }
  template <class List>
  void size(List&, int) {}
};

template <class List>
std::int16_t bound(const List& list) {
  return static_cast<std::int16_t>(static_cast<int>(list.size()) - 1);
}

template <class Io>
void item(Io& io, ItemLines& c) {
  io.fixed(26);
  Ints first(c.ints.begin(), c.ints.begin() + 2), second(c.ints.begin() + 2, c.ints.end());
  auto points = static_cast<std::int16_t>(c.points.size() / 2 - 1);
  io.values(c.flags, c.font_size, c.longs, first);
  io.values(second, points);
  c.ints = first;
  c.ints.insert(c.ints.end(), second.begin(), second.end());
  io.fixed(2 * points + 2);
  io.size(c.points, 2 * points + 2);
  io.values(c.points);
  io.fixed(3);
  for (std::string& text : c.texts) io.text(text);
}

template <class Io>
void chart(Io& io, ChartLines& c) {
  std::int16_t axes = bound(c.axes), data = bound(c.data_ids), fits = bound(c.fit_ids),
               boxes = bound(c.boxes), markers = bound(c.markers), texts = bound(c.texts);
  io.values(c.version, c.id);
  io.fixed(9);
  io.values(c.flags, c.spare, axes, data, fits, boxes, markers, texts);
  for (auto [ids, last] : {std::pair(&c.data_ids, data), std::pair(&c.fit_ids, fits)}) {
    io.fixed(last + 1);
    io.size(*ids, last + 1);
    io.values(*ids);
  }
  io.fixed(axes + 1);
  io.size(c.axes, axes + 1);
  for (AxisLines& axis : c.axes) {
    io.fixed(11);
    io.values(axis.automatic, axis.limits, axis.longs, axis.scale);
    item(io, axis.label);
  }
  io.fixed(boxes);
  io.size(c.boxes, boxes + 1);
  for (ItemLines& box : c.boxes) item(io, box);
  io.fixed(markers);
  io.size(c.markers, markers + 1);
  for (MarkerLines& marker : c.markers) {
    io.fixed(19);
    io.values(marker.longs, marker.ints);
    io.fixed(1);
    io.text(marker.label);
  }
  io.fixed(texts + 1);
  io.size(c.texts, texts + 1);
  for (ItemLines& text : c.texts) item(io, text);
  io.fixed(3);
  for (std::string& name : c.names) io.text(name);
}

template <class Io>
void profile(Io& io, ProfileLines& c) {
  std::int32_t rows = static_cast<std::int32_t>(c.table.size()) - 1;
  std::int32_t columns = c.table.empty() ? 0 : static_cast<std::int32_t>(c.table[0].size()) - 1;
  io.text(c.title);
  io.values(c.spare, columns, rows, c.kind);
  io.size(c.table, rows + 1);
  for (Doubles& row : c.table) {
    io.size(row, columns + 1);
    io.values(row);
  }
}

template <class Io>
void data(Io& io, DataLines& c) {
  std::int32_t count = static_cast<std::int32_t>(c.points.size()) - 1;
  std::int16_t modes = bound(c.modes), inspection = bound(c.inspection),
               profiles = bound(c.profiles);
  io.text(c.title);
  io.fixed(15);
  io.values(c.flags, c.head, c.id, count, c.changed);
  io.values(modes, inspection, profiles);
  std::int16_t modes_again = modes;
  io.values(c.scales, modes_again);
  if (modes != modes_again) throw std::runtime_error("two numbers of modes");
  io.size(c.modes, modes + 1);
  for (std::string& mode : c.modes)
    if (modes > 0) io.text(mode);
  io.fixed(7);
  io.size(c.points, count + 1);
  for (PointLines& point : c.points) io.values(point.units, point.place, point.order, point.ints);
  for (PointLines& point : c.points) io.text(point.comment);
  io.size(c.inspection, inspection + 1);
  for (auto& list : c.inspection) {
    if (inspection == 0) break;
    std::int16_t last = bound(list);
    io.values(last);
    io.size(list, last + 1);
    for (InspectionLines& each : list) io.values(each.place, each.flag);
  }
  io.size(c.profiles, profiles + 1);
  for (ProfileLines& each : c.profiles)
    if (profiles > 0) profile(io, each);
}

template <class Io>
void fit_set(Io& io, FitSetLines& c) {
  auto fits = static_cast<std::int16_t>(c.fits.size());
  std::int16_t ids = bound(c.data_ids);
  io.fixed(0);
  io.values(c.id, fits, ids);
  io.text(c.title);
  io.size(c.data_ids, ids + 1);
  for (std::int32_t& id : c.data_ids) io.values(id);
  io.size(c.fits, fits);
  for (FitLines& fit : c.fits) {
    auto rows = static_cast<std::int16_t>(fit.rows.size());
    io.values(fit.quality, fit.ints, rows);
    io.text(fit.label);
    io.size(fit.rows, rows);
    for (FitRowLines& row : fit.rows) {
      io.values(row.numbers[0], row.numbers[1]);
      io.values(row.numbers[2]);
      io.values(row.numbers[3]);
      io.values(row.applies);
    }
  }
}

template <class Io>
void sections(Io& io, ProjectLines& c) {
  std::int16_t charts = bound(c.charts), sets = static_cast<std::int16_t>(c.data.size()),
               fits = static_cast<std::int16_t>(c.fits.size());
  io.values(charts, sets, fits);
  io.size(c.charts, charts + 1);
  io.size(c.data, sets);
  io.size(c.fits, fits);
  for (ChartLines& each : c.charts) chart(io, each);
  for (DataLines& each : c.data) data(io, each);
  for (FitSetLines& each : c.fits) fit_set(io, each);
}

}  // namespace

ProjectLines lines_of(std::string_view bytes) {
  ProjectLines lines;
  Reader reader{bytes};
  reader.utf8 = lines.utf8 = bytes.starts_with(byte_order_mark);
  if (lines.utf8) reader.rest.remove_prefix(byte_order_mark.size());
  if (reader.next_line() != magic) reader.fail("not the head line");
  sections(reader, lines);
  std::int32_t length = 0;
  reader.values(length);
  if (reader.rest.size() != static_cast<std::size_t>(length) + 2 || !reader.rest.ends_with("\r\n"))
    reader.fail("the log is not that long: " + std::to_string(reader.rest.size()));
  lines.log = reader.rest.substr(0, static_cast<std::size_t>(length));
  return lines;
}

std::string bytes_of(ProjectLines lines) {
  Writer writer;
  writer.utf8 = lines.utf8;
  if (lines.utf8) writer.bytes = byte_order_mark;
  writer.text(std::string(magic));
  sections(writer, lines);
  writer.fixed(static_cast<int>(lines.log.size()));
  return writer.bytes + lines.log + "\r\n";
}

}  // namespace tavlo::test
