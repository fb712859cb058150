#pragma once

namespace platform {

/// Of 0xBBGGRR, as colours are stored and chosen, 0xRRGGBB, and back. What stands above is cut.
constexpr int swapRedAndBlue(int color) {
    return ((color & 0xff) << 16) | (color & 0xff00) | ((color >> 16) & 0xff);
}

} // namespace platform
