#include "cli/batch_line.h"

#include <simdjson.h>

#include <CLI/Error.hpp>
#include <array>
#include <cmath>
#include <limits>

#include "actions/slope_question.h"
#include "cli/argument_values.h"
#include "cli/json_text.h"
#include "cli/line_reader.h"
#include "cli/nearest_word.h"
#include "files/field_number.h"
#include "files/point_list.h"
#include "files/text_lines.h"

namespace tavlo::cli {

namespace {

namespace json = simdjson::dom;

static_assert(simdjson::SIMDJSON_PADDING <= LineReader::padding);

/// What is wrong with a line.
struct Wrong {
  std::string words;
};

enum class Field { id, x, fails, susps, model, method, slope, ranks, censored, b_life, at };

constexpr std::array<std::string_view, 11> field_names = {
    "id", "x", "fails", "susps", "model", "method", "slope", "ranks", "censored", "b_life", "at"};

std::string name_of(Field field) {
  return std::string(field_names[static_cast<std::size_t>(field)]);
}

Field find_field(std::string_view name) {
  for (std::size_t i = 0; i < field_names.size(); ++i)
    if (field_names[i] == name) return static_cast<Field>(i);
  throw Wrong{"there is no field " + quoted(name) +
              did_you_mean(name, {field_names.begin(), field_names.end()})};
}

double number_of(const json::element& value, Field field) {
  double number = 0;
  if (value.get_double().get(number) != simdjson::SUCCESS || !std::isfinite(number))
    throw Wrong{name_of(field) + " holds something that is no number"};
  return number;
}

/// A number as JSON writes it, for a message or as a word.
std::string text_of(double number) {
  std::string text;
  JsonText(text).number(number);
  return text;
}

std::string_view word_of(const json::element& value, Field field) {
  std::string_view word;
  if (value.get_string().get(word) != simdjson::SUCCESS)
    throw Wrong{name_of(field) + " is no word in quotation marks"};
  return word;
}

/// "W2P,W3T", or a model code as a number.
std::string models_of(const json::element& value) {
  double code = 0;
  if (value.get_double().get(code) == simdjson::SUCCESS) return text_of(code);
  std::string_view words;
  if (value.get_string().get(words) != simdjson::SUCCESS)
    throw Wrong{name_of(Field::model) + " is neither a word in quotation marks nor a code"};
  return std::string(words);
}

void numbers_of(const json::element& value, Field field, std::vector<double>& list) {
  list.clear();
  json::array array;
  if (value.get_array().get(array) != simdjson::SUCCESS)
    throw Wrong{name_of(field) + " is no list of numbers"};
  for (const json::element entry : array) {
    if (list.size() == most_data_rows) throw Wrong{"there are more than 10000000 rows"};
    list.push_back(number_of(entry, field));
  }
}

/// The id as JSON.
void read_id(const json::element& value, std::string& id) {
  id.clear();
  std::int64_t whole = 0;
  std::string_view word;
  if (value.get_string().get(word) == simdjson::SUCCESS)
    JsonText(id).string(word);
  else if (value.get_int64().get(whole) == simdjson::SUCCESS)
    JsonText(id).integer(whole);
  else
    id = simdjson::minify(value);
}

/// The id of an object, where it is a plain word or number that ends before place `end`: this
/// parser looks at no more than it is asked for. Empty where there is none.
std::string plain_id(const simdjson::padded_string& text, std::size_t end) {
  namespace lazy = simdjson::ondemand;
  lazy::parser parser;
  lazy::document document;
  lazy::value value;
  if (parser.iterate(text).get(document) != simdjson::SUCCESS ||
      document["id"].get(value) != simdjson::SUCCESS)
    return {};
  const std::string_view token = trimmed(value.raw_json_token());
  if (token.data() + token.size() > text.data() + end) return {};
  std::int64_t whole = 0;
  std::string_view word;
  std::string id;
  if (value.get_int64().get(whole) == simdjson::SUCCESS)
    JsonText(id).integer(whole);
  else if (value.get_string().get(word) == simdjson::SUCCESS)
    JsonText(id).string(word);
  return id;
}

/// The id of a line that is no JSON as a whole. One that was cut off keeps what stands before a
/// comma; the id itself may not be cut.
std::string id_of_broken_line(std::string_view text) {
  constexpr std::size_t far_enough = 4096;
  std::string id = plain_id(simdjson::padded_string(text), text.size());
  const std::string start(text.substr(0, text.substr(0, far_enough).rfind(',')));
  for (const char* const end : {"}", "]}", "\"}", "\"]}"})
    if (id.empty() && start.size() < text.size())
      id = plain_id(simdjson::padded_string(start + end), start.size());
  return id.empty() ? "null" : id;
}

/// Takes what a time in a file can be.
float time_of(double x) {
  if (x == 0.0) throw Wrong{"a time can't be 0"};
  const auto time = static_cast<float>(std::clamp(x, -4e38, 4e38));
  const bool small = std::fabs(x) < std::numeric_limits<float>::min();
  if (small || std::fabs(x) > std::numeric_limits<float>::max())
    throw Wrong{"a time in x is out of range (1.2e-38 to 3.4e+38)"};
  return time;
}

/// `text` without what stands in quotation marks.
std::string unquoted(std::string_view text) {
  std::string rest;
  bool inside = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"')
      inside = !inside;
    else if (!inside)
      rest += text[i];
    else if (text[i] == '\\')
      ++i;
  }
  return rest;
}

const char* words_of(simdjson::error_code code, std::string_view text) {
  switch (code) {
    case simdjson::UTF8_ERROR: return "the line is not UTF-8 text";
    case simdjson::UNCLOSED_STRING: return "a quotation mark is not closed";
    case simdjson::UNESCAPED_CHARS: return "a control character stands in quotation marks";
    case simdjson::MEMALLOC: return "there is not enough memory for the line";
    case simdjson::DEPTH_ERROR: return "the brackets of the line are nested too deeply";
    default: break;
  }
  const std::string rest = unquoted(text);
  for (const char* const word : {"NaN", "nan", "Infinity", "inf"})
    if (rest.find(word) != std::string::npos)
      return "the line is no JSON object (which knows no NaN and no infinity)";
  return code == simdjson::NUMBER_ERROR ? "a number can't be read" : "the line is no JSON object";
}

/// A Weibayes has no slope of its own, and no other model takes one.
void require_slope_of_line(const FitQuestions& questions) {
  switch (slope_fault(questions)) {
    case SlopeFault::none: return;
    case SlopeFault::missing: throw Wrong{"Wb needs its slope: add the field slope"};
    case SlopeFault::not_wanted: throw Wrong{"slope is for a Weibayes fit (model Wb)"};
  }
}

}  // namespace

/// What the last list of words meant: most lines ask for the same.
template <class Entry>
class Meaning {
 public:
  template <class Parse>
  const std::vector<Entry>& of(const std::string& words, Parse parse) {
    if (words_ != words) {
      words_.reset();  // stays so when the words mean nothing
      entries_ = parse(words);
      words_ = words;
    }
    return entries_;
  }

 private:
  std::optional<std::string> words_;
  std::vector<Entry> entries_;
};

struct BatchLineParser::Memory {
  json::parser parser;
  std::vector<double> x, fails, susps, percents;
  std::string models, methods;  ///< as the line writes them
  Meaning<const Model*> known_models;
  Meaning<const Method*> known_methods;

  void read_fields(std::string_view text, BatchLine& line);
  void read_field(Field field, const json::element& value, BatchLine& line);
  void make_rows(unsigned seen, std::vector<SampleRow>& rows) const;
  void make_choices(FitQuestions& questions);
};

void BatchLineParser::Memory::read_field(Field field, const json::element& value, BatchLine& line) {
  FitQuestions& questions = line.questions;
  switch (field) {
    case Field::id: return;
    case Field::x: return numbers_of(value, field, x);
    case Field::fails: return numbers_of(value, field, fails);
    case Field::susps: return numbers_of(value, field, susps);
    case Field::model: models = models_of(value); return;
    case Field::method: methods = word_of(value, field); return;
    case Field::ranks:
      questions.ranks = parse_rank_kind(std::string(word_of(value, field)));
      return;
    case Field::at: return numbers_of(value, field, questions.at);
    case Field::slope:
      questions.slope = number_of(value, field);
      if (!is_slope(*questions.slope)) throw Wrong{"slope is not from 1e-6 to 1e6"};
      return;
    case Field::censored:
      if (value.get_bool().get(questions.censored) != simdjson::SUCCESS)
        throw Wrong{"censored is neither true nor false"};
      return;
    case Field::b_life:
      numbers_of(value, field, percents);
      for (const double percent : percents)
        questions.b_life.push_back(parse_fraction(percent, text_of(percent)));
  }
}

void BatchLineParser::Memory::make_rows(unsigned seen, std::vector<SampleRow>& rows) const {
  const auto has = [seen](Field field) { return (seen >> static_cast<unsigned>(field) & 1U) != 0; };
  const bool counted = has(Field::fails) || has(Field::susps);
  if (x.empty()) throw Wrong{has(Field::x) ? "x is empty" : "there is no x"};
  for (const auto& [field, list] : {std::pair(Field::fails, &fails), {Field::susps, &susps}})
    if (has(field) && list->size() != x.size())
      throw Wrong{"x and " + name_of(field) + " are not of equal length"};
  rows.clear();
  double units = 0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double failed = has(Field::fails) ? fails[i] : counted ? 0.0 : 1.0;
    const double suspended = has(Field::susps) ? susps[i] : 0.0;
    if (failed < 0 || suspended < 0) throw Wrong{"a count is negative"};
    if (failed + suspended == 0) throw Wrong{"a row has neither failures nor suspensions"};
    units += failed + suspended;
    rows.push_back({time_of(x[i]), failed, suspended, 0});
  }
  if (units > most_units) throw Wrong{"there are more than 1e15 units"};
}

void BatchLineParser::Memory::make_choices(FitQuestions& questions) {
  questions.choices.clear();
  for (const Model* model : known_models.of(models, parse_models))
    for (const Method* method : known_methods.of(methods, parse_methods))
      questions.choices.push_back({model, method});
}

void BatchLineParser::Memory::read_fields(std::string_view text, BatchLine& line) {
  json::object object;
  const auto fault = parser.parse(text.data(), text.size(), false).get(object);
  if (fault != simdjson::SUCCESS) {
    line.id = id_of_broken_line(text);
    throw Wrong{words_of(fault, text)};
  }
  json::element id;  // first, so that it stands whatever is wrong behind it
  if (object["id"].get(id) == simdjson::SUCCESS) read_id(id, line.id);
  unsigned seen = 0;
  models = "W2P";
  methods = "rr";
  x.clear();
  for (const auto& [name, value] : object) {
    const Field field = find_field(name);
    const unsigned bit = 1U << static_cast<unsigned>(field);
    if ((seen & bit) != 0) throw Wrong{"the field " + quoted(name) + " stands there twice"};
    seen |= bit;
    read_field(field, value, line);
  }
  make_choices(line.questions);
  make_rows(seen, line.rows);
}

BatchLineParser::BatchLineParser() : memory_(std::make_unique<Memory>()) {}
BatchLineParser::~BatchLineParser() = default;

std::optional<std::string> BatchLineParser::read(std::string_view text, BatchLine& line) {
  line.id = "null";
  line.questions.slope.reset();
  line.questions.ranks = RankKind::benard;
  line.questions.censored = false;
  line.questions.b_life.clear();
  line.questions.at.clear();
  try {
    memory_->read_fields(text, line);
    require_slope_of_line(line.questions);
    return std::nullopt;
  } catch (const Wrong& wrong) {
    return wrong.words;
  } catch (const CLI::Error& error) {
    return error.what();
  }
}

}  // namespace tavlo::cli
