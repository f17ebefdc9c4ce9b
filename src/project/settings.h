// Settings: what the user chose for the whole program, with the factory values.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "numerics/number_reading.h"

namespace tavlo {

struct Settings {
  std::array<std::string, 11> RecentFiles;  ///< the last project files from place 1 on
  std::int16_t UserMode = 0;                ///< stored only
  std::int32_t Language = 1;                ///< number of the language file, 0 to 99
  bool StripToolbar = false;
  bool RibbonToolbar = true;
  bool ProjectTree = true;
  bool StatusBar = true;
  bool Benard = true;                  ///< estimate ranks with (j - 0.3) / (n + 0.4)
  bool NegativeSuspension = true;      ///< a negative X is a suspension
  bool QuickCalculation = true;        ///< a change of model or method calculates at once
  bool ShowLast = true;                ///< the chart follows the last fit
  bool SortRaw = false;                ///< sorting loses the order of entry
  std::string ChartType = "Standard";  ///< of new charts, see chart_types
  double PlotBorderZone = 0.02;        ///< margin of a plot, as a fraction of the range
  int DigitsLog = 7;                   ///< significant digits in the log
  int DigitsParBox = 5;                ///< in the parameter box of a chart
  int DigitsFit = 6;                   ///< in the fit grid
  int DigitsData = 5;                  ///< decimals of the sheet's Y column
  NumberPunctuation punctuation;
};

}  // namespace tavlo
