#include "files/path_form.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "support/case_list.h"

namespace tavlo {
namespace {

std::string environment(const std::string& name) {
  static const std::map<std::string, std::string> values = {
      {"HOMEDRIVE", "C:"}, {"HOME", "/home/u"}, {"A", "%B%"}, {"B", "b"}, {"Q", "\"q'"}};
  const auto found = values.find(name);
  return found == values.end() ? "" : found->second;
}

std::string form_of(const std::string& system, const std::string& path) {
  const auto nobody = [](const std::string&) { return std::string(); };
  if (system == "windows") return NormalFormWindows(path, environment);
  return NormalFormPosix(path, system == "posix" ? Environment(environment) : nobody);
}

TEST(PathForm, BothSystemsFormsAreAsStated) {
  for (const auto& each : test::case_list("path_forms.txt"))
    EXPECT_EQ(form_of(each[0], each[1]), each[2]) << each[0] << ": " << each[1];
}

TEST(PathForm, AFormIsItsOwnForm) {
  std::mt19937_64 random(7);
  const std::string letters = "ab.:\\/~-";
  for (int round = 0; round < 20000; ++round) {
    std::string path;
    for (auto length = random() % 12; length > 0; --length) path += letters[random() % 8];
    for (const char* system : {"windows", "posix"}) {
      // A path as short as "a\" keeps its end in the first pass.
      const std::string form = form_of(system, form_of(system, path));
      EXPECT_EQ(form_of(system, form), form) << system << ": " << path;
    }
  }
}

}  // namespace
}  // namespace tavlo
