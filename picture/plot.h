#pragma once

#include "calc/measure.h"
#include "picture/style.h"

#include <QPointF>
#include <QRect>

#include <cmath>

class QPainter;
class QString;

namespace tintwell {

/// Curves of output over input in a rectangle. The outputs span 0..1, extended as far as the curves
/// go.
class Plot {
public:
    /// \a axis must outlive the plot.
    Plot(const QRect& area, const GreyAxis& axis);

    const Range& inputs() const { return m_axis.inputs; }
    const Range& outputs() const { return m_outputs; }
    double x(double input) const;
    double y(double output) const;

    /// Visits the values of the grid lines over a range.
    template <typename Visit>
    static void eachTick(const Range& range, Visit&& visit) {
        const double step = tickStep(range);
        for (double n = std::ceil(range.from / step); n * step <= range.to; ++n) {
            visit(n * step);
        }
    }

    /// The ground, the grid, the diagonal and the three curves.
    void draw(QPainter& painter, const Style& style) const;

private:
    /// The grid spacing that gives a handful of lines.
    static double tickStep(const Range& range);
    static Range outputRange(const GreyAxis& axis);
    void drawGrid(QPainter& painter, const Style& style) const;
    void drawCurve(QPainter& painter, std::size_t channel) const;

    QRect m_area;
    const GreyAxis& m_axis;
    Range m_outputs;
};

} // namespace tintwell
