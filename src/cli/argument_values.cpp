#include "cli/argument_values.h"

#include <CLI/Error.hpp>
#include <algorithm>
#include <cctype>
#include <charconv>
#include <chrono>
#include <optional>

#include "actions/slope_question.h"
#include "cli/nearest_word.h"
#include "numerics/number_text.h"
#include "project/chart_types.h"

namespace tavlo::cli {

namespace {

[[noreturn]] void refuse(const std::string& what) { throw CLI::ValidationError(what); }

std::vector<std::string> split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (std::size_t end = 0; end != std::string::npos; start = end + 1) {
    end = text.find(separator, start);
    parts.push_back(text.substr(start, end - start));
  }
  return parts;
}

template <class Parse>
auto parse_list(const std::string& text, Parse parse) {
  std::vector<decltype(parse(text))> list;
  for (const std::string& part : split(text, ',')) list.push_back(parse(part));
  return list;
}

std::optional<int> whole_number(const std::string& text) {
  int number = 0;
  const char* const last = text.data() + text.size();
  const auto [end, fault] = std::from_chars(text.data(), last, number);
  if (fault != std::errc() || end != last || text.empty()) return std::nullopt;
  return number;
}

std::vector<std::string> model_names() {
  std::vector<std::string> names;
  for (const Model& model : models())
    if (*model.command_name) names.emplace_back(model.command_name);
  return names;
}

const Model* parse_model(const std::string& text) {
  if (const Model* model = find_model_by_name(text)) return model;
  const auto code = whole_number(text);
  const Model* model = code && *code >= 0 && *code <= model_mask ? find_model(*code) : nullptr;
  if (!model)
    refuse("'" + text +
           "' is no model (W2P W3T W4P W5C W7P W3B W5X E R Wb N LN G- G+ FM, or a code)" +
           did_you_mean(text, model_names()));
  return model;
}

const Method* parse_method(const std::string& text) {
  const Method* method = find_method_by_name(text);
  if (!method)
    refuse("'" + text + "' is no method (rr, mle, rrs)" + did_you_mean(text, {"rr", "mle", "rrs"}));
  return method;
}

double parse_finite(const std::string& text) {
  const auto number = parse_number(text);
  if (!number) refuse("'" + text + "' is not a number");
  return *number;
}

double parse_percent(const std::string& text) { return parse_fraction(parse_finite(text), text); }

ColumnChoice parse_column(const std::string& text) {
  const std::size_t sign = text.find('=');
  const auto column = find_column_role(text.substr(0, sign));
  if (!column || sign == std::string::npos)
    refuse("'" + text +
           "' is no column such as x=Hours (x, status, censored, fails, susps, count, mode, "
           "comment)");
  return {*column, text.substr(sign + 1)};
}

std::string parse_word(const std::string& text) {
  if (text.empty()) refuse("a value that means failed can't be empty");
  return text;
}

int parse_length(const std::string& text, const std::string& size) {
  constexpr int least = 16;
  constexpr int most = 16384;
  const auto length = whole_number(text);
  if (!length || *length < least || *length > most)
    refuse("'" + size + "' is no size such as 1000x600 (each from 16 to 16384)");
  return *length;
}

}  // namespace

std::vector<const Model*> parse_models(const std::string& text) {
  return parse_list(text, parse_model);
}

std::vector<const Method*> parse_methods(const std::string& text) {
  return parse_list(text, parse_method);
}

FileFit parse_file_fit(const std::string& text) {
  const std::size_t colon = text.find(':');
  const bool has_number = colon != std::string::npos;
  const auto number = has_number ? whole_number(text.substr(0, colon)) : std::optional(0);
  const std::vector<std::string> parts = split(has_number ? text.substr(colon + 1) : text, '/');
  if (parts.size() != 2 || !number || (has_number && *number < 1))
    refuse("'" + text + "' is no fit such as W2P/mle, or 2:W2P/mle for the second file");
  return {static_cast<std::size_t>(*number), {parse_model(parts[0]), parse_method(parts[1])}};
}

std::vector<double> parse_percents(const std::string& text) {
  return parse_list(text, parse_percent);
}

std::vector<double> parse_numbers(const std::string& text) {
  return parse_list(text, parse_finite);
}

RankKind parse_rank_kind(const std::string& text) {
  if (text != "benard" && text != "exact")
    refuse("'" + text + "' is no kind of ranks (benard, exact)");
  return text == "benard" ? RankKind::benard : RankKind::exact;
}

double parse_slope(const std::string& text) {
  const std::vector<double> slopes = parse_numbers(text);
  if (slopes.size() != 1 || !is_slope(slopes.front()))
    refuse("'" + text + "' is not one slope from 1e-6 to 1e6");
  return slopes.front();
}

std::vector<ColumnChoice> parse_columns(const std::string& text) {
  return parse_list(text, parse_column);
}

std::vector<std::string> parse_words(const std::string& text) {
  return parse_list(text, parse_word);
}

DecimalSign parse_decimal_sign(const std::string& text) {
  if (text != "comma" && text != "point")
    refuse("'" + text + "' is no decimal sign (comma, point)");
  return text == "comma" ? DecimalSign::comma : DecimalSign::point;
}

SlopeFault slope_fault(const FitQuestions& questions) {
  const auto& choices = questions.choices;
  const bool wanted = std::any_of(choices.begin(), choices.end(), [](const FitChoice& choice) {
    return choice.model->code == model_code::weibayes;
  });
  if (questions.slope.has_value() == wanted) return SlopeFault::none;
  return wanted ? SlopeFault::missing : SlopeFault::not_wanted;
}

void require_slope_of_weibayes(const FitQuestions& questions) {
  const SlopeFault fault = slope_fault(questions);
  if (fault == SlopeFault::not_wanted) refuse("--slope is for a Weibayes fit (--model Wb)");
  if (fault == SlopeFault::missing) refuse("Wb needs its slope: add --slope BETA");
}

int parse_set(const std::string& text) {
  const auto set = whole_number(text);
  if (!set || *set < 1) refuse("'" + text + "' is no number of a data set (1 is the first)");
  return *set;
}

int parse_jobs(const std::string& text) {
  constexpr int most = 256;
  const auto jobs = whole_number(text);
  if (!jobs || *jobs < 1 || *jobs > most) refuse("'" + text + "' is no number of jobs (1 to 256)");
  return *jobs;
}

double parse_fraction(double percent, const std::string& text) {
  if (!(percent > 0.0 && percent < 100.0))
    refuse("'" + text + "' is not a percentage between 0 and 100");
  constexpr double nearest = 1e-8;  // closer to the ends the fractions lose their digits
  if (percent < nearest || percent > 100.0 - nearest)
    refuse("'" + text + "' is too close to 0 or 100 for a sure answer (1e-8 to 99.99999999)");
  return percent / 100.0;
}

PixelSize parse_size(const std::string& text) {
  const std::vector<std::string> parts = split(text, 'x');
  return {parse_length(parts.front(), text), parse_length(parts.size() == 2 ? parts[1] : "", text)};
}

int parse_density(const std::string& text) {
  constexpr int least = 36;
  constexpr int most = 2400;
  const auto density = whole_number(text);
  if (!density || *density < least || *density > most)
    refuse("'" + text + "' is no number of pixels an inch (36 to 2400)");
  return *density;
}

std::string parse_chart_type(const std::string& text) {
  const char* const found = find_chart_type(text);
  if (found && found != std::string_view(browse_chart_type)) return found;
  std::string names;
  for (const std::string type : chart_types())
    if (type != browse_chart_type) names += (names.empty() ? "" : ", ") + type;
  refuse("'" + text + "' is no chart type (" + names + ")");
}

void require_heading(const std::string& option, const std::string& heading) {
  if (heading.empty()) refuse(option + " takes the heading of a column");
}

void require_picture_name(const std::string& path) {
  const std::string type = extension(path);
  if (type != ".svg" && type != ".pdf" && type != ".png" && type != ".wmf")
    refuse("the chart '" + path + "' must end in .svg, .pdf, .png or .wmf");
}

void require_report_name(const std::string& path) {
  const std::string type = extension(path);
  if (type != ".pdf" && type != ".html" && type != ".htm")
    refuse("the report '" + path + "' must end in .pdf or .html");
}

DateTime parse_date(const std::string& text) {
  constexpr auto is_in_place = [](char c, std::size_t at) {
    return at == 4 || at == 7 ? c == '-' : c >= '0' && c <= '9';
  };
  bool is_date = text.size() == 10;
  for (std::size_t i = 0; is_date && i < text.size(); ++i) is_date = is_in_place(text[i], i);
  if (!is_date) refuse("--date must be a day as 2026-11-22");
  const auto year = std::chrono::year(std::stoi(text.substr(0, 4)));
  const auto month = std::chrono::month(static_cast<unsigned>(std::stoi(text.substr(5, 2))));
  const auto day = std::chrono::day(static_cast<unsigned>(std::stoi(text.substr(8, 2))));
  const std::chrono::year_month_day date = year / month / day;
  if (!date.ok()) refuse("--date " + text + " is no day of the calendar");
  const std::chrono::weekday weekday{std::chrono::sys_days(date)};
  return {static_cast<int>(year),
          static_cast<int>(static_cast<unsigned>(month)),
          static_cast<int>(static_cast<unsigned>(day)),
          0,
          0,
          0,
          static_cast<int>(weekday.c_encoding())};
}

PaperSize parse_paper(const std::string& text) {
  const std::string size = extension("." + text);
  if (size == ".a4") return PaperSize::a4;
  if (size != ".letter") refuse("--paper must be A4 or Letter");
  return PaperSize::letter;
}

void require_log_name(const std::string& path) {
  const std::string type = extension(path);
  if (type != ".rtf" && type != ".txt") refuse("the log '" + path + "' must end in .rtf or .txt");
}

std::string extension(const std::string& path) {
  const std::size_t dot = path.find_last_of("./");
  if (dot == std::string::npos || path[dot] == '/') return {};
  std::string type = path.substr(dot);
  for (char& c : type) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return type;
}

}  // namespace tavlo::cli
