// Shown sets: puts the data sets of a session and their fits on its chart, each data set with
// a colour, a symbol and a title of its own.
#pragma once

#include <string>
#include <vector>

#include "project/session.h"

namespace tavlo::cli {

/// Whose axes a chart has: those of the first fit's paper, or its own.
enum class Paper { of_first_fit, of_chart };

/// Puts every data set, whose `names` are given in order, with all its fits on chart 1. Its
/// first fit stands with the symbols of the data, each further one is only a line. An
/// empty `title` stands for the names; the data are said to come from the `files`.
void show_on_chart(Session& session, const std::vector<std::string>& files,
                   std::vector<std::string> names, const std::string& title, Paper paper);

}  // namespace tavlo::cli
