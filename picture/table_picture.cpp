#include "picture/table_picture.h"

#include "calc/measure.h"
#include "lut/read_lutfile.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

namespace {

constexpr QSize CanvasSize(1280, 776);
constexpr QRect TitleBox(40, 28, 1200, 32);
constexpr QRect SubtitleBox(40, 60, 1200, 20);
constexpr QRect Body(40, 104, 1200, 632);
constexpr int SlicesWidth = 756;  ///< of the body, if there is a lattice
constexpr int GreyAxisLeft = 840; ///< of the canvas, next to a lattice
constexpr int CaptionHeight = 28; ///< above a panel
constexpr int TickWidth = 36;     ///< of the labels to the left of a plot
constexpr int TickHeight = 26;    ///< of the labels under a plot
constexpr int RampHeight = 48;
constexpr int SliceGap = 8; ///< between slices, and under each of them
constexpr int SliceLabelHeight = 14;

constexpr QRgb Background = 0xFF1E1F21;
constexpr QRgb PlotBackground = 0xFF26282B;
constexpr QRgb GridLine = 0xFF36393D;
constexpr QRgb Diagonal = 0xFF5A5E64;
constexpr QRgb TitleColour = 0xFFECECEC;
constexpr QRgb CaptionColour = 0xFFC4C6C9;
constexpr QRgb LabelColour = 0xFF96999E;
/// Where curves overlap their colours add up; all three give white.
constexpr std::array<QRgb, 3> CurveColours = {0xFFFF5A50, 0xFF50D070, 0xFF5096FF};

using tintwell::Channels;
using tintwell::GreyAxis;
using tintwell::Range;

/// The grid spacing that gives a handful of lines.
double tickStep(const Range& range) {
    double step = 0.25;
    while (range.width() / step > 6) {
        step *= 2;
    }
    return step;
}

/// 0..1, extended as far as the curves go.
Range outputRange(const GreyAxis& axis) {
    Range range = {0, 1};
    for (const Channels& colour : axis.outputs) {
        for (const float value : colour) {
            if (std::isfinite(value)) {
                range.from = std::min<double>(range.from, value);
                range.to = std::max<double>(range.to, value);
            }
        }
    }
    const double step = tickStep(range);
    return {std::floor(range.from / step) * step, std::ceil(range.to / step) * step};
}

int toCode(float value) {
    return static_cast<int>((value > 0 ? std::min(value, 1.0F) : 0.0F) * 255 + 0.5F);
}

QRgb toRgb(const float* colour) {
    return qRgb(toCode(colour[0]), toCode(colour[1]), toCode(colour[2]));
}

/// One plane of the lattice, one pixel per point.
QImage slice(const Read_LUTFile& lut, int blue) {
    QImage image(lut.size3D, lut.size3D, QImage::Format_RGB32);
    for (int green = 0; green < lut.size3D; ++green) {
        for (int red = 0; red < lut.size3D; ++red) {
            image.setPixel(red, green, toRgb(lut.data3D[red][green][blue]));
        }
    }
    return image;
}

/// How slices are laid out in an area.
struct Tiling {
    int columns;
    int rows;
    int side; ///< of a slice in pixels, a multiple of the lattice size

    int count() const { return columns * rows; }
};

Tiling tilingOf(const QRect& area, int side) {
    return {(area.width() + SliceGap) / (side + SliceGap),
            (area.height() + SliceGap) / (side + SliceLabelHeight + SliceGap), side};
}

/// The largest slices that leave room for all of them; for a large lattice, as many as fit.
Tiling bestTiling(const QRect& area, int size) {
    for (int side = area.height() / size * size; side > size; side -= size) {
        const Tiling tiling = tilingOf(area, side);
        if (tiling.count() >= size) {
            return tiling;
        }
    }
    return tilingOf(area, size);
}

/// Draws on a canvas in the style of the picture.
class Sheet {
public:
    explicit Sheet(QImage& canvas) : m_painter(&canvas) {
        canvas.fill(Background);
        m_painter.setRenderHint(QPainter::Antialiasing);
    }

    void drawTitle(const QString& title, const QString& subtitle) {
        text(TitleBox, Qt::AlignLeft, title, TitleColour, 24);
        text(SubtitleBox, Qt::AlignLeft, subtitle, LabelColour, 15);
    }

    void drawSlices(const QRect& panel, const Read_LUTFile& lut) {
        const int size = lut.size3D;
        const Range blues = {lut.domainMin3D[2], lut.domainMax3D[2]};
        const QRect area = panel.adjusted(0, CaptionHeight, 0, 0);
        const Tiling tiling = bestTiling(area, size);
        const int count = std::min(size, tiling.count());
        QString what =
            QStringLiteral("Lattice: red to the right, green down, blue from slice to slice");
        if (count < size) {
            what += QStringLiteral(", %1 of %2 slices").arg(count).arg(size);
        }
        caption(panel, what);
        for (int n = 0; n < count; ++n) {
            const int blue = count > 1 ? n * (size - 1) / (count - 1) : 0;
            const QRect tile(area.left() + n % tiling.columns * (tiling.side + SliceGap),
                             area.top() +
                                 n / tiling.columns * (tiling.side + SliceLabelHeight + SliceGap),
                             tiling.side, tiling.side);
            m_painter.drawImage(tile, slice(lut, blue));
            const double value = blues.at(size > 1 ? static_cast<double>(blue) / (size - 1) : 0);
            text({tile.left(), tile.bottom() + 2, tile.width(), SliceLabelHeight}, Qt::AlignLeft,
                 QString::number(value, 'f', 2), LabelColour, 11);
        }
    }

    void drawGreyAxis(const QRect& panel, const Read_LUTFile& lut) {
        caption(panel, QStringLiteral("Grey axis: red, green and blue out over grey in"));
        const int left = panel.left() + TickWidth;
        const QRect after(left, panel.bottom() + 1 - RampHeight, panel.width() - TickWidth,
                          RampHeight);
        const QRect before = after.translated(0, -RampHeight);
        const QRect plot(left, panel.top() + CaptionHeight, after.width(),
                         before.top() - TickHeight - panel.top() - CaptionHeight);
        const GreyAxis axis = tintwell::greyAxis(lut, plot.width());
        drawCurves(plot, axis);
        drawRamps(before, after, axis);
    }

private:
    void drawCurves(const QRect& plot, const GreyAxis& axis) {
        const Range outputs = outputRange(axis);
        const auto x = [&](double input) {
            return plot.left() + axis.inputs.fractionOf(input) * plot.width();
        };
        const auto y = [&](double output) {
            return plot.top() + (1 - outputs.fractionOf(output)) * plot.height();
        };
        m_painter.fillRect(plot, QColor(PlotBackground));
        eachTick(axis.inputs, [&](double tick, const QString& label) {
            line({x(tick), y(outputs.from)}, {x(tick), y(outputs.to)}, GridLine);
            text({static_cast<int>(x(tick)) - 40, plot.bottom() + 4, 80, TickHeight - 8},
                 Qt::AlignHCenter, label, LabelColour, 12);
        });
        eachTick(outputs, [&](double tick, const QString& label) {
            line({x(axis.inputs.from), y(tick)}, {x(axis.inputs.to), y(tick)}, GridLine);
            text({plot.left() - 88, static_cast<int>(y(tick)) - 10, 80, 20}, Qt::AlignRight, label,
                 LabelColour, 12);
        });

        m_painter.setClipRect(plot.adjusted(0, -1, 0, 1)); // for the width of the lines
        line({x(axis.inputs.from), y(axis.inputs.from)}, {x(axis.inputs.to), y(axis.inputs.to)},
             Diagonal, Qt::DashLine);
        m_painter.setCompositionMode(QPainter::CompositionMode_Screen);
        for (std::size_t c = 0; c < CurveColours.size(); ++c) {
            QPolygonF curve;
            for (std::size_t n = 0; n < axis.outputs.size(); ++n) {
                if (std::isfinite(axis.outputs[n][c])) {
                    curve << QPointF(x(axis.input(n)), y(axis.outputs[n][c]));
                }
            }
            m_painter.setPen(QPen(QColor(CurveColours[c]), 2));
            m_painter.drawPolyline(curve);
        }
        m_painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        m_painter.setClipping(false);
    }

    void drawRamps(const QRect& before, const QRect& after, const GreyAxis& axis) {
        QImage ramps(static_cast<int>(axis.outputs.size()), 2, QImage::Format_RGB32);
        for (int n = 0; n < ramps.width(); ++n) {
            const auto step = static_cast<std::size_t>(n);
            const auto input = static_cast<float>(axis.input(step));
            const float grey[] = {input, input, input};
            ramps.setPixel(n, 0, toRgb(grey));
            ramps.setPixel(n, 1, toRgb(axis.outputs[step].data()));
        }
        m_painter.drawImage(before | after, ramps);
        rampLabel(before, QStringLiteral("in"));
        rampLabel(after, QStringLiteral("out"));
    }

    void rampLabel(const QRect& ramp, const QString& label) {
        text({ramp.left() - 88, ramp.top(), 80, ramp.height()}, Qt::AlignRight, label, LabelColour,
             12);
    }

    template <typename Visit>
    static void eachTick(const Range& range, Visit&& visit) {
        const double step = tickStep(range);
        for (double n = std::ceil(range.from / step); n * step <= range.to; ++n) {
            visit(n * step, QString::number(n * step));
        }
    }

    void caption(const QRect& panel, const QString& what) {
        text({panel.left(), panel.top(), panel.width(), CaptionHeight - 8}, Qt::AlignLeft, what,
             CaptionColour, 14);
    }

    void line(const QPointF& from, const QPointF& to, QRgb colour,
              Qt::PenStyle style = Qt::SolidLine) {
        m_painter.setPen(QPen(QColor(colour), 1, style));
        m_painter.drawLine(from, to);
    }

    void text(const QRect& box, Qt::Alignment side, const QString& what, QRgb colour, int height) {
        QFont font(QStringLiteral("sans-serif"));
        font.setPixelSize(height);
        m_painter.setFont(font);
        m_painter.setPen(QColor(colour));
        m_painter.drawText(box, static_cast<int>(side | Qt::AlignVCenter),
                           QFontMetrics(font).elidedText(what, Qt::ElideMiddle, box.width()));
    }

    QPainter m_painter;
};

} // namespace

QImage tintwell::drawTable(const Read_LUTFile& lut, const QString& title, const QString& subtitle) {
    QImage canvas(CanvasSize, QImage::Format_RGB32);
    Sheet sheet(canvas);
    sheet.drawTitle(title, subtitle);
    QRect greyAxisPanel = Body;
    if (lut.hasTable3D()) {
        sheet.drawSlices({Body.topLeft(), QSize(SlicesWidth, Body.height())}, lut);
        greyAxisPanel.setLeft(GreyAxisLeft);
    }
    sheet.drawGreyAxis(greyAxisPanel, lut);
    return canvas;
}
