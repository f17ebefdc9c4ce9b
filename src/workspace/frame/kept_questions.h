// Kept questions: what the Life panels answer, from one run of the program to the next.
#pragma once

#include <QSettings>

#include "life/life_questions.h"

namespace tavlo {

void keep_questions(QSettings& store, const LifeQuestions& questions);

/// Those of the last run; what is no sensible question is left out, and where none was kept they
/// are the usual ones.
LifeQuestions kept_questions(const QSettings& store);

}  // namespace tavlo
