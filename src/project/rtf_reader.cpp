#include "project/rtf_reader.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "project/code_page.h"
#include "project/rtf_scanner.h"

namespace tavlo {

namespace {

constexpr std::size_t most_groups = 200;
constexpr std::size_t most_colours = 65536;
constexpr std::size_t most_fonts = 65536;
constexpr std::size_t most_edges = RichTextContent::most_cells;
constexpr int farthest = 1'000'000;  // twips

class RtfReader {
 public:
  explicit RtfReader(std::string_view rtf);

  RichTextContent read();

 private:
  enum class Destination { body, fonts, colours };

  struct Group {
    TextStyle pen;
    Destination destination = Destination::body;
    int fallback_length = 1;  ///< characters that stand behind a \u for old readers
    bool in_table = false;
  };

  using Number = const RtfSign&;
  using Action = void (RtfReader::*)(Number);

  static const std::unordered_map<std::string_view, Action>& actions();

  void act(const RtfSign& sign);
  void open_group();
  void close_group();
  void leave_out();
  void symbol(char symbol);
  void word(const RtfSign& sign);

  // What words do.
  void skip(Number) { leave_out(); }
  void bold(Number number) { pen().bold = is_on(number); }
  void italic(Number number) { pen().italic = is_on(number); }
  void underline(Number number) { pen().underline = is_on(number); }
  void no_underline(Number) { pen().underline = false; }
  void plain(Number) { pen() = plain_; }
  void size(Number number);
  void colour(Number number);
  void font(Number number);
  void font_table(Number) { group().destination = Destination::fonts; }
  void default_font(Number number) { default_font_ = number.number; }
  void colour_table(Number) { group().destination = Destination::colours; }
  void red(Number number) { mix(number, 16); }
  void green(Number number) { mix(number, 8); }
  void blue(Number number) { mix(number, 0); }
  void paragraph_defaults(Number) { group().in_table = false; }
  void in_table(Number) { group().in_table = true; }
  void row_defaults(Number);
  void row_left(Number number) { row_left_ = usable_place(number); }
  void cell_edge(Number number);
  void cell(Number);
  void row(Number);
  void line_end(Number number);
  void tab(Number) { show('\t'); }
  void fallback_length(Number number);
  void unicode(Number number);
  template <char32_t code>
  void character(Number) {
    show(code);
  }

  static int usable_place(Number number) { return std::clamp(number.number, -farthest, farthest); }
  static bool is_on(Number number) { return !number.has_number || number.number != 0; }
  void mix(Number number, int shift);
  void text(std::string_view bytes);
  std::string_view without_fallback(std::string_view bytes);
  void show(char32_t code);
  void show(std::string_view utf8);
  void name_fonts(std::string_view text);
  void take_colours(std::string_view text);
  void begin_row();
  std::uint16_t font_place(int number) const;

  Group& group() { return groups_.back(); }
  TextStyle& pen() { return groups_.back().pen; }

  RtfScanner scanner_;
  bool is_document_;
  RichTextContent content_;
  TextStyle plain_;  ///< the style that text has before anything is said of it
  std::vector<Group> groups_{Group{}};
  std::size_t groups_too_deep_ = 0;

  std::unordered_map<int, std::uint16_t> fonts_;  ///< places in the content by number here
  int default_font_ = 0;
  int named_font_ = 0;
  std::string font_name_;
  std::vector<std::uint32_t> colours_;
  std::uint32_t mixed_colour_ = automatic_colour;

  char32_t high_surrogate_ = 0;
  std::size_t to_skip_ = 0;  ///< of the fallback

  bool row_is_defined_ = false;
  bool row_is_begun_ = false;
  int row_left_ = 0;
  std::vector<int> edges_;
};

RtfReader::RtfReader(std::string_view rtf) : scanner_(rtf), is_document_(is_rtf(rtf)) {
  constexpr std::uint16_t size_of_documents = 24;
  if (is_document_) plain_.half_points = size_of_documents;
  pen() = plain_;
}

RichTextContent RtfReader::read() {
  for (RtfSign sign = scanner_.next(); sign.kind != RtfSign::Kind::end; sign = scanner_.next())
    act(sign);
  if (row_is_begun_) row({});
  if (is_document_) content_.drop_last_line_end();
  return std::move(content_);
}

void RtfReader::act(const RtfSign& sign) {
  switch (sign.kind) {
    case RtfSign::Kind::open: return open_group();
    case RtfSign::Kind::close: return close_group();
    case RtfSign::Kind::word: return word(sign);
    case RtfSign::Kind::symbol: return symbol(sign.symbol);
    case RtfSign::Kind::byte: {
      const char byte = static_cast<char>(sign.number);
      return text({&byte, 1});
    }
    case RtfSign::Kind::text: return text(sign.text);
    case RtfSign::Kind::end: return;
  }
}

void RtfReader::open_group() {
  to_skip_ = 0;
  if (groups_.size() > most_groups) {
    ++groups_too_deep_;
  } else {
    groups_.push_back(group());
  }
}

void RtfReader::close_group() {
  to_skip_ = 0;
  if (groups_too_deep_ > 0) {
    --groups_too_deep_;
    return;
  }
  if (groups_.size() == 1) return;
  const bool was_font_table = group().destination == Destination::fonts;
  groups_.pop_back();
  if (!was_font_table || group().destination == Destination::fonts) return;
  plain_.font = font_place(default_font_);
  pen().font = plain_.font;
}

/// Leaves the group out that has begun; outside of one there is nothing to leave out.
void RtfReader::leave_out() {
  if (groups_.size() == 1) return;
  scanner_.leave_group();
  close_group();
}

void RtfReader::symbol(char symbol) {
  constexpr char32_t hard_blank = 0xA0;
  constexpr char32_t hard_hyphen = 0x2011;
  switch (symbol) {
    case '*': return leave_out();
    case '~': return show(hard_blank);
    case '_': return show(hard_hyphen);
    case '\n':
    case '\r': return show('\n');
    case '\t': return show('\t');
    case '\\':
    case '{':
    case '}': return text({&symbol, 1});
    default: return;
  }
}

void RtfReader::word(const RtfSign& sign) {
  const auto found = actions().find(sign.text);
  if (found != actions().end()) (this->*found->second)(sign);
}

const std::unordered_map<std::string_view, RtfReader::Action>& RtfReader::actions() {
  using R = RtfReader;
  static const std::unordered_map<std::string_view, Action> table = {
      {"b", &R::bold},
      {"i", &R::italic},
      {"ul", &R::underline},
      {"uld", &R::underline},
      {"uldash", &R::underline},
      {"uldb", &R::underline},
      {"ulth", &R::underline},
      {"ulw", &R::underline},
      {"ulwave", &R::underline},
      {"ulnone", &R::no_underline},
      {"plain", &R::plain},
      {"fs", &R::size},
      {"cf", &R::colour},
      {"f", &R::font},
      {"fonttbl", &R::font_table},
      {"deff", &R::default_font},
      {"colortbl", &R::colour_table},
      {"red", &R::red},
      {"green", &R::green},
      {"blue", &R::blue},
      {"pard", &R::paragraph_defaults},
      {"intbl", &R::in_table},
      {"trowd", &R::row_defaults},
      {"trleft", &R::row_left},
      {"cellx", &R::cell_edge},
      {"cell", &R::cell},
      {"row", &R::row},
      {"nestcell", &R::tab},
      {"nestrow", &R::line_end},
      {"par", &R::line_end},
      {"line", &R::line_end},
      {"sect", &R::line_end},
      {"page", &R::line_end},
      {"tab", &R::tab},
      {"uc", &R::fallback_length},
      {"u", &R::unicode},
      {"emdash", &R::character<0x2014>},
      {"endash", &R::character<0x2013>},
      {"emspace", &R::character<0x2003>},
      {"enspace", &R::character<0x2002>},
      {"bullet", &R::character<0x2022>},
      {"lquote", &R::character<0x2018>},
      {"rquote", &R::character<0x2019>},
      {"ldblquote", &R::character<0x201C>},
      {"rdblquote", &R::character<0x201D>},
      {"stylesheet", &R::skip},
      {"info", &R::skip},
      {"pict", &R::skip},
      {"nonshppict", &R::skip},
      {"object", &R::skip},
      {"header", &R::skip},
      {"headerl", &R::skip},
      {"headerr", &R::skip},
      {"headerf", &R::skip},
      {"footer", &R::skip},
      {"footerl", &R::skip},
      {"footerr", &R::skip},
      {"footerf", &R::skip},
      {"generator", &R::skip},
      {"listtable", &R::skip},
      {"filetbl", &R::skip},
      {"nonesttables", &R::skip},
  };
  return table;
}

void RtfReader::size(Number number) {
  constexpr int largest = 3276;
  const bool has_size = number.number > 0;
  pen().half_points =
      has_size ? static_cast<std::uint16_t>(std::min(number.number, largest)) : plain_.half_points;
}

void RtfReader::colour(Number number) {
  const auto place = static_cast<std::size_t>(std::max(number.number, 0));
  pen().colour = place < colours_.size() ? colours_[place] : automatic_colour;
}

void RtfReader::font(Number number) {
  if (group().destination == Destination::fonts) {
    named_font_ = number.number;
    font_name_.clear();
  } else {
    pen().font = font_place(number.number);
  }
}

std::uint16_t RtfReader::font_place(int number) const {
  const auto found = fonts_.find(number);
  return found == fonts_.end() ? std::uint16_t{0} : found->second;
}

void RtfReader::mix(Number number, int shift) {
  const auto part = static_cast<std::uint32_t>(std::clamp(number.number, 0, 255));
  if (mixed_colour_ == automatic_colour) mixed_colour_ = 0;
  mixed_colour_ = (mixed_colour_ & ~(0xFFU << shift)) | part << shift;
}

void RtfReader::row_defaults(Number) {
  row_is_defined_ = true;
  row_left_ = 0;
  edges_.clear();
}

void RtfReader::cell_edge(Number number) {
  if (edges_.size() < most_edges) edges_.push_back(usable_place(number) - row_left_);
}

void RtfReader::cell(Number) {
  begin_row();
  content_.end_cell();
}

void RtfReader::row(Number) {
  if (row_is_begun_) content_.end_row(edges_);
  row_is_begun_ = false;
  row_is_defined_ = false;
}

void RtfReader::begin_row() {
  if (!row_is_begun_) content_.begin_row();
  row_is_begun_ = true;
}

// A paragraph behind a table whose last row has no end closes it.
void RtfReader::line_end(Number number) {
  if (row_is_begun_ && !group().in_table) return row(number);
  show('\n');
}

void RtfReader::fallback_length(Number number) {
  constexpr int most = 8;
  group().fallback_length = number.number < 0 || number.number > most ? 1 : number.number;
}

// Units of UTF-16, often as signed numbers. Some writers give whole code points.
void RtfReader::unicode(Number number) {
  constexpr int thin_blank = 0x2006;
  // One word processor puts these in front of each of several blanks. They are none of the text.
  if (number.number == thin_blank && scanner_.skip("\\'20 ")) return show(' ');
  const int value = number.number < 0 ? number.number + 0x10000 : number.number;
  const auto code = static_cast<char32_t>(value);
  const char32_t high = std::exchange(high_surrogate_, 0);
  if (code >= 0xD800 && code < 0xDC00) {
    high_surrogate_ = code;
  } else if (code >= 0xDC00 && code < 0xE000) {
    if (high) show(0x10000 + ((high - 0xD800) << 10) + (code - 0xDC00));
  } else if (code > 0 && code <= 0x10FFFF) {
    show(code);
  }
  to_skip_ = static_cast<std::size_t>(group().fallback_length);
}

std::string_view RtfReader::without_fallback(std::string_view bytes) {
  const std::size_t skipped = std::min(to_skip_, bytes.size());
  to_skip_ -= skipped;
  return bytes.substr(skipped);
}

void RtfReader::text(std::string_view bytes) {
  bytes = without_fallback(bytes);
  if (bytes.empty()) return;
  high_surrogate_ = 0;
  const bool is_ascii =
      std::all_of(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) == 0; });
  if (is_ascii) return show(bytes);
  show(utf8_from_ansi(bytes));
}

void RtfReader::show(char32_t code) {
  std::string utf8;
  append_utf8(utf8, code);
  show(utf8);
}

void RtfReader::show(std::string_view utf8) {
  switch (group().destination) {
    case Destination::fonts: return name_fonts(utf8);
    case Destination::colours: return take_colours(utf8);
    case Destination::body: break;
  }
  if (row_is_defined_ || group().in_table) begin_row();
  content_.add(utf8, pen());
}

/// Text of the font table, in which a semicolon ends a name.
void RtfReader::name_fonts(std::string_view text) {
  for (const char c : text) {
    if (c != ';') {
      font_name_ += c;
    } else {
      if (fonts_.size() < most_fonts) fonts_[named_font_] = content_.font(font_name_);
      font_name_.clear();
    }
  }
}

/// Text of the colour table: a semicolon ends a colour.
void RtfReader::take_colours(std::string_view text) {
  for (const char c : text) {
    if (c != ';') continue;
    if (colours_.size() < most_colours) colours_.push_back(mixed_colour_);
    mixed_colour_ = automatic_colour;
  }
}

}  // namespace

bool is_rtf(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t\r\n");
  return begin != text.npos && text.substr(begin).starts_with("{\\rtf");
}

RichTextContent read_rtf(std::string_view rtf) { return RtfReader(rtf).read(); }

}  // namespace tavlo
