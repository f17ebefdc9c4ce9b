#include "project/rich_text.h"

#include <gtest/gtest.h>

#include <random>
#include <thread>
#include <vector>

#include "fuzz/rich_text_law.h"
#include "project/code_page.h"
#include "project/rtf_writer.h"
#include "support/shown_rich_text.h"

namespace tavlo {
namespace {

/// Everything that a document can hold, and much that it can't.
class RandomDocuments {
 public:
  RichText draw() {
    RichTextContent content;
    for (int i = number(12); i > 0; --i)
      if (number(4) == 0)
        add_row(content);
      else
        content.add(text(), style(content));
    return RichText(std::move(content));
  }

  std::string text() {
    std::string text;
    for (int i = number(20); i > 0; --i) append_utf8(text, character());
    return text;
  }

 private:
  int number(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }

  char32_t character() {
    constexpr std::string_view signs = "\\{};\n\t '?u-*0a\r\x1D\x1E\x1F";
    if (number(2) == 0) return static_cast<unsigned char>(signs[random_() % signs.size()]);
    const auto code = static_cast<char32_t>(random_() % (number(2) == 0 ? 0x100 : 0x110000));
    return code >= 0xD800 && code < 0xE000 ? U'\uFFFD' : code;
  }

  TextStyle style(RichTextContent& content) {
    TextStyle style;
    style.bold = number(2) == 0;
    style.italic = number(4) == 0;
    style.underline = number(4) == 0;
    if (number(3) == 0) style.half_points = static_cast<std::uint16_t>(1 + number(3276));
    if (number(3) == 0) style.colour = static_cast<std::uint32_t>(number(0x1000000));
    if (number(3) == 0) style.font = content.font(text());
    return style;
  }

  void add_row(RichTextContent& content) {
    content.begin_row();
    std::vector<int> edges;
    for (int i = number(number(20) == 0 ? 300 : 5); i >= 0; --i) {
      content.add(text(), style(content));
      content.end_cell();
      if (number(9) != 0) edges.push_back(number(9) * 1000 - 500);
    }
    content.end_row(edges);
  }

  std::mt19937_64 random_{11};
};

TEST(RichText, RandomDocumentsComeBackFromRtf) {
  RandomDocuments documents;
  for (int round = 0; round < 2000; ++round)
    ASSERT_EQ(test::breach_of_rich_text_law(documents.draw()), "");
}

TEST(RichText, RandomTextSurvives) {
  RandomDocuments documents;
  for (int round = 0; round < 1000; ++round) {
    std::string text = documents.text();
    RichText log, escaped;
    log.append_plain(text);
    escaped.append_rtf(rtf_text(text));
    EXPECT_EQ(escaped.plain(), log.plain());
    for (const char* const line_end : {"\r\n", "\r"})
      for (std::size_t at; (at = text.find(line_end)) != text.npos;)
        text.replace(at, std::string_view(line_end).size(), "\n");
    std::erase_if(
        text, [](char c) { return (c >= 0 && c < ' ' && c != '\n' && c != '\t') || c == '\x7F'; });
    ASSERT_EQ(RichText::from_rtf(log.rtf()).plain(), text);
  }
}

TEST(CodePage, EveryByteGoesToTextAndBack) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string bytes(1, static_cast<char>(byte));
    const std::string text = utf8_from_ansi(bytes);
    EXPECT_TRUE(is_utf8(text)) << byte;
    EXPECT_EQ(ansi_from_utf8(text), bytes) << byte;
  }
  std::string lost;
  EXPECT_EQ(ansi_from_utf8("β = 2 €", &lost), "? = 2 \x80");
  EXPECT_EQ(lost, "β");
}

TEST(CodePage, TellsTextFromBytes) {
  for (const char* text : {"", "abc", "é", "€", "\xF0\x9F\x94\xA7", "\xEF\xBF\xBD"})
    EXPECT_TRUE(is_utf8(text)) << text;
  for (const char* bytes : {"\xE9t\xE9", "\x80", "\xC0\xAF", "\xED\xA0\x80", "\xF5\x80\x80\x80",
                            "\xE2\x82", "\xF4\x90\x80\x80"})
    EXPECT_FALSE(is_utf8(bytes)) << bytes;
}

TEST(RichText, WhatIsBehindAnEarlierStateContinuesIt) {
  RandomDocuments documents;
  std::vector<RichText> states(1);
  for (int i = 0; i < 60; ++i) {
    RichText next = states.back();
    next.append(documents.draw());
    next.append_plain(i % 3 == 0 ? " {1}\n" : "");
    next.append_rtf(i % 2 == 0 ? "\\par {\\b bold \\par" : "7 rows");
    states.push_back(next);
  }
  for (std::size_t to = 0; to < states.size(); to += 7)
    for (std::size_t from = 0; from <= to; from += 3) {
      const RichText earlier = RichText::from_rtf(states[from].rtf());  // shares nothing
      const RichText added = states[to].behind(from % 2 ? earlier : states[from]).value();
      EXPECT_EQ(earlier.plain() + added.plain(), states[to].plain());
      RichText joined = states[from];
      joined.append(added);
      EXPECT_TRUE(joined == states[to]) << test::shown(joined);
      EXPECT_EQ(states[from].behind(states[to]).has_value(), from == to);
    }
  RichText plain, bold;
  plain.append_rtf("one");
  bold.append_rtf("\\b one");
  EXPECT_FALSE(plain == bold);
  EXPECT_FALSE(bold.behind(plain));
}

TEST(RichText, CopiesKeepTheirEnd) {
  RichText log;
  log.append_plain("one");
  const RichText before = log;
  RichText other = log;
  log.append_plain(" two");
  other.append_plain(" three");
  EXPECT_EQ(before.plain(), "one");
  EXPECT_EQ(log.plain(), "one two");
  EXPECT_EQ(other.plain(), "one three");
  EXPECT_FALSE(log == other);
  log.append(log);
  EXPECT_EQ(log.plain(), "one twoone two");
  log.clear();
  EXPECT_TRUE(log.empty() && log == RichText());
}

TEST(RichText, ACopyIsReadWhileTheLogGrows) {
  RichText log;
  log.append_plain("first\n");
  const RichText copy = log;
  std::thread reader([copy] {
    for (int i = 0; i < 2000; ++i) EXPECT_EQ(RichText::from_rtf(copy.rtf()), copy);
  });
  for (int i = 0; i < 20'000; ++i) log.append_rtf("{\\b line}\\par ");
  reader.join();
  EXPECT_EQ(copy.plain(), "first\n");
}

}  // namespace
}  // namespace tavlo
