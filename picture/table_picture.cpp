#include "picture/table_picture.h"

#include "calc/measure.h"
#include "lut/read_lutfile.h"
#include "lut/table_kind.h"
#include "picture/plot.h"
#include "picture/slices.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstddef>

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
constexpr QRgb TitleColour = 0xFFECECEC;
constexpr QRgb CaptionColour = 0xFFC4C6C9;
constexpr QRgb LabelColour = 0xFF96999E;

using tintwell::GreyAxis;
using tintwell::Plot;
using tintwell::Range;
using tintwell::TableKind;
using tintwell::Tiling;

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

    /// \a image(blue, next) draws the slice at an index of the blue axis; the one after it will be
    /// at \a next.
    template <typename SliceImage>
    void drawSlices(const QRect& panel, const Read_LUTFile& lut, const char* name,
                    SliceImage&& image) {
        const int size = lut.size3D;
        const Range blues = {lut.domainMin3D[2], lut.domainMax3D[2]};
        const QRect area = panel.adjusted(0, CaptionHeight, 0, 0);
        const Tiling tiling =
            tintwell::bestTiling(area.size(), size, size, SliceGap, SliceLabelHeight);
        const int count = std::min(size, tiling.count());
        QString what = QStringLiteral("%1: red to the right, green down, blue from slice to slice")
                           .arg(QLatin1String(name));
        if (count < size) {
            what += QStringLiteral(", %1 of %2 slices").arg(count).arg(size);
        }
        caption(panel, what);
        for (int n = 0; n < count; ++n) {
            const int blue = tintwell::slicePosition(n, count, size);
            const QRect tile = tiling.tile(area, n);
            const int next = n + 1 < count ? tintwell::slicePosition(n + 1, count, size) : size;
            m_painter.drawImage(tile, image(blue, next));
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
        const QRect area(left, panel.top() + CaptionHeight, after.width(),
                         before.top() - TickHeight - panel.top() - CaptionHeight);
        const GreyAxis axis = tintwell::greyAxis(lut, tintwell::usedKind(lut), area.width());
        const Plot plot(area, axis);
        plot.draw(m_painter, tintwell::DarkStyle);
        labelTicks(area, plot);
        drawRamps(before, after, axis);
    }

    /// Curves of differences that are amplified, with their colours under them.
    void drawDifferenceCurves(const QRect& panel, const GreyAxis& axis, double amplification) {
        caption(panel, QStringLiteral("Differences of red, green and blue over the input"));
        const QRect ramp(panel.left() + TickWidth, panel.bottom() + 1 - RampHeight,
                         panel.width() - TickWidth, RampHeight);
        const QRect area(ramp.left(), panel.top() + CaptionHeight, ramp.width(),
                         ramp.top() - TickHeight - panel.top() - CaptionHeight);
        tintwell::Style style = tintwell::DarkStyle;
        style.diagonal = style.plot; // means nothing here
        const Plot plot(area, axis);
        plot.draw(m_painter, style);
        labelTicks(area, plot, amplification);
        QImage image(static_cast<int>(axis.outputs.size()), 1, QImage::Format_RGB32);
        for (int n = 0; n < image.width(); ++n) {
            image.setPixel(n, 0, tintwell::toRgb(axis.outputs[static_cast<std::size_t>(n)].data()));
        }
        m_painter.drawImage(ramp, image);
    }

private:
    /// The labels of the outputs are divided by \a amplification.
    void labelTicks(const QRect& area, const Plot& plot, double amplification = 1) {
        Plot::eachTick(plot.inputs(), [&](double tick) {
            text({static_cast<int>(plot.x(tick)) - 40, area.bottom() + 4, 80, TickHeight - 8},
                 Qt::AlignHCenter, QString::number(tick), LabelColour, 12);
        });
        Plot::eachTick(plot.outputs(), [&](double tick) {
            text({area.left() - 88, static_cast<int>(plot.y(tick)) - 10, 80, 20}, Qt::AlignRight,
                 QString::number(tick / amplification), LabelColour, 12);
        });
    }

    void drawRamps(const QRect& before, const QRect& after, const GreyAxis& axis) {
        QImage ramps(static_cast<int>(axis.outputs.size()), 2, QImage::Format_RGB32);
        for (int n = 0; n < ramps.width(); ++n) {
            const auto step = static_cast<std::size_t>(n);
            const auto input = static_cast<float>(axis.input(step));
            const float grey[] = {input, input, input};
            ramps.setPixel(n, 0, tintwell::toRgb(grey));
            ramps.setPixel(n, 1, tintwell::toRgb(axis.outputs[step].data()));
        }
        m_painter.drawImage(before | after, ramps);
        rampLabel(before, QStringLiteral("in"));
        rampLabel(after, QStringLiteral("out"));
    }

    void rampLabel(const QRect& ramp, const QString& label) {
        text({ramp.left() - 88, ramp.top(), 80, ramp.height()}, Qt::AlignRight, label, LabelColour,
             12);
    }

    void caption(const QRect& panel, const QString& what) {
        text({panel.left(), panel.top(), panel.width(), CaptionHeight - 8}, Qt::AlignLeft, what,
             CaptionColour, 14);
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

/// 1, 2 or 5 times a power of ten, by which the largest finite difference becomes 0.4 to 1; 1 if
/// there is none.
double amplificationOf(const Read_LUTFile& differences) {
    const tintwell::Channels largest =
        statisticsOf(differences, tintwell::usedKind(differences)).max;
    const auto most = static_cast<double>(std::max({largest[0], largest[1], largest[2]}));
    if (!(most > 0)) { // minus infinity if no difference is finite
        return 1;
    }
    const double power = std::pow(10, std::floor(-std::log10(most)));
    const double room = 1 / (most * power); // from 1 on, below 10
    return power * (room >= 5 ? 5 : room >= 2 ? 2 : 1);
}

tintwell::Channels largestOf(const tintwell::Channels& a, const float* b) {
    return {std::max(a[0], b[0]), std::max(a[1], b[1]), std::max(a[2], b[2])};
}

/// White if any of it is not finite.
tintwell::Channels amplified(const tintwell::Channels& difference, double amplification) {
    tintwell::Channels result = {1, 1, 1};
    if (std::all_of(difference.begin(), difference.end(),
                    [](float channel) { return std::isfinite(channel); })) {
        std::transform(difference.begin(), difference.end(), result.begin(),
                       [&](float channel) { return static_cast<float>(channel * amplification); });
    }
    return result;
}

/// The largest differences of the slices from \a blue to before \a next.
QImage differenceSlice(const Read_LUTFile& lut, int blue, int next, double amplification) {
    QImage image(lut.size3D, lut.size3D, QImage::Format_RGB32);
    for (int green = 0; green < lut.size3D; ++green) {
        for (int red = 0; red < lut.size3D; ++red) {
            tintwell::Channels largest = {};
            for (int n = blue; n < next; ++n) {
                largest = largestOf(largest, lut.data3D[red][green][n]);
            }
            image.setPixel(red, green, tintwell::toRgb(amplified(largest, amplification).data()));
        }
    }
    return image;
}

/// The largest differences of the entries next to each of \a steps.
GreyAxis differenceAxis(const Read_LUTFile& lut, int steps, double amplification) {
    GreyAxis axis = tintwell::greyAxis(lut, TableKind::OneD, steps);
    for (int step = 0; step < steps; ++step) {
        const auto entryAt = [&](double place) {
            const double entry = place * (lut.size1D - 1) / (steps - 1);
            return std::clamp(static_cast<int>(std::lround(entry)), 0, lut.size1D - 1);
        };
        tintwell::Channels largest = {};
        const int last = entryAt(step + 0.5);
        for (int n = entryAt(step - 0.5); n <= last; ++n) {
            largest = largestOf(largest, lut.data1D[n]);
        }
        axis.outputs[static_cast<std::size_t>(step)] = amplified(largest, amplification);
    }
    return axis;
}

} // namespace

QImage tintwell::drawDifferences(const Read_LUTFile& differences, const QString& title) {
    const double amplification = amplificationOf(differences);
    QImage canvas(CanvasSize, QImage::Format_RGB32);
    Sheet sheet(canvas);
    sheet.drawTitle(title, QStringLiteral("differences x %1: black where there is none, white "
                                          "where it is not finite")
                               .arg(amplification));
    if (differences.hasTable3D()) {
        sheet.drawSlices(Body, differences, "Differences", [&](int blue, int next) {
            return differenceSlice(differences, blue, next, amplification);
        });
    } else {
        sheet.drawDifferenceCurves(
            Body, differenceAxis(differences, Body.width() - TickWidth, amplification),
            amplification);
    }
    return canvas;
}

QImage tintwell::drawTable(const Read_LUTFile& lut, const QString& title, const QString& subtitle) {
    QImage canvas(CanvasSize, QImage::Format_RGB32);
    Sheet sheet(canvas);
    sheet.drawTitle(title, subtitle);
    QRect greyAxisPanel = Body;
    if (lut.hasTable3D()) {
        sheet.drawSlices({Body.topLeft(), QSize(SlicesWidth, Body.height())}, lut, "Lattice",
                         [&lut](int blue, int /*next*/) { return tintwell::slice(lut, blue); });
        greyAxisPanel.setLeft(GreyAxisLeft);
    }
    sheet.drawGreyAxis(greyAxisPanel, lut);
    return canvas;
}
