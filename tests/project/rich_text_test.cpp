#include "project/rich_text.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "project/code_page.h"

namespace tavlo {
namespace {

TEST(RichText, RandomTextSurvives) {
  std::mt19937_64 random(11);
  for (int round = 0; round < 300; ++round) {
    std::string text;
    for (int i = 0; i < 30; ++i) {
      char32_t code = static_cast<char32_t>(random() % 0x11000);
      if (code < 32 || (code >= 0xD800 && code < 0xE000)) code = 'x';
      if (random() % 3 == 0) code = static_cast<unsigned char>("\\{}\n\t'u"[random() % 7]);
      append_utf8(text, code);
    }
    RichText log;
    log.append_plain(text);
    ASSERT_EQ(rtf_to_plain(log.rtf()), text);
  }
}

TEST(RichText, ReadsTheRtfOfOthers) {
  const std::pair<const char*, const char*> rows[] = {
      {"{\\rtf1{\\fonttbl{\\f0 Arial;}}\\b bold\\b0  text\\par}", "bold text\n"},
      {"\\'e9t\\'e9 \\'80", "été €"},
      {"{\\*\\generator x;}seen", "seen"},
      {"\\u8211-dash", "–dash"},
      {"\\u-3913?x", "\xEF\x82\xB7x"},
      {"{unclosed {group", "unclosed group"},
      {"stray } brace\\", "stray  brace"},
      {"\\'zz", "zz"},
      {"\\u99999999999999999999 x", ""},
      {"a\r\nb\\line c", "ab\nc"}};
  for (const auto& [rtf, plain] : rows) EXPECT_EQ(rtf_to_plain(rtf), plain) << rtf;
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

TEST(RichText, WordsBehindAControlWordAreKept) {
  for (const char* const words : {"Data1", "2nd test", "-5", " led"}) {
    RichText log;
    log.append_rtf("\\par Updated Fits below. \\par");
    log.append_plain(words);
    EXPECT_EQ(log.plain(), std::string("\nUpdated Fits below. \n") + words);
  }
}

TEST(RichText, WhatIsBehindAnEarlierStateContinuesIt) {
  std::mt19937_64 random(5);
  std::vector<RichText> states(1);
  for (int i = 0; i < 200; ++i) {
    RichText next = states.back();
    const char* const pieces[] = {"\\par", " led", "7 rows", "", "{\\b bold}\\tab", "x\\par "};
    next.append_rtf(pieces[random() % 6]);
    next.append_plain(random() % 2 ? " {1}\n" : "");
    states.push_back(next);
  }
  for (std::size_t to = 0; to < states.size(); to += 7)
    for (std::size_t from = 0; from <= to; from += 3)
      EXPECT_EQ(states[from].plain() + states[to].plain_behind(states[from]).value_or("none"),
                states[to].plain());
  RichText other;
  other.append_plain("other");
  EXPECT_FALSE(states.back().plain_behind(other));
  EXPECT_FALSE(states.front().plain_behind(states.back()));
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
}

}  // namespace
}  // namespace tavlo
