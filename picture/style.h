#pragma once

#include <QColor>
#include <QPainter>
#include <QPalette>

#include <array>

namespace tintwell {

/// The colours that a picture is drawn in, and what curves do where they overlap.
struct Style {
    QRgb plot;     ///< the ground of a plot
    QRgb grid;     ///< its lines
    QRgb diagonal; ///< where output equals input
    std::array<QRgb, 3> curves;
    QPainter::CompositionMode overlap;
};

/// Light on dark: colours add up, and all three curves give white.
inline constexpr Style DarkStyle = {
    .plot = 0xFF26282B,
    .grid = 0xFF36393D,
    .diagonal = 0xFF5A5E64,
    .curves = {0xFFFF5A50, 0xFF50D070, 0xFF5096FF},
    .overlap = QPainter::CompositionMode_Screen,
};

/// Dark on light: colours are filtered one by the other, and all three curves give black.
inline constexpr Style LightStyle = {
    .plot = 0xFFFFFFFF,
    .grid = 0xFFE4E6E8,
    .diagonal = 0xFFB4B8BC,
    .curves = {0xFFE0403A, 0xFF2C9C48, 0xFF3070E0},
    .overlap = QPainter::CompositionMode_Multiply,
};

/// The style that suits the texts and fields of a window.
inline const Style& styleFor(const QPalette& palette) {
    const bool isDark = palette.color(QPalette::Base).lightness() < 128;
    return isDark ? DarkStyle : LightStyle;
}

} // namespace tintwell
