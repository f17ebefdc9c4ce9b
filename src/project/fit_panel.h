// FitPanel: the panel of one fit set without its window: the model and method
// chosen, the busy flag and the grid of fits.
#pragma once

#include <cstdint>
#include <string>

#include "life/models.h"
#include "project/grid.h"

namespace tavlo {

namespace fit_column {
inline constexpr int number = 0;
inline constexpr int quality = 1;
inline constexpr int model = 2;
inline constexpr int sub_population = 3;
inline constexpr int fraction = 4;
inline constexpr int scale = 5;
inline constexpr int shape = 6;
inline constexpr int min_life = 7;
inline constexpr int count = 8;
}  // namespace fit_column

/// What a person has chosen for the next fit of a set.
struct FitChoices {
  std::int16_t nModel = -1;   ///< model code chosen; -1 is none
  std::int16_t nMethod = -1;  ///< method code chosen; -1 is none
  bool censored = false;      ///< the next likelihood of a mixture takes suspensions in
  std::string txt_Custom = "X:Log, Y:Wbl =W1";
};

struct FitPanel : FitChoices {
  std::int32_t L_ID = 0;  ///< UniqueId of the fit set shown
  int data_index = 0;
  int fit_index = 0;
  std::string remark;  ///< what the last fit had to say, for the status bar
  bool busy = false;   ///< a calculation is under way
  Grid grd_Fit{1, fit_column::count};
};

}  // namespace tavlo
