#include "actions/file_faults.h"

namespace tavlo {

namespace {

constexpr ProjectText::Place open_or_save = {"File Read/Write error: ", "RW_Project routine:"};

int error_number(FileFault fault) {
  switch (fault) {
    case FileFault::not_found: return run_time::file_not_found;
    case FileFault::no_permission: return run_time::permission_denied;
    case FileFault::disk_full: return run_time::disk_full;
    case FileFault::too_large: return run_time::out_of_memory;
    case FileFault::not_a_regular_file:
    case FileFault::not_a_folder:
    case FileFault::exists_already: return run_time::path_access;
    default: return run_time::device_error;
  }
}

void tell(Session& session, ProjectText::Place place, const std::string& path, int number,
          const std::string& what) {
  session.errors.add_lines({place.section, place.routine, path, what});
  const RunTimeError error(number);
  session.errors.Error_Chk_Show(&error);
}

}  // namespace

void tell_fault(Session& session, const std::string& path, const ProjectFault& fault) {
  const std::string line =
      fault.fault.line > 0 ? "Line " + std::to_string(fault.fault.line) + ": " : "";
  const bool named = *fault.place.routine != '\0';
  tell(session, named ? fault.place : open_or_save, path, fault.error_number,
       line + fault.fault.what);
}

void tell_fault(Session& session, const std::string& path, const FileResult& fault) {
  tell(session, open_or_save, path, error_number(fault.fault), fault.message);
}

}  // namespace tavlo
