#include "numerics/error_reporter.h"

#include <gtest/gtest.h>

#include <new>

#include "numerics/slots.h"
#include "support/reporter_test.h"

namespace tavlo {
namespace {

struct Reported : test::ReporterTest {
  void report(int code, int number = 0) {
    reporter.gErrCode = code;
    const RunTimeError error(number);
    reporter.Error_Chk_Show(number == 0 ? nullptr : &error);
  }
};

TEST_F(Reported, every_code_has_its_detail_and_title) {
  using Row = std::tuple<int, int, const char*, const char*, int>;
  reporter.gErrCount = 17;
  for (const auto& [code, number, title, detail, last] :
       {Row{1001, 5, "Inputs out of bounds", "Invalid input", 1001},
        Row{1002, 0, "Excessive iterations: 17", "Excessive iterations", 1002},
        Row{0, 62, "Error: 62 Input past end of file", "Input past end of file", 62}}) {
    prompts.expect_box(title, detail);
    reporter.add_lines({"Prefix", "Place:"});
    report(code, number);
    EXPECT_EQ(prompts.shown().back().title, title);
    EXPECT_EQ(prompts.shown().back().text, "Prefix\nPlace:\n" + std::string(detail));
    EXPECT_EQ(reporter.gErrLast, last);
    EXPECT_EQ(reporter.gErrCode, 0);
    EXPECT_EQ(reporter.gErrDetail + reporter.gErrTitle, "");
  }
}

TEST_F(Reported, repeats_are_left_out_for_25_seconds) {
  prompts.accept_all();
  reporter.gErrMode = 8;
  using Row = std::tuple<double, int, std::size_t>;
  const Row rows[] = {{0, 1001, 1}, {0, 1001, 1}, {0, 1002, 2}, {25, 1002, 2}, {25.5, 1002, 3}};
  for (const auto& [seconds, code, boxes] : rows) {
    clock.advance(seconds);
    report(code);
    EXPECT_EQ(prompts.shown().size(), boxes) << code << " after " << seconds;
  }
}

TEST_F(Reported, guarded_reports_and_gives_the_fallback) {
  prompts.expect_box("Error: 9 Subscript out of range", "Place:\nSubscript out of range");
  prompts.expect_box("Error: 7 Out of memory", "Place:\nOut of memory");
  const Slots<int> slots(3, 8);
  const auto words = error_words("Place:");
  const auto element = [&](int index) {
    return guarded(reporter, -1, words, [&] { return slots(index); });
  };
  EXPECT_EQ(element(0), 8);
  EXPECT_EQ(element(3), 8);
  EXPECT_EQ(element(4), -1);
  EXPECT_EQ(guarded(reporter, -1, words, []() -> int { throw std::bad_alloc(); }), -1);
  EXPECT_THROW(slots(-1), RunTimeError);
}

}  // namespace
}  // namespace tavlo
