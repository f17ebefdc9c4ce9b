// The law of JSON lines: any text is read or refused; the id of the answer is JSON; what was
// read makes sense, is read alike when it is written anew, and owes nothing to the line before.
#pragma once

#include <cmath>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "cli/batch_line.h"
#include "cli/line_reader.h"

namespace tavlo::test {

/// The fault, or empty.
inline std::string read_line(cli::BatchLineParser& parser, std::string_view text,
                             cli::BatchLine& line) {
  std::string padded(text);
  padded.resize(text.size() + cli::LineReader::padding);
  return parser.read({padded.data(), text.size()}, line).value_or("");
}

inline nlohmann::json json_of(const cli::BatchLine& line) {
  nlohmann::json json{{"id", nlohmann::json::parse(line.id, nullptr, false)},
                      {"censored", line.questions.censored},
                      {"at", line.questions.at}};
  for (const SampleRow& row : line.rows) {
    json["x"].push_back(row.time);
    json["fails"].push_back(row.failures);
    json["susps"].push_back(row.suspensions);
  }
  if (line.questions.slope) json["slope"] = *line.questions.slope;
  std::string models, methods;
  for (const auto& [model, method] : line.questions.choices) {
    // Models come in their order, each with every method.
    const std::string name = std::to_string(model->code);
    if (models.empty()) models = name;
    if (name == models) methods += (methods.empty() ? "" : ",") + std::string(method->command_name);
  }
  json["method"] = methods;
  return json;
}

/// What breaks the law for these bytes; empty when they keep it.
inline std::string breach_of_json_line_law(std::string_view bytes) {
  cli::BatchLineParser parser, other;
  cli::BatchLine line, again;
  const std::string fault = read_line(parser, bytes, line);
  if (!nlohmann::json::accept(line.id)) return "the id is no JSON: " + line.id;
  read_line(other, R"({"id":7,"x":[1,2],"fails":[1,0],"susps":[0,3],"slope":2,"model":"Wb"})",
            again);
  if (read_line(other, bytes, again) != fault || again.id != line.id)
    return "another line was left in the parser";
  if (!fault.empty()) return "";
  if (line.rows.empty() || line.questions.choices.empty()) return "nothing is asked of no rows";
  for (const SampleRow& row : line.rows)
    if (!std::isfinite(row.time) || row.time == 0 || !(row.failures >= 0) ||
        !(row.suspensions >= 0) || !(row.failures + row.suspensions > 0))
      return "a row that means nothing";
  const auto json = json_of(line);
  if (again.rows.size() != line.rows.size() || json_of(again) != json)
    return "another line was left in the parser";
  std::string written = json.dump();
  if (line.questions.slope) written.insert(1, "\"model\":\"Wb\",");
  if (const std::string refused = read_line(other, written, again); !refused.empty())
    return "a written line is refused: " + refused;
  auto read = json_of(again);
  return read == json ? "" : "a written line is read otherwise";
}

}  // namespace tavlo::test
