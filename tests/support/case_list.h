// Case list: the related cases of one test, one a line in a file of tests/data, with " => "
// between what goes in and what comes out. Lines without it are remarks.
#pragma once

#include <string>
#include <vector>

#include "life/life.h"

namespace tavlo::test {

/// The fields of each case. In the file they stand as in C: \n, \t, \r, \\ and \xNN.
std::vector<std::vector<std::string>> case_list(const std::string& name);

/// The number that a field begins with, in every locale; not a number where there is none.
double number_in(const std::string& field);

/// Scale, fraction, shape, t0 and populations of each row of a fit; "1/eta" for a scale, "-"
/// where no failure reaches it.
std::vector<FitParam> fit_rows(const std::string& text);

}  // namespace tavlo::test
