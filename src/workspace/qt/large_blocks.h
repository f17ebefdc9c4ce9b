// Large blocks: the memory of a large calculation goes back to the system when it is over.
// The C library of Linux otherwise learns from the first of them to keep all up to 32 MB, and
// a sheet of a million rows would hold half as much again as it needs.
#pragma once

namespace tavlo {

/// To be called once, at the start of a program. Does nothing where the system has no such
/// choice.
void return_large_blocks();

}  // namespace tavlo
