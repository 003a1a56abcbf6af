#pragma once

#include <QPushButton>

/// A push button whose work starts on `pressed` and may open a dialog.
///
/// The dialog swallows the release of the mouse button or key, so the button comes up by itself
/// before the work begins. One press counts once: neither dragging with the mouse button held nor a
/// key's auto-repeat presses it again. Enter works like Space.
class PressButton : public QPushButton {
    Q_OBJECT

public:
    explicit PressButton(QWidget* parent = nullptr);

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};
