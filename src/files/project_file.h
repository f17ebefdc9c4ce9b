// Project file: a whole project as bytes, and back. The file has a magic line, the numbers of
// its records, a section for each chart, data set and fit set, and the log. Reading makes a
// new project; nothing of another one is touched.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/data_section.h"
#include "files/project_text.h"
#include "project/project.h"

namespace tavlo {

/// Why a project can't be read or written: the number of a run-time error, what was wrong in
/// which line, and what was at work.
struct ProjectFault {
  int error_number = 0;
  ReadFault fault;
  ProjectText::Place place;
};

/// What a file may leave open.
struct UnstatedRanks {
  RankKind kind = RankKind::benard;  ///< that such sets get
  std::vector<std::string> sets;     ///< receives their titles
};

/// Makes `project` what the bytes hold, with its identities made unique and every data set
/// with its fits. On a fault it stays as it was.
std::optional<ProjectFault> read_project(std::string_view bytes, Project& project,
                                         UnstatedRanks* unstated = nullptr);

struct ProjectBytes {
  std::string bytes;
  bool is_utf8 = false;  ///< some text is in no code page of the format's own
};

/// What the person hears of such a project.
inline constexpr const char* utf8_words =
    "The project holds characters that the usual code page of project files (Windows-1252) lacks, "
    "so the file was saved in UTF-8. Tavlo opens it; older programs may show some of its texts "
    "wrongly.";

/// The bytes of a project. Charts are written as they are seen without zoom.
std::optional<ProjectFault> write_project(const Project& project, ProjectBytes& written,
                                          Ranking ranking = Ranking::of_changed_rows);

/// True for the first line of a project file, as it stands or in other case.
bool is_magic_line(std::string_view line);

}  // namespace tavlo
