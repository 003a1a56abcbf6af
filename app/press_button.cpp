#include "app/press_button.h"

#include <QKeyEvent>
#include <QMouseEvent>

PressButton::PressButton(QWidget* parent) : QPushButton(parent) {
    setAutoDefault(true);
    connect(this, &QPushButton::pressed, this, [this] { setDown(false); });
}

void PressButton::mouseMoveEvent(QMouseEvent* event) {
    event->ignore();
}

void PressButton::keyPressEvent(QKeyEvent* event) {
    if (!event->isAutoRepeat()) {
        QPushButton::keyPressEvent(event);
    }
}
