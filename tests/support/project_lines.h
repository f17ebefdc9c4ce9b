// Project lines: a project file by its form alone, without anything of the program: what stands
// in its lines, value by value, in the file's order. A strict reader, by which tests judge what
// the program reads and writes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tavlo::test {

/// As each kind of value is spelt in a file.
std::string spelt(bool value);
std::string spelt(std::int32_t value);
std::string spelt(float value);
std::string spelt(double value);

/// A text in the file's bytes, which are the code page's without a mark at the front.
std::string spelt(std::string_view text, bool is_utf8);

/// All values but those that tell the form only; texts in the file's bytes, the log is the last.
/// Throws std::runtime_error, which names the line, for anything that isn't as it must be.
std::vector<std::string> values_of(std::string_view bytes);

}  // namespace tavlo::test
