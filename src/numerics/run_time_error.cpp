#include "numerics/run_time_error.h"

namespace tavlo {

const char* run_time_description(int number) {
  switch (number) {
    case run_time::invalid_argument: return "Invalid procedure call or argument";
    case run_time::overflow: return "Overflow";
    case run_time::out_of_memory: return "Out of memory";
    case run_time::subscript: return "Subscript out of range";
    case run_time::division_by_zero: return "Division by zero";
    case run_time::type_mismatch: return "Type mismatch";
    case run_time::out_of_string_space: return "Out of string space";
    case run_time::bad_file_name: return "Bad file name or number";
    case run_time::file_not_found: return "File not found";
    case run_time::device_error: return "Device I/O error";
    case run_time::disk_full: return "Disk full";
    case run_time::input_past_end: return "Input past end of file";
    case run_time::permission_denied: return "Permission denied";
    case run_time::path_access: return "Path/File access error";
    case run_time::path_not_found: return "Path not found";
    default: return "Application-defined error";
  }
}

}  // namespace tavlo
