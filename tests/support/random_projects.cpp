#include "support/random_projects.h"

#include <cmath>
#include <limits>

#include "life/models.h"
#include "numerics/number_text.h"
#include "numerics/unheard_reports.h"
#include "project/chart_types.h"
#include "project/fit_records.h"
#include "project/ranking.h"
#include "support/test_world.h"

namespace tavlo::test {
namespace {

class Maker {
 public:
  Maker(RandomNumbers& numbers, const ProjectKinds& wanted) : random(numbers), kinds(wanted) {}

  Project project() {
    Project made;
    for (int i = random.whole(1, 4); i > 0; --i) {
      made.data.push_back(data_set());
      made.fits.push_back(fit_set(made.data(made.data.bound())));
    }
    for (int i = random.whole(1, 3); i > 0; --i) made.charts.push_back(chart(made));
    made.log.append_plain(text() + "\n{\\" + text());
    made.log.append_rtf("\\par {\\b bold} \\i0 and \\'e4 \\par ");
    return made;
  }

 private:
  std::string text() {
    static const std::string pieces[] = {"",         "Pump",     ",",  "\"",       " ",
                                         "\t",       "#TRUE#",   "15", "\xC3\xA4", "\xE2\x82\xAC",
                                         "\xC2\x81", "{\\rtf1 ", ";",  "-1,2"};
    std::string made;
    for (int i = random.whole(0, 4); i > 0; --i) made += pieces[random.whole(0, 13)];
    if (kinds.beyond_code_page) made += "\xE6\x97\xA5\xF0\x9F\x94\xA7";
    if (kinds.unsaveable && random.chance(0.2)) made += "two\r\nlines";
    return made;
  }
  std::int32_t id() { return random.whole(1, 2'000'000'000) * (random.chance(0.1) ? -1 : 1); }
  std::int16_t small() { return static_cast<std::int16_t>(random.whole(-32768, 32767)); }
  float single(double low, double high) {
    const double number = random.log_uniform(low, high);
    return kinds.unsaveable ? static_cast<float>(number) : to_digits(number, 6);
  }
  double number() {
    const double any = random.log_uniform(1e-9, 1e9);
    return kinds.unsaveable ? any : std::stod(number_text(any, 12));
  }
  double units() { return random.chance(0.5) ? 1 : random.whole(1, 40) / 8.0; }

  SheetRow row(const DataSet& data) {
    SheetRow made;
    const auto give = [&](int column) { made.set_given(column, true); };
    if (random.chance(0.05)) return made;
    if (random.chance(0.95)) give(sheet_column::x), made.time = single(1e-5, 1e9);
    if (random.chance(0.7)) give(sheet_column::fails), made.failures = units();
    if (random.chance(0.4)) give(sheet_column::susps), made.suspensions = units();
    if (data.own_ranks && made.failures > 0)
      give(sheet_column::y), made.rank = to_digits(random.uniform(0.01, 0.99), 5);
    made.mode = static_cast<std::int16_t>(random.whole(0, data.ModeNames.bound()));
    made.spare = random.chance(0.1) ? static_cast<std::int16_t>(small() & ~3) : std::int16_t{0};
    made.set_left_out(std::fmod(made.time, 10.0F) >= 9);
    if (random.chance(0.3)) made.set_text(sheet_column::comment, text());
    const int cell = random.whole(sheet_column::x, sheet_column::susps);
    if (kinds.unsaveable && random.chance(0.1) && !made.has(cell))
      made.set_text(cell, "1.5K" + text());
    return made;
  }

  DataSet data_set() {
    DataSet made = fuStandardData();
    made.UniqueId = id();
    made.Title = text();
    for (int i = random.whole(0, 3); i > 0; --i)
      made.ModeNames.push_back(text() + std::to_string(i));
    made.own_ranks = random.chance(0.2);
    for (int i = random.chance(0.2) ? 0 : random.whole(1, 40); i > 0; --i)
      made.rows.push_back(row(made));
    while (!made.rows.empty() && made.rows[made.rows.size() - 1].is_blank())
      made.rows.resize(made.rows.size() - 1);
    made.XScale = static_cast<std::int16_t>(random.whole(1, 2));
    made.YScale = static_cast<std::int16_t>(8 * random.whole(1, 6));
    made.Flag2 = random.chance(0.5);
    made.Reserved = number();
    made.SummarySpare = small();
    if (random.chance(0.3)) add_lists(made);
    UnheardReports unheard;
    if (random.chance(0.7)) Make_Ranks(unheard.errors, random.chance(0.5), made);
    if (made.reading.rows().size() != made.rows.size() || random.chance(0.2)) mark_changed(made);
    made.SummaryMode = small();
    const bool exact = made.reading.ranks() == RankKind::exact;
    if (random.chance(0.3))
      made.SummaryState = 256 + (exact ? 64 : 128) + (made.own_ranks ? random.whole(1, 63) : 0);
    return made;
  }

  void add_lists(DataSet& data) {
    for (int i = random.whole(0, 2); i > 0; --i) {
      InspectionList list;
      list.Last = random.whole(0, 5);
      list.Times = list.Counts = Slots<float>(list.Last, single(1, 1e4));
      list.Flags = Slots<std::int16_t>(list.Last, small());
      data.Inspection.push_back(list);
    }
    for (int i = random.whole(0, 2); i > 0; --i) {
      WarrantyProfile profile{{}, id(), random.whole(0, 4), random.whole(0, 3), small(), text()};
      for (int cell = (profile.Rows + 1) * (profile.Cols + 1); cell > 0; --cell)
        profile.Table.push_back(random.chance(0.2) ? 0 : -number());
      data.Profiles.push_back(profile);
    }
  }

  FitResult fit(const DataSet& data) {
    const Model& model =
        models()[static_cast<std::size_t>(random.whole(0, static_cast<int>(models().size()) - 1))];
    FitRequest request;
    request.model = model.code;
    request.method = static_cast<std::int16_t>(random.whole(0, 2));
    request.ranks = data.reading.ranks();
    request.censored = has_censored_choice(request.model, request.method) && random.chance(0.5);
    Fit made;
    made.life.model = model.code;
    made.quality = -number();
    const bool by_mode = model.routine == FitRoutine::by_mode;
    for (int i = by_mode ? random.whole(1, 3) : model.rows(); i > 0; --i)
      made.life.rows.push_back({number(), number(), number(), -number(), random.whole(0, 7)});
    if (random.chance(0.1)) made.life.rows.front().Scale = unreached_scale;
    if (model.fixes_slope()) request.slope = made.life.rows.front().Shape;
    if (kinds.unsaveable && random.chance(0.3)) made.life.rows.front().Shape = HUGE_VAL;
    return record_of(request, made, {}, data.revision - (random.chance(0.2) ? 1 : 0));
  }

  FitSet fit_set(const DataSet& data) {
    FitSet made = fuStandard_Fit();
    made.UniqueId = id();
    made.Title = text();
    made.DataIds.push_back(data.UniqueId);
    made.nDataIds = 1;
    made.nFits = random.whole(0, 5);
    for (int i = made.nFits; i > 0; --i) made.Fits.push_back(fit(data));
    return made;
  }

  ChartItem mark() {
    ChartItem made;
    made.FontBold = random.chance(0.5);
    made.FontSize = static_cast<float>(random.whole(4, 100)) / 4;
    made.Flag4 = random.chance(0.5);
    for (std::int32_t* each : {&made.FillColor, &made.LineColor, &made.LineStyle, &made.LineWidth,
                               &made.Color5, &made.TextColor, &made.Value7, &made.Value8,
                               &made.Value9, &made.Height, &made.Left, &made.Top, &made.Width})
      *each = id();
    for (std::int16_t* each : {&made.Mode, &made.Fill, &made.Int3, &made.Int4, &made.Int5})
      *each = small();
    made.nPoints = static_cast<std::int16_t>(random.whole(0, 4));
    made.PointsX = Slots<float>(made.nPoints, single(1, 9999));
    made.PointsY = Slots<float>(made.nPoints, -single(1, 9999));
    made.Text1 = text();
    made.Text2 = text();
    return made;
  }

  Chart chart(const Project& project) {
    const auto types = chart_types();
    Chart made = chart_of_type(
        types[static_cast<std::size_t>(random.whole(0, static_cast<int>(types.size()) - 1))]);
    made.UniqueId = id();
    made.Name = text();
    for (int i = 1; i <= project.data.bound(); ++i) {
      made.DataIds.push_back(project.data(i).UniqueId);
      made.FitIds.push_back(project.fits(i).UniqueId);
      ChartMarker& marker = made.Markers(i);
      marker.DataId = project.data(i).UniqueId;
      marker.FitId = project.fits(i).UniqueId;
      for (std::int32_t* each :
           {&marker.FitNumber, &marker.FillColor, &marker.SymbolColor, &marker.SymbolFill,
            &marker.SymbolWidth, &marker.LineColor, &marker.LineWidth, &marker.Color9,
            &marker.Long13, &marker.Long10, &marker.SymbolStyle, &marker.LineStyle})
        *each = id();
      for (std::int16_t* each :
           {&marker.Int1, &marker.Int2, &marker.Tied, &marker.Symbol, &marker.Size})
        *each = small();
      marker.Label = text();
    }
    made.nDataIds = made.nFitIds = project.data.bound();
    made.Version = small();
    made.Flag1 = random.chance(0.5);
    ChartAxis& axis = made.Axes(0);
    axis.AutoMax = random.chance(0.5);
    for (std::int32_t* each : {&axis.MajorWidth, &axis.MinorWidth, &axis.MajorColor,
                               &axis.MinorColor, &axis.MajorStyle, &axis.MinorStyle})
      *each = id();
    made.SubPopulations = static_cast<std::int16_t>(random.whole(0, 1));
    made.Axes(0).Max = number();
    for (int i = random.whole(0, 3); i > 0; --i) made.Texts.push_back(mark());
    made.nTexts = made.Texts.bound();
    return made;
  }

  RandomNumbers& random;
  ProjectKinds kinds;
};

}  // namespace

Project random_project(RandomNumbers& random, const ProjectKinds& kinds) {
  return Maker(random, kinds).project();
}

Project small_project() {
  Project made;
  DataSet data = make_data({{300, 1, 0, 1}, {100}, {200, 0, 2, 2}, {150, 1, 0, 1}});
  data.UniqueId = 11;
  data.Title = "Valves";
  UnheardReports unheard;
  Make_Ranks(unheard.errors, true, data);
  made.data.push_back(data);
  FitSet fits = fuStandard_Fit();
  fits.UniqueId = 12;
  fits.Title = "Fits of valves";
  fits.DataIds.push_back(11);
  fits.nDataIds = 1;
  Fit fit;
  fit.life = weibull5c(2, 300, 1.5, 40, 0.25);
  fit.quality = -17.5;
  FitRequest request;
  request.model = fit.life.model;
  request.method = method_code::mle;
  request.censored = true;
  fits.Fits.push_back(record_of(request, fit, {}, 0));
  fits.nFits = 1;
  made.fits.push_back(fits);
  Chart chart = fuStandard_Chart();
  chart.UniqueId = 13;
  chart.nMarkers = 1;
  chart.Markers.resize(1);
  made.charts(0) = chart;
  chart.Name = "Chart of valves";
  made.charts.push_back(chart);
  made.log.append_plain("Begun.\n");
  return made;
}

}  // namespace tavlo::test
