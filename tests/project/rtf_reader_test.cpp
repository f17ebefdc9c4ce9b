#include "project/rtf_reader.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "fuzz/rich_text_law.h"
#include "support/case_list.h"
#include "support/shown_rich_text.h"

namespace tavlo {
namespace {

std::string corpus_file(const std::string& name) {
  std::ifstream file(TAVLO_TEST_DATA "/../fuzz/corpus/rich_text/" + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(RtfReader, ReadsWhatOthersWriteAndWhatIsBroken) {
  for (const auto& row : test::case_list("rtf_texts.txt")) {
    RichText log;
    log.append_rtf(row[0]);
    EXPECT_EQ(test::shown(log), row[1]) << row[0];
    EXPECT_EQ(test::breach_of_rich_text_law(std::string_view(row[0])), "");
  }
}

TEST(RtfReader, TheLogComesBackFromWordProcessors) {
  const RichText log = RichText::from_rtf(corpus_file("log.rtf"));
  EXPECT_NE(test::shown(log).find("[964,2964,4964: a | <b20>b | <20>c ]"), std::string::npos);
  EXPECT_EQ(test::shown(RichText::from_rtf(corpus_file("writer.rtf"))), test::shown(log));
}

TEST(RtfReader, TenRoundsDontGrowADocument) {
  const std::string written = RichText::from_rtf(corpus_file("writer.rtf")).rtf();
  std::string again = written;
  for (int round = 0; round < 10; ++round) again = RichText::from_rtf(again).rtf();
  EXPECT_EQ(again, written);
}

TEST(RtfReader, WhatIsNoRtfIsPlainText) {
  EXPECT_EQ(RichText::from_rtf("two\r\nlines {\\b").plain(), "two\nlines {\\b");
  EXPECT_EQ(RichText::from_rtf("\xE9t\xE9").plain(), "été");
  EXPECT_TRUE(RichText::from_rtf("").empty());
}

TEST(RtfReader, EveryTruncationKeepsTheLaw) {
  const std::string document = corpus_file("log.rtf");
  for (std::size_t size = 0; size < document.size(); ++size)
    ASSERT_EQ(test::breach_of_rich_text_law(std::string_view(document).substr(0, size)), "");
}

// Time and memory that grow faster than the text would end this.
TEST(RtfReader, EndlessRepetitionsEnd) {
  for (const char* const piece : {"{", "}", "{\\*\\x", "{\\b x", "{\\fonttbl{", "{\\colortbl;",
                                  "\\cell", "\\row", "\\trowd ", "\\cellx9", "\\intbl x\\row",
                                  "\\u55357", "\\bin9", "\\'", "\\bin99999999999 ", "\\fs7 x"}) {
    std::string document = "{\\rtf1 ";
    for (int i = 0; i < 100'000; ++i) document += piece;
    EXPECT_EQ(test::breach_of_rich_text_law(std::string_view(document)), "") << piece;
  }
}

}  // namespace
}  // namespace tavlo
