// Corpus: the files that a fuzz target begins with, and what it has found. The plain tests
// replay them, so that what was cured stays cured.
#pragma once

#include <string>
#include <string_view>

namespace tavlo::test {

using Law = std::string (*)(std::string_view bytes);

/// Fails the test for each file of a corpus that breaks the law, and for fewer than ten files.
void expect_corpus_keeps(const std::string& name, Law breach_of_law);

}  // namespace tavlo::test
