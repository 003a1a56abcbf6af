#pragma once

#include <QImage>
#include <QRect>

class Read_LUTFile;

namespace tintwell {

/// The colour of a sample, channels cut to 0..1. NaN is 0.
QRgb toRgb(const float* sample);

/// The lattice at index \a blue of its third axis, a pixel a point: red to the right, green down.
/// The table must be in R, G, B order.
QImage slice(const Read_LUTFile& lut, int blue);

/// What the lattice makes of the inputs of equal blue, at \a blue of the way through the domain:
/// \a steps x \a steps of them over the whole domain, laid out in the same way.
QImage evaluatedSlice(const Read_LUTFile& lut, double blue, int steps);

/// The index on the blue axis of slice \a n of \a count, which are spread evenly over \a size
/// points.
int slicePosition(int n, int count, int size);

/// Square tiles in rows, with gaps between them and labels under them.
struct Tiling {
    int columns;
    int rows;
    int side; ///< of a tile in pixels
    int gap;
    int labelHeight;

    int count() const { return columns * rows; }
    /// The place of tile \a n in an area.
    QRect tile(const QRect& area, int n) const {
        return {area.left() + n % columns * (side + gap),
                area.top() + n / columns * (side + labelHeight + gap), side, side};
    }
};

/// The tiling with the largest tiles that leaves room for \a wanted of them: their sides are
/// multiples of \a step, at least one. Fewer tiles only if even the smallest leave no room.
Tiling bestTiling(const QSize& area, int wanted, int step, int gap, int labelHeight);

} // namespace tintwell
