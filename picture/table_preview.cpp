#include "picture/table_preview.h"

#include "calc/measure.h"
#include "lut/read_lutfile.h"
#include "lut/table_kind.h"
#include "picture/plot.h"
#include "picture/slices.h"

#include <algorithm>

namespace tintwell {

namespace {

constexpr int Gap = 6;
constexpr int FewSlices = 3;
constexpr int MostSlices = 5;
constexpr int MostSteps = 64; ///< of a slice, which is stretched if it is larger

/// Draws plots and slices on the tiles of an area, one after the other.
class Tiles {
public:
    Tiles(QImage& canvas, const QRect& area, const Tiling& tiling, const Style& style)
        : m_painter(&canvas), m_area(area), m_tiling(tiling), m_style(style) {
        m_painter.setRenderHint(QPainter::Antialiasing);
        m_painter.setRenderHint(QPainter::SmoothPixmapTransform);
    }

    void addCurves(const Read_LUTFile& lut, TableKind kind) {
        const QRect tile = next();
        const auto steps = static_cast<int>(tile.width() * m_painter.device()->devicePixelRatioF());
        const GreyAxis axis = greyAxis(lut, kind, std::max(steps, 2));
        Plot(tile, axis).draw(m_painter, m_style);
    }

    void addSlices(const Read_LUTFile& lut, int count) {
        for (int n = 0; n < count; ++n) {
            const double blue = count > 1 ? n / (count - 1.0) : 0;
            const int steps = std::clamp(m_tiling.side, 2, MostSteps);
            m_painter.drawImage(next(), evaluatedSlice(lut, blue, steps));
        }
    }

private:
    QRect next() { return m_tiling.tile(m_area, m_used++); }

    QPainter m_painter;
    QRect m_area;
    Tiling m_tiling;
    const Style& m_style;
    int m_used = 0;
};

} // namespace

QImage drawPreview(const Read_LUTFile& lut, const QSize& size, qreal devicePixelRatio,
                   const Style& style) {
    QImage canvas(size * devicePixelRatio, QImage::Format_ARGB32_Premultiplied);
    canvas.setDevicePixelRatio(devicePixelRatio);
    canvas.fill(Qt::transparent);
    const int plots = (lut.hasTable1D() ? 1 : 0) + (lut.hasTable3D() ? 1 : 0);
    const int fewest = plots + (lut.hasTable3D() ? FewSlices : 0);
    const Tiling tiling = bestTiling(size, fewest, 1, Gap, 0);
    Tiles tiles(canvas, QRect(QPoint(), size), tiling, style);
    if (lut.hasTable1D()) {
        tiles.addCurves(lut, TableKind::OneD);
    }
    if (lut.hasTable3D()) {
        tiles.addSlices(lut, std::min(MostSlices, tiling.count() - plots));
        tiles.addCurves(lut, TableKind::ThreeD);
    }
    return canvas;
}

} // namespace tintwell
