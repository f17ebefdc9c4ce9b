#include "workspace/qt/large_blocks.h"

#ifdef __linux__
#include <malloc.h>
#endif

namespace tavlo {

void return_large_blocks() {
#ifdef M_MMAP_THRESHOLD
  constexpr int bytes = 1 << 20;
  mallopt(M_MMAP_THRESHOLD, bytes);
#endif
}

}  // namespace tavlo
