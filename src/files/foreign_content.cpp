#include "files/foreign_content.h"

#include <utility>

#include "files/point_list.h"
#include "files/text_encoding.h"
#include "files/text_lines.h"
#include "numerics/number_text.h"
#include "project/code_page.h"

namespace tavlo {

void store(ForeignContent content, Project& project) {
  Project filled = project;
  if (content.points) fill_data_set({std::move(*content.points), {}, {}}, filled.data(1));
  if (content.fits) {
    FitSet& set = filled.fits(1);
    set.Fits.resize(0);
    for (FitResult& fit : *content.fits) set.Fits.push_back(std::move(fit));
    set.nFits = set.Fits.bound();
  }
  for (auto& [item, title] : content.titles) filled.charts(1).Boxes(item).Text2 = std::move(title);
  project = std::move(filled);
}

std::optional<NumberedFault> read_foreign(std::string_view bytes,
                                          const std::function<void(ProjectReader&)>& read) {
  constexpr char ctrl_z = '\x1A';
  std::string converted;
  if (auto fault = decode_text(bytes, converted))
    return NumberedFault{run_time::type_mismatch, *fault};
  while (bytes.ends_with(ctrl_z)) bytes.remove_suffix(1);
  ProjectReader file(bytes);
  try {
    read(file);
  } catch (const RunTimeError& error) {
    ReadFault fault = file.fault();
    if (fault.what.empty()) fault = {file.line_number(), error.description()};
    return NumberedFault{error.number(), std::move(fault)};
  }
  return std::nullopt;
}

void require_room(ProjectReader& file, std::int32_t number, std::size_t least_bytes,
                  const std::string& things) {
  const std::string words = "Count out of range in file: " + std::to_string(number) + ' ' + things;
  if (number < 0) file.refuse(run_time::subscript, words);
  if (static_cast<std::size_t>(number) > file.bytes_left() / least_bytes)
    file.refuse(run_time::subscript, words + ", but only " + std::to_string(file.bytes_left()) +
                                         " bytes are left in the file");
}

void refuse_point_too_many(ProjectReader& file, std::string_view line) {
  const std::string_view first = line.substr(0, line.find_first_of(" \t,"));
  if (parse_number(first))
    file.refuse(run_time::subscript, "there are more points than the file says: " + quoted(line));
}

std::string foreign_words(std::string_view bytes) {
  return is_utf8(bytes) ? std::string(bytes) : utf8_from_ansi(bytes);
}

FitResult foreign_fit(const Life& life) {
  FitResult fit;
  fit.ModelCode = life.model;
  fit.Status = FitStatus::stale;
  for (const FitParam& row : life.rows) fit.Rows.push_back(row);
  fit.nRows = fit.Rows.bound();
  fit.request.model = fit.ModelCode;
  return fit;
}

}  // namespace tavlo
