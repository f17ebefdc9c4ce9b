#include "actions/keep_library.h"

#include <gtest/gtest.h>

#include "actions/analysis_row.h"
#include "actions/intake.h"
#include "actions/save_project.h"
#include "actions/work.h"
#include "support/sheet_world.h"

namespace tavlo {
namespace {

constexpr const char* small_header =
    "[Library Header File]\n[column definition]\n2\nA\n2\n0\nB, b\n2\n0\n";

struct KeepLibraryTest : testing::Test {
  KeepLibraryTest() {
    world.session.places.IniPath = "/ini";
    files["/lib/QMWbLibDef.txt"] = small_header;
    take_library(world.session, "/lib", library);
  }

  test::TestWorld world;
  std::map<std::string, std::string>& files = world.files.files;
  Library library;
};

TEST_F(KeepLibraryTest, MakesADataFileWhereThePersonSaysSo) {
  const auto ask = [&](const char* path) { world.prompts.expect_file("Open Item Data", path); };
  const auto find = [&](BoxAnswer answer) {
    world.prompts.expect_box("File Not Found", "Does not exist. \nIs this a new File?\nYes",
                             answer);
  };
  const auto head = [&](BoxAnswer answer) {
    world.prompts.expect_box("Do you want a header row?", "Add a header Row.", answer);
  };
  ask("/lib/no.csv");
  find(BoxAnswer::cancel);
  EXPECT_FALSE(choose_library_data(world.session, library));
  EXPECT_FALSE(files.contains("/lib/no.csv"));
  ask("/lib/no.csv");
  find(BoxAnswer::no);
  ask("/lib/x.csv");
  find(BoxAnswer::yes);
  head(BoxAnswer::yes);
  EXPECT_TRUE(choose_library_data(world.session, library));
  EXPECT_EQ(files["/lib/x.csv"], "A,\"B, b\"\n");
  EXPECT_TRUE(library.has_header_row);
  EXPECT_EQ(library.definition.data_file, "x.csv");
  EXPECT_TRUE(library.is_unsaved());
  ask("/lib/y.csv");
  find(BoxAnswer::yes);
  head(BoxAnswer::no);
  EXPECT_TRUE(choose_library_data(world.session, library));
  EXPECT_EQ(files["/lib/y.csv"], "");
  files["/lib/bad.csv"] = std::string(70'000, 'x');
  ask("/lib/bad.csv");
  world.prompts.expect_box("Library Viewer", "line 1: the line is too long");
  EXPECT_FALSE(choose_library_data(world.session, library));
  EXPECT_EQ(library.data_path, "/lib/y.csv");
  world.prompts.verify();
}

TEST_F(KeepLibraryTest, OpensAndRemembersLibraries) {
  world.prompts.expect_file("Open a Library", "/lib/QMWbLibDef.txt");
  EXPECT_TRUE(choose_library(world.session, library));
  EXPECT_EQ(files["/ini/QMWLib.ini"], "/lib\r\n");
  files["/bad/QMWbLibDef.txt"] = "[library header file]\n";
  world.prompts.expect_box("Library Viewer", "Header file is corrupt:\n/bad/QMWbLibDef.txt");
  EXPECT_FALSE(take_library(world.session, "/bad", library));
  EXPECT_EQ(library.definition.columns, default_columns());
  EXPECT_EQ(first_library(world.session).header_path, "/lib/QMWbLibDef.txt");
  world.prompts.expect_box("Library Viewer", "There is no library in this folder:\n/gone");
  EXPECT_FALSE(take_library(world.session, "/gone", library));
  files["/program/examples/library/QMWbLibDef.txt"] = small_header;
  EXPECT_EQ(known_libraries(world.session),
            (std::vector<std::string>{"/lib", "/program/examples/library"}));
  files["/ini/QMWLib.ini"] = "/bad\r\n";
  world.prompts.expect_box("Library Viewer", "Header file is corrupt");
  EXPECT_EQ(first_library(world.session).folder, "/bad");
  files.erase("/ini/QMWLib.ini");
  EXPECT_TRUE(first_library(world.session).folder.empty());
}

TEST_F(KeepLibraryTest, AsksBeforeADefinitionIsLost) {
  EXPECT_TRUE(may_leave_library(world.session, library));
  library.definition.columns[0].Name = "New";
  const auto leave = [&](BoxAnswer answer) {
    world.prompts.expect_box("Library Viewer", "is not saved", answer);
    return may_leave_library(world.session, library);
  };
  EXPECT_FALSE(leave(BoxAnswer::cancel));
  EXPECT_TRUE(leave(BoxAnswer::no));
  EXPECT_EQ(files["/lib/QMWbLibDef.txt"], small_header);
  EXPECT_TRUE(leave(BoxAnswer::yes));
  EXPECT_NE(files["/lib/QMWbLibDef.txt"].find("\r\nNew\r\n"), std::string::npos);
  library.definition.columns[0].Name = "'x";
  world.prompts.expect_box("Library Viewer", "is not saved", BoxAnswer::yes);
  world.prompts.expect_box("Library Viewer", "Field 1: its name begins with '");
  EXPECT_FALSE(may_leave_library(world.session, library));
  Library fresh = default_library();
  world.prompts.expect_file("Save Definition", "/new/own.txt");
  world.prompts.expect_box("Library Viewer", "begins with QMWbLibDef");
  world.prompts.expect_file("Save Definition", "/new/QMWbLibDef2.txt");
  EXPECT_TRUE(save_library(world.session, fresh));
  EXPECT_EQ(fresh.folder, "/new");
  EXPECT_EQ(files["/ini/QMWLib.ini"], "/lib\r\n/new\r\n");
}

/// The present analysis under each source, the headings left out.
std::map<std::string, std::string> all_sources(Session& session) {
  std::vector<LibraryColumn> columns;
  for (const char* const name : analysis_sources())
    columns.push_back({name, ColumnKind::from_analysis, {name}});
  const AnalysisRow row = analysis_row(session, 1, columns);
  std::map<std::string, std::string> found;
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (!row.fields[i].empty()) found[columns[i].Name] = row.fields[i];
  return found;
}

TEST(AnalysisRow, TakesWhatTheLastFitHas) {
  test::SheetWorld world({"100", "200", "300", "400", "-500"});
  Session& session = world.session;
  EXPECT_EQ(analysis_row(session, 1, {}).remark, "There is no fit: calculate one first.");
  session.works[session.project.work].path = "/data/pump.tav";
  CheckAndFit(session, 1);
  auto found = all_sources(session);
  const FitResult& fit = session.project.fits(1).Fits(1);
  EXPECT_EQ(found["Path\\FileName"], "/data/pump.tav");
  EXPECT_EQ(found["Path"], "/data");
  EXPECT_EQ(found["Date"], "2026-11-21");
  EXPECT_EQ(found["Model(LN, W2, W3...)"], "W2P");
  EXPECT_EQ(found["Method(RRX, MLE)"], "rr");
  EXPECT_EQ(found["n/s"], "5/1");
  EXPECT_EQ(found["o/s"], "4/1");
  EXPECT_NEAR(test::number_in(found["Fit(Rsq, LogLikelihood)"]), fit.Quality, 1e-6);
  EXPECT_NEAR(test::number_in(found["Chance Typical value"]), 1 / fit.Rows(1).Scale, 1e-2);
  EXPECT_NEAR(test::number_in(found["Chance Variation"]), fit.Rows(1).Shape, 1e-5);
  EXPECT_EQ(found["Chance Typical Lo\\Med\\Hi Value"], found["Chance Typical value"]);
  EXPECT_TRUE(found["PVE"].ends_with("%"));
  for (const char* const none : {"Confidence", "Chance Lo Typical value", "Wearout Char Life",
                                 "Mixture population, u", "Min Life"})
    EXPECT_FALSE(found.contains(none)) << none;
  world.sheet().enter(1, sheet_column::x, "150");
  EXPECT_EQ(analysis_row(session, 1, {}).remark,
            "The last fit is out of date: calculate it first.");
  EXPECT_FALSE(all_sources(session).contains("Chance Typical value"));
}

TEST(AnalysisRow, TellsThePopulationsBySlope) {
  test::SheetWorld world({"100", "200", "300", "400"});
  CheckAndFit(world.session, 1);
  FitResult& fit = world.session.project.fits(1).Fits(1);
  const auto found = [&](std::int16_t model, const std::vector<FitParam>& rows) {
    fit.ModelCode = model;
    fit.nRows = static_cast<std::int32_t>(rows.size());
    fit.Rows.resize(fit.nRows);
    for (std::size_t i = 0; i < rows.size(); ++i) fit.Rows(static_cast<int>(i) + 1) = rows[i];
    const std::vector<LibraryColumn> columns = {
        {"",
         ColumnKind::from_analysis,
         {"Infant Mortality Variation", "Chance Lo\\Med\\Hi", "Wearout Variation"}},
        {"", ColumnKind::from_analysis, {"Infant Mortality Typ Value"}},
        {"",
         ColumnKind::from_analysis,
         {"Wearout Char Life", "----Failures, Population size-------"}},
        {"", ColumnKind::from_analysis, {"Mixture population, u"}},
        {"", ColumnKind::from_analysis, {"Min Life"}}};
    std::string text;
    for (const std::string& field : analysis_row(world.session, 1, columns).fields)
      text += field + "|";
    return text;
  };
  EXPECT_EQ(found(model_code::weibull4, {{0.01, 0, 3}, {0.1, 1, 0.5}}), "0.5; 3|10|100|||");
  EXPECT_EQ(found(model_code::weibull5x, {{0.01, 0.3, 3}, {0.1, 0.7, 2}}), "2; 3||100|0.7; 0.3||");
  EXPECT_EQ(found(model_code::weibull7, {{0.01, 0.3, 5}, {0.1, 0.7, 2}, {1, 0, 1.5}}),
            "1.5; 2; 5|1|100|0.7; 0.3||");
  EXPECT_EQ(found(model_code::weibull4, {{0.01, 0, 3}, {unreached_scale, 1, 0.5}}), "3||100|||");
  EXPECT_EQ(found(model_code::weibull3, {{0.01, 0, 3, 12}}), "3||||12|");
}

}  // namespace
}  // namespace tavlo
