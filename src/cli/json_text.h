// JSON text: the shapes of numbers and messages that every command's JSON shares.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/cli_ports.h"
#include "project/records.h"

namespace tavlo::cli {

using Json = nlohmann::ordered_json;

/// A number in its shortest form: 20, not 20.0; null when it is not finite.
Json json_number(double value);

/// A stored 32-bit number as its shortest decimal: 54.3, not 54.299999.
double shortest_decimal(float value);

/// {"units", "failures", "suspensions"} of a ranked set, into `object`.
void add_totals(Json& object, const DataSet& data);

/// [{"title", "text", "answer"}].
Json messages_json(const std::vector<AnsweredBox>& boxes);

/// One line; bytes that are no UTF-8 (a file's name) become U+FFFD.
std::string one_line_json(const Json& value);

/// {"file", "error"} for a file that can't be read.
std::string error_json(const std::string& file, const std::string& error);

}  // namespace tavlo::cli
