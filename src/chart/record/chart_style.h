// Chart style: the rules of a chart that its records have no field for: how its axes
// are divided, how fits are worded, and where its parts stand. A chart's type chooses
// them by its name, which files and copies of the chart keep.
#pragma once

#include "project/chart_records.h"

namespace tavlo {

enum class Corner { top_left, top_right, bottom_left, bottom_right };

/// How an axis is divided and labelled.
enum class Division {
  paper,  ///< as probability paper is printed, with a label at each limit
  round   ///< at 1, 2 and 5 and at round percentages, ticks outside the plot
};

/// How parameters and fits are worded.
enum class Wording {
  codes,  ///< "W2P/rr", "W2P/ eta beta rr r^2="
  plain   ///< "2-parameter Weibull, regression", "\u03B7 = 606.5"
};

enum class TitlePlace { centre, left };

struct ChartStyle {
  Division division = Division::paper;
  Wording wording = Wording::codes;
  TitlePlace titles = TitlePlace::centre;
  bool has_mark = true;              ///< the program's mark in the corner
  bool has_wide_dashes = false;      ///< a broken fit line is as wide as a solid one
  bool parameters_give_way = false;  ///< the parameter box is left out where it would hide points
  bool titled_by_data = false;       ///< an empty main title stands for the names of the data sets
  Corner parameters = Corner::top_left;
  Corner legend = Corner::bottom_right;
  double line_spacing = 1.5;       ///< of the parameter box, in text heights
  double widest_parameters = 0.4;  ///< of the plot, for lines of words
  double legend_slack = 1.0;       ///< real letters may be wider than the table of widths says
  double widest_legend = 0.45;     ///< of the plot
};

/// The style of the chart's type.
const ChartStyle& chart_style(const Chart& chart);

}  // namespace tavlo
