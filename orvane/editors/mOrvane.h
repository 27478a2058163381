#pragma once

namespace Orvane::mOrvane {

// Sizes of the original layout are written in twips; 15 twips make a pixel.
constexpr int TwipsToPixels(int twips) {
    return twips / 15;
}

} // namespace Orvane::mOrvane
