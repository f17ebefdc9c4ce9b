// Import: what is shown of a file is what becomes of it.
#include "actions/import_data.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "actions/announce.h"
#include "actions/undo.h"
#include "actions/work.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

struct ImportWorld : test::TestWorld {
  explicit ImportWorld(const std::string& bytes) {
    files.files["/data/Pumpen.v2.csv"] = bytes;
    EXPECT_TRUE(file.load(session, "/data/Pumpen.v2.csv"));
    announce(session);
    session.step.clear();
    session.history.restart(session.project);
  }

  ImportPreview look() { return preview_import(session, file, choices); }
  std::string words() { return words_of(file, look()); }
  int import() {
    const int index = import_data(session, file, choices, fault);
    announce(session);
    end_step(session);
    return index;
  }
  std::string points() {
    std::string text;
    for (const std::string& point : look().points) text += (text.empty() ? "" : "; ") + point;
    return text;
  }

  ImportFile file;
  ImportChoices choices;
  std::optional<ReadFault> fault;
};

constexpr const char* pumps =
    "Gerät;Laufzeit;Zustand;Stück;Notiz\n"
    "A1;1000,5;defekt;2;Lager\n"
    "A2;20,25;läuft;1;\n";

TEST(ImportData, OddHeadingsAreReadAsThePersonChooses) {
  ImportWorld world(pumps);
  EXPECT_EQ(world.words(), "Line 1: no column is chosen as the time.");
  EXPECT_EQ(world.look().look.separator, ';');
  EXPECT_EQ(world.look().look.headings[3], "Stück");
  EXPECT_EQ(world.import(), 0);
  EXPECT_TRUE(world.fault);
  world.choices.columns = {{1, DataColumn::x}, {2, DataColumn::status}, {4, DataColumn::comment}};
  EXPECT_EQ(world.words().substr(0, 7), "Line 2:") << "the word defekt has no known meaning";
  world.choices.failed = {"defekt"};
  EXPECT_EQ(world.points(), "1000.5; >20.25");
  world.choices.columns[3] = DataColumn::count;
  EXPECT_EQ(world.points(), "1000.5x2; >20.25");
  EXPECT_EQ(world.words(), "2 rows: 2 failures, 1 suspension.");
  world.choices.columns[0] = DataColumn::x;
  EXPECT_EQ(world.words(), "Line 1: two columns are chosen as the time.");
}

TEST(ImportData, TheSetIsOneStepAndFillsTheFirstWhereThatIsEmpty) {
  ImportWorld world("time,status\n100,F\n200,S\n");
  const Project empty = world.session.project;
  EXPECT_EQ(world.import(), 1);
  EXPECT_EQ(world.data().Title, "Pumpen.v2");
  EXPECT_EQ(project_title(world.session), "Pumpen.v2") << "what Save proposes";
  EXPECT_TRUE(world.data().is_read());
  const Project first = world.session.project;
  EXPECT_EQ(world.import(), 2);
  EXPECT_EQ(world.session.project.fits.bound(), 2);
  EXPECT_EQ(world.session.project.data(2).sample().total_suspensions, 1);
  EXPECT_EQ(world.session.history.undo_name(), "Import");
  EXPECT_TRUE(undo(world.session));
  EXPECT_EQ(world.session.project, first);
  EXPECT_TRUE(undo(world.session));
  EXPECT_EQ(world.session.project, empty);
  EXPECT_EQ(project_title(world.session), "Untitled");
  EXPECT_FALSE(undo(world.session));
}

// What the content tells, and what a person says of it instead.
TEST(ImportData, SignsAndHeadLineCanBeOverridden) {
  ImportWorld doubtful("1,500\n2,500\n");
  EXPECT_NE(doubtful.words().find("may be a decimal sign"), std::string::npos);
  doubtful.choices.decimal = DecimalSign::comma;
  EXPECT_EQ(doubtful.points(), "1.5; 2.5");
  doubtful.choices = {.separator = ','};
  EXPECT_EQ(doubtful.points(), "1x500; 2x500");
  doubtful.choices.head_line = HeadLine::yes;
  doubtful.choices.columns = {{1, DataColumn::x}};
  EXPECT_EQ(doubtful.points(), "500");
  ImportWorld bars("7|F\n>8|F\n");
  bars.choices = {.separator = '|', .columns = {{1, std::nullopt}}};
  EXPECT_EQ(bars.points(), "7; >8");
  ImportWorld named("time\n5\n");
  named.choices.head_line = HeadLine::no;
  EXPECT_EQ(named.words(), "Line 1: 'time' is not a number.");
}

TEST(ImportData, TheDataNotationAndWhatIsNoTextAreToldSo) {
  ImportWorld notation("# test\n100x3\n>50\n");
  EXPECT_EQ(notation.look().look.separator, 0);
  EXPECT_EQ(notation.points(), "100x3; >50");
  EXPECT_EQ(ImportWorld("a\n").words().substr(0, 22), "Line 1: no column is c");
  EXPECT_EQ(ImportWorld("").words().substr(0, 8), "Line 1: ");
  EXPECT_NE(ImportWorld(std::string("x\n1\0\n", 5)).words().find("NUL"), std::string::npos);
}

// Whatever it is called, a project may be as large as File > Open takes it.
TEST(ImportData, AProjectIsSeenToBeOneUpToItsOwnLimit) {
  std::string bytes = "TAVLO 1.5 alpha\n";
  EXPECT_TRUE(ImportWorld(bytes).file.is_to_be_opened());
  bytes.resize(largest_data_file + 1, '\n');
  EXPECT_TRUE(ImportWorld(bytes).file.is_to_be_opened());
}

// A quoted comment runs over the end of what is looked at.
TEST(ImportData, OfALargeFileTheBeginningIsShownAndAllIsRead) {
  std::string text = "time;remark\n";
  constexpr int rows = 60'000;
  for (int i = 1; i <= rows; ++i) text += std::to_string(i) + ",5;\"a\nb\"\n";
  ImportWorld world(text);
  EXPECT_FALSE(world.file.is_looked_at_whole());
  const ImportPreview look = world.look();
  EXPECT_FALSE(look.fault);
  EXPECT_EQ(look.look.rows.size(), 20u);
  EXPECT_LT(look.rows, rows / 2u);
  world.progress.stop_at = 2;
  const Project before = world.session.project;
  EXPECT_EQ(world.import(), 0);
  EXPECT_TRUE(world.fault && world.fault->stopped);
  EXPECT_EQ(world.session.project, before);
  world.progress.stop = false;
  EXPECT_EQ(world.import(), 1);
  EXPECT_EQ(world.data().rows.size(), rows + 0u);
  EXPECT_EQ(world.data().rows[rows - 1].time, rows + 0.5F);
}

}  // namespace
}  // namespace tavlo
