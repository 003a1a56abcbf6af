#include "app/table_view.h"

#include "picture/table_preview.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QPainter>
#include <QTextOption>

namespace {

constexpr int LowestLines = 7; ///< of text, in height

/// Tells screen readers that a view is a picture.
QAccessibleInterface* makeAccessible(const QString& type, QObject* object) {
    return type == QLatin1String("TableView")
               ? new QAccessibleWidget(qobject_cast<QWidget*>(object), QAccessible::Graphic)
               : nullptr;
}

} // namespace

TableView::TableView(QWidget* parent) : QWidget(parent) {
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
}

void TableView::showTable(const Read_LUTFile& lut) {
    m_table = &lut;
    m_text.clear();
    m_picture = {};
    update();
}

void TableView::showText(const QString& text) {
    m_table = nullptr;
    m_text = text;
    m_picture = {};
    update();
}

QSize TableView::minimumSizeHint() const {
    return {0, LowestLines * fontMetrics().lineSpacing()};
}

void TableView::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        m_picture = {};
    }
    QWidget::changeEvent(event);
}

const QImage& TableView::picture() {
    const qreal ratio = devicePixelRatioF();
    if (m_picture.size() != size() * ratio) {
        m_picture = tintwell::drawPreview(*m_table, size(), ratio, tintwell::styleFor(palette()));
    }
    return m_picture;
}

void TableView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (m_table != nullptr) {
        painter.drawImage(0, 0, picture());
        return;
    }
    painter.setPen(palette().color(QPalette::PlaceholderText));
    QTextOption anywhere;
    anywhere.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    painter.drawText(rect(), m_text, anywhere);
}
