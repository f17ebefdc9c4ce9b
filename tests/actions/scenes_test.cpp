// Scenes: what a person does with records, sheets and fits, step by step, and what is seen then.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <optional>
#include <sstream>

#include "actions/random_act.h"
#include "actions/reports.h"
#include "chart/scales/chart_view.h"
#include "project/plot_rows.h"
#include "support/case_list.h"
#include "support/sheet_world.h"

namespace tavlo {
namespace {

/// "type 5 3 7": its name, up to two numbers, what is behind these and what behind the name.
struct Words {
  explicit Words(const std::string& words) {
    std::istringstream stream(words);
    stream >> name;
    if (words.size() > name.size()) all = words.substr(name.size() + 1);
    stream >> a >> b;
    std::getline(stream.ignore(1), text);
  }
  std::string name, all, text;
  int a = 0, b = 0;
};

class Scene : public test::SheetWorld {
 public:
  Scene() : SheetWorld({}) {
    prompts.accept_all();
    session.history.restart(session.project);
    session.step.clear();
  }
  /// Steps as "type 1 1 300; press 98 0", each ended as a command is.
  void act(const std::string& steps) {
    views.said.clear();
    std::istringstream list(steps);
    for (std::string step; std::getline(list >> std::ws, step, ';');) {
      take(Words(step));
      announce(session);
      end_step(session);
    }
  }
  std::string seen(const Words& words);
  bool has_told_all() const { return boxes_seen_ == prompts.shown().size(); }

 private:
  void take(const Words& words);
  Chart& chart() { return session.project.charts(1); }
  const FitSet& fits() { return session.project.fits(1); }
  void press(int model, int method) {
    panel().nModel = static_cast<std::int16_t>(model);
    panel().nMethod = static_cast<std::int16_t>(method);
    CheckAndFit(session, 1);
  }
  void paste(const std::string& text) {
    clipboard.plain = text;
    PasteClip(session, 1);
  }
  void type_times(const std::string& times) {
    std::istringstream words(times);
    std::string text;
    for (int row = 1; words >> text; ++row)
      sheet().enter(row, sheet_column::x, text == "-" ? "" : text);
  }
  std::string colour(int fit) {
    const auto found = shown_colour(session, 1, fit);
    return found ? std::to_string(*found) : "none";
  }
  /// "1:2 1:3*": fit set and number of each row that shows one, a star where it is tied.
  std::string rows(int index) {
    std::string text;
    const Chart& shown = session.project.charts(index);
    for (int row = 1; row <= shown.nMarkers; ++row)
      if (const int set = fit_set_of(session.project, shown.Markers(row)); set != 0)
        text += (text.empty() ? "" : " ") + std::to_string(set) + ":" +
                std::to_string(shown.Markers(row).FitNumber) + (shown.Markers(row).Tied ? "*" : "");
    return text;
  }
  std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) all += text + "|";
    return all;
  }
  std::string boxes() {
    std::string texts;
    for (; !has_told_all(); ++boxes_seen_)
      texts += prompts.shown()[boxes_seen_].title + ": " + prompts.shown()[boxes_seen_].text + "|";
    return texts;
  }
  std::string count_in_log(const std::string& words) {
    int count = 0;
    for (std::size_t at = 0; (at = log().find(words, at)) != std::string::npos; ++at) ++count;
    return std::to_string(count);
  }
  std::string sample() {
    std::string text;
    const Sample& of = data().sample();
    for (std::size_t i = 0; i < of.size(); ++i)
      text += std::to_string(of.entry[i]) + ":" +
              std::to_string(std::lround(outer_time(of, of.time[i]))) + " ";
    return text + std::to_string(std::lround(of.total_failures)) + "F " +
           std::to_string(std::lround(of.total_suspensions)) + "S";
  }

  std::size_t boxes_seen_ = 0;
  bool yes_ = false;
};

void Scene::take(const Words& words) {
  const int first = words.a, second = words.b;
  const std::string &whole = words.all, &rest = words.text;
  const std::map<std::string, std::function<void()>> acts = {
      {"new", [&] { type_times(whole); }},
      {"type", [&] { sheet().enter(first, second, rest); }},
      {"clear",
       [&] {
         sheet().clear(GridBlock{first, 1, first, 6});
       }},
      {"cell", [&] { sheet().go_to(first, second); }},
      {"paste", [&] { paste(whole); }},
      {"read", [&] { CheckDirtyData(session, 1, yes_); }},
      {"press", [&] { press(first, second); }},
      {"show", [&] { set_shown(session, 1, first, true); }},
      {"hide", [&] { set_shown(session, 1, first, false); }},
      {"tie", [&] { chart().Markers(first).Tied = true; }},
      {"add_set", [&] { add_data_set(session); }},
      {"add_chart", [&] { add_chart(session); }},
      {"delete_set", [&] { yes_ = delete_set(session, first); }},
      {"delete_chart", [&] { yes_ = delete_chart(session, first); }},
      {"delete_fit", [&] { yes_ = delete_fit(session, 1, first); }},
      {"rename", [&] { yes_ = rename_data(session, 1, whole); }},
      {"rename_second", [&] { yes_ = rename_data(session, 2, whole); }},
      {"rename_fits", [&] { yes_ = rename_fits(session, 1, whole); }},
      {"method", [&] { session.gFitForm(first)->nMethod = static_cast<std::int16_t>(second); }},
      {"show_last", [&] { session.settings.ShowLast = first != 0; }},
      {"sort", [&] { session.settings.SortRaw = true; }},
      {"busy", [&] { panel().busy = true; }},
      {"saved", [&] { mark_saved(session); }},
      {"zoom",
       [&] {
         zoom_to(chart(), {2, 3}, {0.1, 0.5});
       }},
      {"zoom_back", [&] { zoom_back(chart()); }},
      {"end_zoom", [&] { end_zoom(chart()); }},
      {"limit", [&] { set_limit(chart(), 0, &ChartAxis::Max, first); }},
      {"data_limits",
       [&] {
         take_data_limits(chart().Axes(0), {10, 100});
       }},
      {"undo", [&] { undo(session); }},
      {"redo", [&] { redo(session); }}};
  acts.at(words.name)();
}

std::string Scene::seen(const Words& words) {
  const int first = words.a, second = words.b;
  const auto text = [](auto number) { return std::to_string(number); };
  const History& history = session.history;
  const std::map<std::string, std::function<std::string()>> sights = {
      {"rows", [&] { return rows(first); }},
      {"column", [&] { return joined(column(first)); }},
      {"cell", [&] { return sheet().text(first, second); }},
      {"row", [&] { return text(sheet().row()); }},
      {"last_row", [&] { return text(sheet().last_row()); }},
      {"sample", [&] { return sample(); }},
      {"modes",
       [&] {
         return joined({data().ModeNames.begin(), data().ModeNames.end()});
       }},
      {"is_read", [&] { return text(data().is_read()); }},
      {"yes", [&] { return text(yes_); }},
      {"fits", [&] { return text(fits().nFits); }},
      {"eta", [&] { return text(std::lround(1 / fits().Fits(1).Rows(1).Scale)); }},
      {"grid", [&] { return text(panel().grd_Fit.rows()); }},
      {"busy", [&] { return text(panel().busy); }},
      {"method", [&] { return text(session.gFitForm(first)->nMethod); }},
      {"colour", [&] { return colour(first); }},
      {"log", [&] { return log(); }},
      {"logged", [&] { return count_in_log(words.all); }},
      {"boxes", [&] { return boxes(); }},
      {"said", [&] { return joined(views.said); }},
      {"told", [&] { return text(views.count(words.all)); }},
      {"title", [&] { return data().Title; }},
      {"fits_title", [&] { return fits().Title; }},
      {"unsaved", [&] { return text(is_unsaved(session)); }},
      {"undo", [&] { return history.can_undo() ? history.undo_name() : "none"; }},
      {"redo", [&] { return history.can_redo() ? history.redo_name() : "none"; }},
      {"depth", [&] { return text(zoom_depth(chart())); }},
      {"cells", [&] { return panel().grd_Fit.text(first, second); }},
      {"notes", [&] { return notes_at(session, 1, first); }},
      {"label", [&] { return fits().Fits(first).Label; }},
      {"remark", [&] { return panel().remark; }}};
  return sights.at(words.name)();
}

// An answer that ends in "..." is only the beginning of what is seen.
TEST(Scenes, ShowWhatIsStated) {
  std::optional<Scene> scene;
  for (const auto& row : test::case_list("scenes.txt")) {
    SCOPED_TRACE(row[0]);
    if (row[0].starts_with("new")) scene.emplace();
    scene->act(row[0]);
    for (std::size_t i = 1; i + 1 < row.size(); i += 2) {
      const std::string seen = scene->seen(Words(row[i])), &wanted = row[i + 1];
      const bool is_open = wanted.ends_with("...");
      EXPECT_EQ(is_open ? seen.substr(0, wanted.size() - 3) + "..." : seen, wanted) << row[i];
    }
    EXPECT_TRUE(scene->has_told_all()) << scene->seen(Words("boxes"));
  }
}

}  // namespace
}  // namespace tavlo
