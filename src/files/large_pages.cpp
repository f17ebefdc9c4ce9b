#include "files/large_pages.h"

#include <sys/mman.h>

#include <cstdint>

namespace tavlo {

void prefer_large_pages(const void* block, std::size_t bytes) {
  constexpr std::uintptr_t page = std::uintptr_t{1} << 21;
  const auto start = reinterpret_cast<std::uintptr_t>(block);
  const std::uintptr_t first = (start + page - 1) & ~(page - 1);
  const std::uintptr_t last = (start + bytes) & ~(page - 1);
  if (first < last) ::madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
}

}  // namespace tavlo
