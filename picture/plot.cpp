#include "picture/plot.h"

#include <QPainter>
#include <QPolygonF>

#include <algorithm>

namespace tintwell {

Plot::Plot(const QRect& area, const GreyAxis& axis)
    : m_area(area), m_axis(axis), m_outputs(outputRange(axis)) {}

double Plot::x(double input) const {
    return m_area.left() + inputs().fractionOf(input) * m_area.width();
}

double Plot::y(double output) const {
    return m_area.top() + (1 - m_outputs.fractionOf(output)) * m_area.height();
}

double Plot::tickStep(const Range& range) {
    double step = 0.25;
    while (range.width() / step > 6) {
        step *= 2;
    }
    return step;
}

Range Plot::outputRange(const GreyAxis& axis) {
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

void Plot::draw(QPainter& painter, const Style& style) const {
    painter.fillRect(m_area, QColor(style.plot));
    drawGrid(painter, style);
    painter.setClipRect(m_area.adjusted(0, -1, 0, 1)); // for the width of the lines
    painter.setPen(QPen(QColor(style.diagonal), 1, Qt::DashLine));
    painter.drawLine(QPointF(x(inputs().from), y(inputs().from)),
                     QPointF(x(inputs().to), y(inputs().to)));
    painter.setCompositionMode(style.overlap);
    for (std::size_t channel = 0; channel < style.curves.size(); ++channel) {
        painter.setPen(QPen(QColor(style.curves[channel]), 2));
        drawCurve(painter, channel);
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setClipping(false);
}

void Plot::drawGrid(QPainter& painter, const Style& style) const {
    painter.setPen(QPen(QColor(style.grid), 1));
    eachTick(inputs(), [&](double tick) {
        painter.drawLine(QPointF(x(tick), y(m_outputs.from)), QPointF(x(tick), y(m_outputs.to)));
    });
    eachTick(m_outputs, [&](double tick) {
        painter.drawLine(QPointF(x(inputs().from), y(tick)), QPointF(x(inputs().to), y(tick)));
    });
}

void Plot::drawCurve(QPainter& painter, std::size_t channel) const {
    QPolygonF curve;
    for (std::size_t n = 0; n < m_axis.outputs.size(); ++n) {
        if (std::isfinite(m_axis.outputs[n][channel])) {
            curve << QPointF(x(m_axis.input(n)), y(m_axis.outputs[n][channel]));
        }
    }
    painter.drawPolyline(curve);
}

} // namespace tintwell
