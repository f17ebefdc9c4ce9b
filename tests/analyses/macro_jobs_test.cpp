#include "analyses/macro_jobs.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "analyses/macro_row.h"
#include "fuzz/macro_file_law.h"
#include "life/models.h"
#include "numerics/run_time_error.h"
#include "support/corpus.h"

namespace tavlo {
namespace {

/// The jobs of a text as "line: size transfer method data > result", with the errors.
std::string jobs_of(const std::string& text) {
  std::istringstream lines(text);
  MacroReader reader(
      [&](std::string& line) { return static_cast<bool>(std::getline(lines, line)); });
  std::string told;
  while (const auto job = reader.next())
    told += std::to_string(job->line) + ": " + std::to_string(job->size) + ' ' +
            std::to_string(job->transfer) + ' ' + std::to_string(job->method) + ' ' +
            job->data_file + " > " + job->result_file +
            (job->error != 0 ? " error " + std::to_string(job->error) : "") + '\n';
  return told;
}

TEST(MacroJobs, AreReadItemByItem) {
  const std::pair<const char*, const char*> cases[] = {
      {"", ""},
      {"\n \n", ""},
      {"2,1,3,a.txt,r.txt", "1: 2 1 3 a.txt > r.txt\n"},
      {"2\n1\n3\na.txt\nr.txt\n", "1: 2 1 3 a.txt > r.txt\n"},
      {"\n7 2 1 \"C:\\data\\a, b.txt\" , r.txt", "2: 7 2 1 C:\\data\\a, > b.txt\n"},
      {"2 1 1 a.txt  out of it.txt\n3,1,1,b,r", "1: 2 1 1 a.txt > out of it.txt\n2: 3 1 1 b > r\n"},
      {"\"2\",1,1,a,r", "1: 0 1 1 a > r error 13\n"},
      {"2,1,99999,a,r\n2,1,1.6,a,r", "1: 2 1 0 a > r error 6\n2: 2 1 2 a > r\n"},
      {"2,,1,a,r", "1: 2 0 1 a > r\n"},
      {"2,1,1,a,r\n2,1,1,a", "1: 2 1 1 a > r\n"},
      {"2,1,1,\"a\" junk,r,5,1,2,\"b\",\"q\"", "1: 2 1 1 a > r\n1: 5 1 2 b > q\n"},
      {"2,1,1,\"never closed,r", "1: 2 1 1 never > closed,r\n"},
  };
  for (const auto& [text, jobs] : cases) EXPECT_EQ(jobs_of(text), jobs) << text;
}

TEST(MacroJobs, KeepTheirLawWhateverTheyAreMadeOf) {
  const char* const pieces[] = {"2",     "7,", " ",  "\n",  ",",  "\"",
                                "a.txt", "r",  "-1", "1e9", "\t", "\r"};
  std::mt19937 random(7);
  for (int i = 0; i < 2000; ++i) {
    std::string text;
    for (auto k = random() % 40; k > 0; --k) text += pieces[random() % std::size(pieces)];
    ASSERT_EQ(test::breach_of_macro_law(text), "") << text;
  }
  test::expect_corpus_keeps("macro_file", test::breach_of_macro_law);
}

TEST(MacroJobs, AskForFiveModelsByThreeMethods) {
  for (int size = -1; size <= 9; ++size)
    for (int transfer = 0; transfer <= 3; ++transfer)
      for (int method = 0; method <= 4; ++method) {
        const auto request = request_of({.size = static_cast<std::int16_t>(size),
                                         .transfer = static_cast<std::int16_t>(transfer),
                                         .method = static_cast<std::int16_t>(method)});
        const bool is_model = size == 2 || size == 3 || size == 4 || size == 5 || size == 7;
        EXPECT_EQ(request.has_value(),
                  is_model && (transfer == 1 || transfer == 2) && method >= 1 && method <= 3);
      }
  EXPECT_EQ(request_of({.size = 5, .transfer = 1, .method = 2})->model, model_code::weibull5c);
  EXPECT_EQ(request_of({.size = 5, .transfer = 1, .method = 2})->method, method_code::mle);
  EXPECT_FALSE(request_of({.size = 2, .transfer = 1, .method = 1, .error = 6}));
}

TEST(MacroRow, HasFieldsOfFixedWidth) {
  const std::pair<double, const char*> cases[] = {
      {0, " 0       "},          {123456.7, "123456.7 "},    {0.05, ".050000 "},
      {1e-5, "1.00E-05 "},       {-0.05, "-.050000 "},       {999999, "999999   "},
      {1000000, "1.00E06 "},     {0.1, "0.1      "},         {0.0001, ".000100 "},
      {-1234.5678, "-1234.56 "}, {2.123456789, "2.123457 "},
  };
  for (const auto& [value, field] : cases)
    EXPECT_EQ(macro_row({.size = 7, .method = 2}, -123.456789012, {value}),
              "7 2 0  -123.45678 " + std::string(field) +
                  " 0        0        0        0        0  "
                  "      0       ")
        << value;
  const std::pair<double, const char*> qualities[] = {
      {0.98765432109, "0.98765432 "},     {-123456789.5, "-123456789 "},
      {-1234567890.5, "-1.235E+09 "},     {-0.00000123456789, "-1.235E-06 "},
      {1.23456789012e-20, "1.235E-20  "}, {-12345678901.0, "-1.235E+10 "}};
  for (const auto& [quality, field] : qualities)
    EXPECT_TRUE(macro_row({.size = 2, .method = 2}, quality, {})
                    .starts_with("2 2 0  " + std::string(field) + " 0 "))
        << quality;
}

// Populations A and B act on all units, C on its share; the life has C in front.
TEST(MacroRow, TakesTheParametersOfEachPopulation) {
  const FitParam a{1.0 / 100, 0.75, 2, 0, 3}, b{1.0 / 50, 0, 3, 0, 3}, c{1.0 / 10, 0.25, 4, 0, 1};
  const FitParam none{unreached_scale, 0, 1, 0, 1};
  const FitParam late{1.0 / 100, 1, 2, -7.5, 1};
  using Slots = std::array<double, 7>;
  const std::pair<Life, Slots> cases[] = {
      {{model_code::weibull2, {a}}, {2, 100}},
      {{model_code::weibull3, {late}}, {2, 100, -7.5}},
      {{model_code::weibull4, {a, b}}, {2, 100, 3, 50}},
      {{model_code::weibull5c, {c, a}}, {2, 100, 4, 10, 0.25}},
      {{model_code::weibull5c, {none, a}}, {2, 100}},
      {{model_code::weibull7, {c, a, b}}, {2, 100, 3, 50, 4, 10, 0.25}},
  };
  for (const auto& [life, slots] : cases) {
    const Slots taken = macro_parameters(life);
    for (std::size_t i = 0; i < slots.size(); ++i)
      EXPECT_NEAR(taken[i], slots[i], 1e-12) << life.model << ' ' << i;
  }
}

}  // namespace
}  // namespace tavlo
