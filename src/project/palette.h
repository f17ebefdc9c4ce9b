// The palette that a user picks colours from.
#pragma once

#include <array>
#include <cstdint>

namespace tavlo {

/// Colours 1 to 25, 24-bit words with red in the low byte; slot 0 is not used.
inline constexpr std::array<std::int32_t, 26> gColors = {
    0,                                                 //
    0x000000, 0x003399, 0x008080, 0x800000, 0x008000,  //
    0x808080, 0x0000FF, 0x00FFFF, 0xFF0000, 0x669933,  //
    0x969696, 0x800080, 0x99CCFF, 0xFF6633, 0x808000,  //
    0xC0C0C0, 0xFF00FF, 0x99FFFF, 0xFFFF00, 0x00FF00,  //
    0xFFFFFF, 0xFF99CC, 0xCC99FF, 0xFFFFCC, 0xCCFFCC};

}  // namespace tavlo
