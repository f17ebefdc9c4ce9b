#include "actions/export_data.h"

#include <vector>

#include "actions/file_faults.h"
#include "actions/recent_files.h"
#include "files/column_names.h"
#include "files/data_notation.h"
#include "files/lost_in_export.h"
#include "files/separated_writer.h"

namespace tavlo {

namespace {

bool ends_in(const std::string& path, std::string_view ending) {
  return path.size() > ending.size() &&
         equal_in_any_case(std::string_view(path).substr(path.size() - ending.size()), ending);
}

std::vector<std::string> lost(const Project& project, int data_index, const std::string& path) {
  auto words =
      (is_table_file_name(path) ? lost_in_separated_text : lost_in_notation)(project, data_index);
  if (const int others = project.data.bound() - 1; others > 0)
    words.push_back(others == 1 ? "the other data set"
                                : "the " + std::to_string(others) + " other data sets");
  return words;
}

void tell_lost(Session& session, const std::string& path, const std::vector<std::string>& words) {
  if (words.empty()) return;
  std::string text = "A data file can't hold all of a project. This one is without:";
  for (const std::string& each : words) text += "\n- " + each;
  session.ports.prompts.show({"Export to " + bare_file_name(path),
                              text + "\nThe project itself is not saved by an export.",
                              BoxIcon::information, BoxButtons::ok});
}

}  // namespace

bool is_table_file_name(const std::string& path) { return ends_in(path, ".csv"); }

bool is_data_file_name(const std::string& path) {
  return is_table_file_name(path) || ends_in(path, ".txt");
}

bool export_data(Session& session, int data_index, const std::string& path) {
  const DataSet& data = session.project.data(data_index);
  const std::string bytes =
      is_table_file_name(path) ? write_separated_text(data) : write_notation(data);
  if (!holds_rows(bytes, is_table_file_name(path))) {
    session.ports.prompts.show({"Export to " + bare_file_name(path),
                                "There are no rows to write.  Nothing was exported.", BoxIcon::stop,
                                BoxButtons::ok});
    return false;
  }
  const FileResult done = session.ports.file_system.write_keeping_former(path, bytes);
  if (!done) {
    tell_fault(session, path, done);
    return false;
  }
  session.ports.views.status("Exported: " + bare_file_name(path));
  tell_lost(session, path, lost(session.project, data_index, path));
  return true;
}

}  // namespace tavlo
