#include "life/models.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace tavlo {
namespace {

TEST(Models, NamesOfAFitJoinModelAndMethodWithoutABlank) {
  struct Row {
    int model;
    int method;
    const char* short_name;
    const char* long_name;
  };
  const Row rows[] = {{98, 0, "W/rr", "Weibull(Rank Regression)"},
                      {98, 1, "W/MLE", "Weibull(Max Liklihood)"},
                      {98, 2, "W/rrs", "Weibull(Special Regression, Y on X)"},
                      {98 + 2048, 0, "W/rr", "Weibull(Rank Regression)"},
                      {546, 0, "W/rr", "Weibull (12 Month)(Rank Regression)"},
                      {610, 1, "W/MLE", "Weibull (360 day)(Max Liklihood)"},
                      {922, 1, "LN/MLE", "LogNormal(Max Liklihood)"},
                      {1057, 0, "G-/rr", "Gumbel Lower(Rank Regression)"},
                      {5, 0, "/rr", "(Rank Regression)"},
                      {98, 3, "W", "Weibull"},
                      {98, -1, "W", "Weibull"}};
  for (const Row& row : rows) {
    const ModelNames names = fs_ModelNames(row.model, row.method);
    EXPECT_EQ(names.short_name, row.short_name) << row.model << ", " << row.method;
    EXPECT_EQ(names.long_name, row.long_name) << row.model << ", " << row.method;
  }
}

TEST(Models, TheScalesInACodeAreThoseOfItsFamily) {
  for (const Model& model : models()) {
    const bool log_time = model.x_scale() == x_scale::log;
    switch (model.family) {
      case Family::weibull:
        EXPECT_TRUE(log_time && model.y_scale() == y_scale::weibull) << model.code;
        break;
      case Family::normal:
        EXPECT_TRUE(!log_time && model.y_scale() == y_scale::normal) << model.code;
        break;
      case Family::lognormal:
        EXPECT_TRUE(log_time && model.y_scale() == y_scale::normal) << model.code;
        break;
      case Family::gumbel: EXPECT_EQ(model.x_scale(), x_scale::linear) << model.code; break;
      case Family::none: EXPECT_EQ(model.code & (x_scale_mask | y_scale_mask), 0) << model.code;
    }
  }
}

TEST(Models, CodesNamesAndPanelRowsAreUnique) {
  std::set<int> codes;
  std::set<int> panel_rows;
  std::set<std::string> names;
  for (const Model& model : models()) {
    EXPECT_TRUE(codes.insert(model.code).second) << model.code;
    if (model.panel_row >= 0) {
      EXPECT_TRUE(panel_rows.insert(model.panel_row).second) << model.code;
    }
    const std::string name = model.command_name;
    if (name.empty()) continue;
    EXPECT_TRUE(names.insert(name).second) << name;
    EXPECT_EQ(find_model_by_name(name), &model) << name;
  }
  EXPECT_EQ(codes.size(), 19u);
  EXPECT_EQ(find_model_by_name("w2p")->code, 98) << "names are found in any case";
  EXPECT_EQ(find_model_by_name(""), nullptr);
  EXPECT_EQ(find_method_by_name("RRS")->code, 2);
}

TEST(Models, AModelContainsOnlySmallerOnesOfItsFamily) {
  for (const Model& model : models())
    for (const std::int16_t code : model.contains) {
      const Model* smaller = find_model(code);
      ASSERT_TRUE(smaller);
      EXPECT_LT(smaller->free_parameters, model.free_parameters) << model.code;
      EXPECT_EQ(smaller->family, model.family) << model.code;
      for (const std::int16_t within : smaller->contains)
        EXPECT_NE(std::find(model.contains.begin(), model.contains.end(), within),
                  model.contains.end())
            << model.code;
    }
  EXPECT_EQ(find_model(model_code::weibull7)->contains.size(), 3u);
}

}  // namespace
}  // namespace tavlo
