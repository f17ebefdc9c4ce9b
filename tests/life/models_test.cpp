#include "life/models.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace tavlo {
namespace {

TEST(Models, CodesNamesAndScalesAgree) {
  std::set<int> codes;
  for (const Model& model : models()) {
    SCOPED_TRACE(model.code);
    EXPECT_TRUE(codes.insert(model.code).second);
    EXPECT_EQ(find_model(model.code + 2048), &model) << "bits above are not the model's";
    std::string name = model.command_name;
    std::transform(name.begin(), name.end(), name.begin(), ::tolower);
    EXPECT_EQ(find_model_by_name(name), name.empty() ? nullptr : &model) << "in any case";
    if (model.family != Family::none) {
      EXPECT_EQ(model.x_scale() == x_scale::log,
                model.family == Family::weibull || model.family == Family::lognormal);
      EXPECT_EQ(model.y_scale() == y_scale::normal,
                model.family == Family::normal || model.family == Family::lognormal);
    }
    for (const std::int16_t code : model.contains) {
      EXPECT_LT(find_model(code)->free_parameters, model.free_parameters);
      for (const std::int16_t within : find_model(code)->contains)
        EXPECT_EQ(std::count(model.contains.begin(), model.contains.end(), within), 1);
    }
  }
  EXPECT_EQ(fs_ModelNames(610, 1).long_name, "Weibull (360 day)(Max Liklihood)");
  EXPECT_EQ(fs_ModelNames(98 + 2048, 2).short_name, "W/rrs");
  EXPECT_EQ(fs_ModelNames(98, 3).short_name, "W");
}

}  // namespace
}  // namespace tavlo
