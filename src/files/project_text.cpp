#include "files/project_text.h"

#include <utility>

namespace tavlo {

void ProjectText::refuse(int error_number, ReadFault fault) {
  fault_ = std::move(fault);
  failed_routine_ = routine_;
  throw RunTimeError(error_number);
}

}  // namespace tavlo
