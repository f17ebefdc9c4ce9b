#include "files/project_text.h"

#include <utility>

namespace tavlo {

void ProjectText::refuse(int error_number, ReadFault fault) {
  fault_ = std::move(fault);
  failed_at_ = at_work_;
  throw RunTimeError(error_number);
}

}  // namespace tavlo
