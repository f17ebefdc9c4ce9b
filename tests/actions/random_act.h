// Random act: what people do, in any order, each act ended as a command is.
#pragma once

#include <array>
#include <random>

#include "actions/announce.h"
#include "actions/clipboard_text.h"
#include "actions/intake.h"
#include "actions/new_project.h"
#include "actions/records.h"
#include "actions/shown_fits.h"
#include "actions/undo.h"
#include "support/test_world.h"

namespace tavlo::test {

inline void act_at_random(TestWorld& world, std::mt19937_64& random) {
  const auto pick = [&](int from, int to) {
    return from + static_cast<int>(random() % static_cast<std::uint64_t>(to - from + 1));
  };
  Session& session = world.session;
  const int set = pick(1, session.project.data.bound());
  const int fit = pick(1, std::max(session.project.fits(set).nFits, 1));
  DataSheet& typed = *session.gDataForm(set);
  switch (pick(0, 20)) {
    case 0: typed.enter(pick(1, 12), pick(1, 6), pick(0, 1) ? "word" : ""); break;
    case 1: typed.clear({pick(1, 6), 0, pick(4, 12), pick(1, 6)}); break;
    case 2:
      world.clipboard.plain = "1" + std::to_string(pick(10, 99)) + "\n200x3\n>300\n";
      typed.go_to(pick(1, 9), sheet_column::x);
      PasteClip(session, set);
      break;
    case 3: session.project.charts(1).Boxes(chart_item::main_title).Text2 += '!'; break;
    case 4:
      if (session.project.data.bound() < 3) add_data_set(session);
      break;
    case 5:
      if (session.project.charts.bound() < 3) add_chart(session);
      break;
    case 6: delete_set(session, set); break;
    case 7: delete_chart(session, pick(1, session.project.charts.bound())); break;
    case 8: delete_fit(session, set, fit); break;
    case 9: rename_data(session, set, "Pump " + std::to_string(pick(1, 9))); break;
    case 10: rename_fits(session, set, "Fits " + std::to_string(pick(1, 9))); break;
    case 11: set_shown(session, set, fit, pick(0, 1) == 1); break;
    case 12: start_project(session); break;
    case 13:
    case 14:
    case 15:
      session.gFitForm(set)->nModel = std::array<std::int16_t, 3>{98, 922, 857}[random() % 3];
      session.gFitForm(set)->nMethod = static_cast<std::int16_t>(pick(0, 1));
      CheckAndFit(session, set);
      break;
    default: typed.enter(pick(1, 9), sheet_column::x, std::to_string(pick(1, 900)));
  }
  announce(session);
  end_step(session);
}

}  // namespace tavlo::test
