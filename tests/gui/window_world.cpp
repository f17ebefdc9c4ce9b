#include "gui/window_world.h"

#include <QTest>
#include <algorithm>
#include <cstdlib>

#include "workspace/qt/look.h"

namespace tavlo::test {

void WindowWorld::SetUp() {
  show_fitting(window);
  // A window manager that is still starting may miss a window that asks for the keyboard.
  for (int asked = 0; asked < 10 && !QTest::qWaitForWindowActive(&window, 2000); ++asked)
    window.activateWindow();
  ASSERT_TRUE(window.isActiveWindow());
  ASSERT_TRUE(wait_until([&] { return window.windows().sheet(1).hasFocus(); }));
}

QWidget& WindowWorld::widget(const char* name) {
  auto* found = window.findChild<QWidget*>(QString::fromUtf8(name));
  if (!found) {
    ADD_FAILURE() << "there is no " << name;
    return window;
  }
  return *found;
}

void WindowWorld::type_handbook_example() {
  person.type("54\n187\n216\n240\n244\n335\n361\n373\n375\n386\n>500x10\n");
  ASSERT_TRUE(wait_until([&] { return sheet().row() == 12; })) << "row " << sheet().row();
}

bool WindowWorld::chart_has_fit_line() {
  const auto& records = window.windows().chart(1).drawing().records;
  return std::any_of(records.begin(), records.end(), [](const drawing::Record& record) {
    const auto* line = std::get_if<drawing::Polyline>(&record);
    if (!line || line->places.size() < 2) return false;
    const auto& from = line->places.front();
    const auto& to = line->places.back();
    return std::abs(to.x - from.x) > 500 && std::abs(to.y - from.y) > 500;
  });
}

}  // namespace tavlo::test
