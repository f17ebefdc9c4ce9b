#include "support/case_list.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <fstream>
#include <sstream>

#include "numerics/number_text.h"

namespace tavlo::test {
namespace {

constexpr std::string_view arrow = " => ";

std::string unescaped(const std::string& line) {
  std::string text;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char sign = line[i] == '\\' ? line[++i] : '\0';
    const bool is_number = sign == 'x';
    text += is_number     ? static_cast<char>(std::stoi(line.substr(i + 1, 2), nullptr, 16))
            : sign == 'n' ? '\n'
            : sign == 't' ? '\t'
            : sign == 'r' ? '\r'
                          : line[i];
    if (is_number) i += 2;
  }
  return text;
}

}  // namespace

std::vector<std::vector<std::string>> case_list(const std::string& name) {
  std::vector<std::vector<std::string>> cases;
  std::ifstream file(TAVLO_TEST_DATA "/" + name);
  for (std::string line; std::getline(file, line);) {
    if (line.ends_with(" =>")) line += ' ';  // a last field that is empty
    std::size_t from = 0, at = line.find(arrow);
    if (at == line.npos) continue;
    std::vector<std::string>& fields = cases.emplace_back();
    for (; at != line.npos; at = line.find(arrow, from = at + arrow.size()))
      fields.push_back(unescaped(line.substr(from, at - from)));
    fields.push_back(unescaped(line.substr(from)));
  }
  EXPECT_FALSE(cases.empty()) << name;
  return cases;
}

double number_in(const std::string& field) {
  double number = NAN;
  std::from_chars(field.data(), field.data() + field.size(), number);
  return number;
}

std::vector<FitParam> fit_rows(const std::string& text) {
  std::vector<FitParam> rows;
  std::istringstream words(text);
  for (std::string scale; words >> scale;) {
    FitParam& row = rows.emplace_back();
    const bool inverse = scale.starts_with("1/");
    const double number = parse_number(scale.substr(inverse ? 2 : 0)).value_or(unreached_scale);
    row.Scale = inverse ? 1 / number : number;
    words >> row.Fraction >> row.Shape >> row.T0 >> row.Applies;
  }
  EXPECT_TRUE(words.eof()) << text;
  return rows;
}

}  // namespace tavlo::test
