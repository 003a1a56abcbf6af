#include "app/main_window.h"

#include "app/press_button.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QSignalBlocker>

using tintwell::Label;
using tintwell::labelText;

namespace {

// Distances are in device-independent pixels.
constexpr int WindowMargin = 16;
constexpr int PanelMargin = 16;
constexpr int PanelGap = 32;
constexpr int GroupGap = 10;
constexpr qreal CornerRadius = 6;
constexpr qreal ChevronReach = 5;

// How strongly the frames stand out: opacities of the text colour, which suit light and dark
// palettes alike.
constexpr qreal FillOpacity = 0.03;
constexpr qreal FrameOpacity = 0.2;
constexpr qreal ChevronOpacity = 0.5;

const QSize ReadingSize(0, 0);

template <typename T>
T* named(const char* name, T* widget) {
    widget->setObjectName(QLatin1String(name));
    return widget;
}

/// A field to read, not to type in: it scrolls, and its text can be copied.
QLineEdit* makeInfoField(const char* name) {
    auto* const field = named(name, new QLineEdit);
    field->setReadOnly(true);
    QPalette palette = field->palette();
    palette.setBrush(QPalette::Base, Qt::transparent);
    field->setPalette(palette);
    return field;
}

QComboBox* makeBox(const char* name, const QStringList& items) {
    auto* const box = named(name, new QComboBox);
    box->addItems(items);
    return box;
}

QComboBox* makeOrderBox(const char* name) {
    return makeBox(name, {QStringLiteral("RGB"), QStringLiteral("BGR")});
}

/// Two pairs of columns, each a label and a field that takes the room there is.
QGridLayout* makePanelGrid(QWidget* panel) {
    auto* const grid = new QGridLayout(panel);
    grid->setContentsMargins(PanelMargin, PanelMargin, PanelMargin, PanelMargin);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return grid;
}

QColor faint(const QPalette& palette, qreal opacity) {
    QColor colour = palette.color(QPalette::WindowText);
    colour.setAlphaF(opacity);
    return colour;
}

void drawFrame(QPainter& painter, const QPalette& palette, const QRectF& panel) {
    painter.setPen(faint(palette, FrameOpacity));
    painter.setBrush(faint(palette, FillOpacity));
    painter.drawRoundedRect(panel.adjusted(0.5, 0.5, -0.5, -0.5), CornerRadius, CornerRadius);
}

/// An arrow head between the panels, the way the table goes.
void drawChevron(QPainter& painter, const QPalette& palette, const QRectF& from, const QRectF& to) {
    const bool stacked = to.top() > from.bottom();
    const QPointF end = stacked ? QPointF(from.center().x(), from.bottom())
                                : QPointF(from.right(), from.center().y());
    const QPointF start =
        stacked ? QPointF(to.center().x(), to.top()) : QPointF(to.left(), to.center().y());
    painter.translate((start + end) / 2);
    painter.rotate(stacked ? 90 : 0);
    painter.setPen(QPen(faint(palette, ChevronOpacity), 2, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF({{-ChevronReach / 2, -ChevronReach},
                                    {ChevronReach / 2, 0},
                                    {-ChevronReach / 2, ChevronReach}}));
}

} // namespace

MainWindow::MainWindow(QWidget* parent) : QMainWindow(parent) {
    setWindowTitle(QStringLiteral("Tintwell"));
    setObjectName(QStringLiteral("mainWindow"));

    panels = new QBoxLayout(QBoxLayout::LeftToRight);
    panels->setSpacing(PanelGap);
    inputPanel = makeInputPanel();
    panels->addWidget(inputPanel, 1);
    outputPanel = makeOutputPanel();
    panels->addWidget(outputPanel, 1);

    auto* const central = named("central", new QWidget);
    auto* const column = new QVBoxLayout(central);
    column->setContentsMargins(WindowMargin, WindowMargin, WindowMargin, WindowMargin);
    column->setSpacing(WindowMargin);
    column->addLayout(panels);
    column->addLayout(makeFooter());
    column->addStretch(1);
    setCentralWidget(central);

    inputOrders.byDefault->setChecked(true);
    outputOrders.byDefault->setChecked(true);
    connectSignals();
    refreshWindow();
    resize(sizeHint());
}

// Widgets are made in the order in which the eye meets them, which is also the tab order.

QWidget* MainWindow::makeInputPanel() {
    auto* const panel = named("inputPanel", new QWidget);
    QGridLayout* const grid = makePanelGrid(panel);

    inputButton = named("inputButton", new PressButton);
    inputName = makeInfoField("inputName");
    inputType = makeInfoField("inputType");
    inputDimension = makeInfoField("inputDimension");
    inputSize3D = makeInfoField("inputSize3D");
    inputSize1D = makeInfoField("inputSize1D");
    inputOrders = {named("inputDefaultOrder", new QCheckBox), makeOrderBox("inputDataOrder"),
                   makeOrderBox("inputTableOrder")};

    addButton(grid, 0, {Label::InputFile, inputButton, QKeySequence::Open});
    addField(grid, 1, 0, {Label::InputName, inputName});
    addField(grid, 2, 0, {Label::InputType, inputType});
    addField(grid, 2, 2, {Label::InputDimension, inputDimension});
    addField(grid, 3, 0, {Label::InputSize3D, inputSize3D});
    addField(grid, 3, 2, {Label::InputSize1D, inputSize1D});
    addButton(grid, 4, {Label::InputDefaultOrder, inputOrders.byDefault, {}});
    addField(grid, 5, 0, {Label::InputDataOrder, inputOrders.data});
    addField(grid, 6, 0, {Label::InputTableOrder, inputOrders.table});
    return panel;
}
