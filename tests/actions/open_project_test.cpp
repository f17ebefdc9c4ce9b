#include "actions/open_project.h"

#include <gtest/gtest.h>

#include "actions/announce.h"
#include "actions/dispatch.h"
#include "actions/new_project.h"
#include "actions/records.h"
#include "actions/recovery.h"
#include "actions/save_project.h"
#include "actions/undo.h"
#include "actions/work.h"
#include "fit_world.h"
#include "support/relative_difference.h"

namespace tavlo {
namespace {

/// A person with a fitted project, whose commands end as those of the windows do.
struct OpenProjectTest : ::testing::Test, test::FitWorld {
  OpenProjectTest() : FitWorld({{100}, {150}, {200}, {320}}) {
    fit();
    session.step = "Fit";
    end();
    begin_recovery(session, "/settings/Recovery");
  }

  void end() {
    announce(session);
    end_step(session);
  }
  bool open(const std::string& path) {
    const bool opened = open_project(session, path);
    end();
    return opened;
  }
  /// As it is shown and saved, without what belongs to the run.
  Project held() const {
    Project project = session.project;
    project.work = 0;
    return project;
  }
  std::string boxes() const {
    std::string texts;
    for (const Box& box : prompts.shown()) texts += box.title + ": " + box.text + "\n";
    return texts;
  }
};

TEST_F(OpenProjectTest, AFileThatCanNotBeReadChangesNothing) {
  prompts.accept_all();
  ASSERT_TRUE(save_project_as(session, "/w/pumps.tavlo"));
  end();
  const std::string whole = files.files["/w/pumps.tavlo"];
  files.files["/w/cut.tavlo"] = whole.substr(0, whole.size() / 2);
  files.files["/w/words.txt"] = "these are words\nand no data\n";
  files.files["/w/huge.bin"] = std::string(largest_data_file + 1, '\0');
  const Project before = session.project;
  for (const char* const path :
       {"/w/cut.tavlo", "/w/words.txt", "/w/missing.tavlo", "/w/huge.bin"}) {
    const std::size_t told = prompts.shown().size();
    EXPECT_FALSE(open(path));
    EXPECT_EQ(prompts.shown().size(), told + 1) << boxes();
    EXPECT_NE(prompts.shown().back().text.find(path), std::string::npos) << boxes();
    EXPECT_TRUE(session.project == before) << path;
    EXPECT_FALSE(is_unsaved(session));
  }
  EXPECT_NE(prompts.shown().back().text.find("too large"), std::string::npos) << boxes();
}

TEST_F(OpenProjectTest, ComesBackAsItWasSavedWithItsFitsAndFitsNothing) {
  ASSERT_TRUE(save_project_as(session, "/w/pumps.tavlo"));
  end();
  const FitResult fitted = record(1);
  start_project(session);
  end();
  ASSERT_TRUE(open("/w/pumps.tavlo"));
  EXPECT_EQ(project_title(session), "pumps.tavlo");
  EXPECT_FALSE(is_unsaved(session));
  ASSERT_EQ(fits().nFits, 1);
  EXPECT_EQ(record(1).request, fitted.request);
  EXPECT_LT(test::relative_difference(record(1).Quality, fitted.Quality), 1e-14);
  EXPECT_FALSE(is_out_of_date(record(1), data()));
  EXPECT_EQ(session.project.log.plain().find("Tavlo 5.0DJ©2011 -2019Sat 21 Nov 2026 02:05pm"),
            session.project.log.plain().rfind("Tavlo 5.0DJ"));
  EXPECT_EQ(session.settings.RecentFiles[1], "/w/pumps.tavlo");
  const std::string saved = files.files["/w/pumps.tavlo"];
  ASSERT_TRUE(save_project_as(session, "/w/pumps.tavlo"));
  EXPECT_EQ(files.files["/w/pumps.tavlo~"], saved);
}

// A mixture's likelihood without its suspensions, and a regression of listed rows.
TEST_F(OpenProjectTest, WhatAFitLeavesOutIsToldOfItFromAFileToo) {
  std::vector<test::Point> points = test::infant_and_wear_out();
  points.push_back({2000, 0, 5});
  points.push_back({500, 3});
  put(points);
  fit(model_code::weibull4, method_code::mle);
  fit(model_code::weibull2, method_code::x_on_y);
  const FitSet fitted = fits();
  ASSERT_TRUE(save_project_as(session, "/w/parts.tavlo"));
  start_project(session);
  end();
  ASSERT_TRUE(open("/w/parts.tavlo"));
  ASSERT_EQ(fits().nFits, fitted.nFits);
  const Note left_out{NoteCode::suspensions_left_out, 0, {5}};
  int mixtures = 0;
  for (int slot = 1; slot <= fits().nFits; ++slot) {
    ASSERT_FALSE(record(slot).notes.empty()) << record(slot).Label;
    EXPECT_EQ(record(slot).notes.front(), fitted.Fits(slot).notes.front()) << record(slot).Label;
    mixtures += record(slot).notes.front() == left_out;
  }
  EXPECT_GE(mixtures, 1);
  EXPECT_LT(mixtures, fits().nFits);
}

TEST_F(OpenProjectTest, AFileMayHaveMoreRowsThanAPasteAndEachCanBeTypedInto) {
  for (int row = 0; row <= most_pasted_rows; ++row) files.files["/w/fleet.txt"] += "1234\n";
  ASSERT_TRUE(open("/w/fleet.txt"));
  session.gDataForm(1)->enter(most_pasted_rows + 1, sheet_column::x, "5");
  EXPECT_EQ(data().rows.size(), most_pasted_rows + 1u);
  EXPECT_EQ(data().rows[most_pasted_rows].time, 5);
}

// Only the two lines that tell of it come with each opening and saving.
TEST_F(OpenProjectTest, TenOpeningsAndSavesAddTheirLinesAlone) {
  std::vector<std::size_t> sizes;
  for (int i = 0; i < 10; ++i) {
    ASSERT_TRUE(save_project_as(session, "/w/pumps.tavlo"));
    ASSERT_TRUE(open("/w/pumps.tavlo"));
    sizes.push_back(files.files["/w/pumps.tavlo"].size());
  }
  for (std::size_t i = 1; i < sizes.size(); ++i) EXPECT_LT(sizes[i] - sizes[i - 1], 120u) << i;
}

TEST_F(OpenProjectTest, UndoBringsTheOldProjectBackWithItsFile) {
  ASSERT_TRUE(save_project_as(session, "/w/pumps.tavlo"));
  end();
  const Project pumps = held();
  files.files["/w/motors.txt"] = "10\n20\n>30\n45\n";
  ASSERT_TRUE(open("/w/motors.txt"));
  EXPECT_EQ(data().rows.size(), 4u);
  EXPECT_EQ(project_title(session), "motors");
  EXPECT_TRUE(present_work(session).path.empty());
  ASSERT_TRUE(undo(session));
  end();
  EXPECT_TRUE(held() == pumps);
  EXPECT_EQ(present_work(session).path, "/w/pumps.tavlo");
  EXPECT_FALSE(is_unsaved(session));
  ASSERT_TRUE(redo(session));
  end();
  EXPECT_EQ(project_title(session), "motors");
}

TEST_F(OpenProjectTest, ASaveIsNotTakenBackByUndo) {
  rename_data(session, 1, "Pumps");
  end();
  ASSERT_TRUE(save_project_as(session, "/w/pumps.tavlo"));
  end();
  EXPECT_FALSE(is_unsaved(session));
  ASSERT_TRUE(undo(session));
  end();
  EXPECT_TRUE(is_unsaved(session));
  EXPECT_EQ(present_work(session).path, "/w/pumps.tavlo");
}

// A run that breaks off leaves its copy; the next one, another process, finds it.
TEST_F(OpenProjectTest, ACopyOutlivesTheRunAndTheReplacedProject) {
  keep_copy(session, CopyReason::current);
  finish_copies(session, true);
  ASSERT_EQ(files.files.size(), 1u);
  const auto [path, bytes] = *files.files.begin();
  EXPECT_TRUE(recovery_copies(session).empty()) << "this process runs";

  test::TestWorld next;
  next.files.files["/settings/Recovery/20261121-140000 c p17 w1 n4 Untitled.tavlo"] = bytes;
  begin_recovery(next.session, "/settings/Recovery");
  const auto copies = recovery_copies(next.session);
  ASSERT_EQ(copies.size(), 1u);
  EXPECT_TRUE(copies[0].after_crash);
  EXPECT_EQ(copies[0].points, 4);
  EXPECT_EQ(copies[0].time, "2026-11-21 14:00");
  ASSERT_TRUE(recover(next.session, copies[0]));
  finish_copies(next.session, true);
  EXPECT_TRUE(is_unsaved(next.session));
  for (int row = 1; row <= 5; ++row)
    for (int column = 0; column < sheet_column::susps; ++column)
      EXPECT_EQ(next.session.gDataForm(1)->text(row, column),
                session.gDataForm(1)->text(row, column));
  ASSERT_EQ(next.files.files.size(), 1u) << "its own copy stands for the old one";
  end_step(next.session);
  ASSERT_TRUE(undo(next.session));
  keep_copy(next.session, CopyReason::current);
  finish_copies(next.session, true);
  EXPECT_EQ(next.files.files.size(), 1u) << "undo has left it, but may come back to it";
  ASSERT_TRUE(redo(next.session));
  keep_copy(next.session, CopyReason::current);
  finish_copies(next.session, true);
  ASSERT_EQ(next.files.files.size(), 1u);
  EXPECT_NE(next.files.files.begin()->first.find(" c p"), std::string::npos)
      << "a crash has to be told of again";
  ASSERT_TRUE(save_project_as(next.session, "/w/saved.tavlo"));
  EXPECT_EQ(next.files.files.size(), 1u) << "what is saved needs no copy";
}

TEST_F(OpenProjectTest, WhatIsReplacedWithoutACopyIsToldOfLastAndAskedForOnLeaving) {
  const Project pumps = session.project;
  files.files = {{"/w/motors.txt", "10\n20\n"}, {"/settings/Recovery", "no folder"}};
  ASSERT_TRUE(open("/w/motors.txt"));
  EXPECT_EQ(views.said.back(), "status No recovery copy of Untitled: this is a file");
  session.history.restart(session.project);
  end();
  ASSERT_EQ(uncopied_work(session, {}), pumps.work);
  return_to_work(session, pumps.work);
  end();
  EXPECT_TRUE(session.project == pumps && is_unsaved(session));
  files.files.erase("/settings/Recovery");
  files.fail_at(3);  // the file is read, the folder made, and the copy written
  ASSERT_TRUE(open("/w/motors.txt"));
  finish_copies(session, true);
  tend_copies(session);
  EXPECT_NE(views.said.back().find("No recovery copy of Untitled: fault"), std::string::npos);
  for (const char* const time : {"1", "2"}) {  // the present one is changed all the time
    finish_copies(session, true);
    session.gDataForm(1)->enter(1, sheet_column::x, time);
    tend_copies(session);
  }
  finish_copies(session, true);
  EXPECT_FALSE(session.works.at(pumps.work).copy.empty()) << "it is tried again";
  EXPECT_FALSE(uncopied_work(session, {}));
}

TEST_F(OpenProjectTest, WhatIsReplacedUnsavedIsKeptAndTenCopiesStay) {
  for (int i = 10; i < 25; ++i)
    files.files["/settings/Recovery/202611" + std::to_string(i) + "-140000 r p17 w1 n4 old.tavlo"] =
        "";
  files.files["/settings/Recovery/a person's own file"] = "";
  start_project(session);
  finish_copies(session, true);
  EXPECT_EQ(files.files.size(), 11u);
  EXPECT_EQ(recovery_copies(session).size(), 9u);
  for (const char* const time : {"1", "2"}) {
    session.gDataForm(1)->enter(1, sheet_column::x, time);
    start_project(session);
    finish_copies(session, true);
  }
  EXPECT_EQ(files.files.size(), 11u);
  EXPECT_EQ(recovery_copies(session).size(), 7u) << "two of one name, size and second stand beside";
  EXPECT_TRUE(prompts.shown().empty()) << boxes();
}

}  // namespace
}  // namespace tavlo
