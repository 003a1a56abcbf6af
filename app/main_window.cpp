#include "app/main_window.h"

#include "app/press_button.h"
#include "app/table_pictures.h"
#include "app/tool_tips.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPainter>
#include <QRegularExpression>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QUrl>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

using tintwell::Label;
using tintwell::labelText;
using tintwell::Message;
using tintwell::messageText;
using tintwell::Note;

namespace {

// Distances are in device-independent pixels.
constexpr int WindowMargin = 16;
constexpr int PanelMargin = 16;
constexpr int PanelGap = 32;
constexpr int GroupGap = 8;
constexpr int StartWidth = 128;
constexpr int TitleBarHeight = 40; // at most, of most window managers
constexpr int InfoCharacters = 7;
constexpr int StatusLines = 2;
constexpr qreal CornerRadius = 6;
constexpr qreal ChevronReach = 5;
constexpr qreal HighlightWidth = 2;

// How clearly the frames show: opacities of the text colour, which suit light and dark palettes
// alike.
constexpr qreal FillOpacity = 0.03;
constexpr qreal FrameOpacity = 0.2;
constexpr qreal ChevronOpacity = 0.5;

template <typename T>
T* named(const char* name, T* widget) {
    widget->setObjectName(QLatin1String(name));
    return widget;
}

/// A read-only field: it scrolls, its text can be copied, and it is in the tab order, where a
/// screen reader finds it.
QLineEdit* makeInfoField(const char* name) {
    auto* const field = named(name, new QLineEdit);
    field->setReadOnly(true);
    field->setMinimumWidth(InfoCharacters * field->fontMetrics().horizontalAdvance(u'0'));
    QPalette palette = field->palette();
    palette.setBrush(QPalette::Base, Qt::transparent);
    field->setPalette(palette);
    return field;
}

/// Some lines of text, which can be selected and copied. There is always room for a number of them,
/// so that nothing moves when they come and go.
class Notes : public QLabel {
public:
    explicit Notes(int leastLines) : m_leastLines(leastLines) {
        setWordWrap(true);
        setAlignment(Qt::AlignLeft | Qt::AlignTop);
        setTextFormat(Qt::PlainText);
        setTextInteractionFlags(Qt::TextSelectableByMouse);
    }

    /// A long word is cut rather than make the window wider.
    QSize minimumSizeHint() const override {
        return {0, std::max(QLabel::minimumSizeHint().height(), leastHeight())};
    }
    int heightForWidth(int width) const override {
        return std::max(QLabel::heightForWidth(width), leastHeight());
    }

private:
    int leastHeight() const { return m_leastLines * fontMetrics().lineSpacing(); }

    int m_leastLines;
};

/// Whether there may be a word that does not fit in a line.
bool hasLongWord(const QString& text) {
    static const QRegularExpression longWord(QStringLiteral("[^\\s/]{60}"));
    return text.contains(longWord);
}

/// A box that the wheel changes only while it has the focus, so that scrolling past changes
/// nothing.
class ChoiceBox : public QComboBox {
public:
    ChoiceBox() { setFocusPolicy(Qt::StrongFocus); }

protected:
    void wheelEvent(QWheelEvent* event) override {
        if (!hasFocus()) {
            event->ignore();
            return;
        }
        QComboBox::wheelEvent(event);
    }
};

QComboBox* makeBox(const char* name, const QStringList& items) {
    QComboBox* const box = named(name, new ChoiceBox);
    box->addItems(items);
    return box;
}

QComboBox* makeOrderBox(const char* name) {
    return makeBox(name, {QStringLiteral("RGB"), QStringLiteral("BGR")});
}

/// Shows a part of \a content, with scroll bars, where there is no room for all of it. It does not
/// show otherwise: it has no frame, no background and no place in the tab order.
QScrollArea* makeScrollArea(QWidget* content) {
    auto* const area = named("content", new QScrollArea);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(content);
    content->setAutoFillBackground(false);
    area->viewport()->setAutoFillBackground(false);
    return area;
}

/// Two pairs of columns, each a label and a field that fills the remaining width.
QGridLayout* makePanelGrid(QWidget* panel) {
    auto* const grid = new QGridLayout(panel);
    grid->setContentsMargins(PanelMargin, PanelMargin, PanelMargin, PanelMargin);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return grid;
}

/// The dropped paths that are files, not folders, which cannot be an input.
QStringList localFiles(const QMimeData* data) {
    QStringList files;
    const QList<QUrl> urls = data->urls();
    for (const QUrl& url : urls) {
        if (url.isLocalFile() && QFileInfo(url.toLocalFile()).isFile()) {
            files += url.toLocalFile();
        }
    }
    return files;
}

/// Always a copy: after a move, a file manager would delete its file.
void acceptAsCopy(QDropEvent* event) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

QColor faint(const QPalette& palette, qreal opacity) {
    QColor colour = palette.color(QPalette::WindowText);
    colour.setAlphaF(opacity);
    return colour;
}

void drawFrame(QPainter& painter, const QPalette& palette, const QRectF& panel, const QPen& pen) {
    const qreal inset = pen.widthF() / 2;
    painter.setPen(pen);
    painter.setBrush(faint(palette, FillOpacity));
    painter.drawRoundedRect(panel.adjusted(inset, inset, -inset, -inset), CornerRadius,
                            CornerRadius);
}

/// An arrow head between the panels, pointing from input to output.
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
    setAcceptDrops(true);

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
    pictures = named("pictures", new TablePictures);
    column->addWidget(pictures, 1);
    orderNote = named("orderNote", new Notes(1));
    column->addWidget(orderNote);
    statusNote = named("statusNote", new Notes(StatusLines));
    column->addWidget(statusNote);
    footer = makeFooter();
    column->addWidget(footer);
    column->addStretch(); // where there are no pictures
    content = makeScrollArea(central);
    setCentralWidget(content);
    central->installEventFilter(this);

    inputOrders.byDefault->setChecked(true);
    outputOrders.byDefault->setChecked(true);
    connectSignals();
    addShortcuts();
    refreshWindow();
    // Slightly wider than the minimum if the screen allows, and as low as the panels then allow.
    ensurePolished(); // changes the sizes of the widgets
    const QSize available = availableSize();
    resize(std::min(sideBySideWidth() * 5 / 4, available.width()), available.height());
    arrangePanels();
    resize(width(), minimumHeight());
}

// Widgets are added to the layouts in reading order, which makes it the tab order.

QWidget* MainWindow::makeInputPanel() {
    auto* const panel = named("inputPanel", new QWidget);
    QGridLayout* const grid = makePanelGrid(panel);

    inputButton = named("inputButton", new PressButton);
    grid->addWidget(inputButton, 0, 0, 1, -1);
    buttonCaptions += {Label::InputFile, inputButton, QKeySequence::Open};

    inputName = makeInfoField("inputName");
    inputType = makeInfoField("inputType");
    inputDimension = makeInfoField("inputDimension");
    inputSize3D = makeInfoField("inputSize3D");
    inputSize1D = makeInfoField("inputSize1D");
    addFields(grid, 1, {{Label::InputName, inputName}});
    addFields(grid, 2, {{Label::InputType, inputType}, {Label::InputDimension, inputDimension}});
    addFields(grid, 3, {{Label::InputSize3D, inputSize3D}, {Label::InputSize1D, inputSize1D}});

    inputOrders = {named("inputDefaultOrder", new QCheckBox), makeOrderBox("inputDataOrder"),
                   makeOrderBox("inputTableOrder")};
    addOrders(grid, 4, inputOrders,
              {Label::InputDefaultOrder, Label::InputDataOrder, Label::InputTableOrder});
    return panel;
}

QWidget* MainWindow::makeOutputPanel() {
    auto* const panel = named("outputPanel", new QWidget);
    QGridLayout* const grid = makePanelGrid(panel);

    outputButton = named("outputButton", new PressButton);
    grid->addWidget(outputButton, 0, 0, 1, -1);
    buttonCaptions += {Label::OutputFile, outputButton, QKeySequence::Save};

    outputPathField = named("outputPath", new QLineEdit);
    // A file dropped on this field is an input too, not text.
    outputPathField->setAcceptDrops(false);
    outputType = makeBox("outputType", {QStringLiteral(".cube")});
    outputSize3D = makeBox("outputSize3D", {QStringLiteral("17"), QStringLiteral("33")});
    addFields(grid, 1, {{Label::OutputPath, outputPathField}});
    addFields(grid, 2, {{Label::OutputType, outputType}});
    addFields(grid, 3, {{Label::OutputSize3D, outputSize3D}});

    outputOrders = {named("outputDefaultOrder", new QCheckBox), makeOrderBox("outputDataOrder"),
                    makeOrderBox("outputTableOrder")};
    addOrders(grid, 4, outputOrders,
              {Label::OutputDefaultOrder, Label::OutputDataOrder, Label::OutputTableOrder});
    return panel;
}

QWidget* MainWindow::makeFooter() {
    auto* const caption = named("languageCaption", new QLabel(QStringLiteral("语言/Language:")));
    languageBox = makeBox("language", {QStringLiteral("English"), QStringLiteral("简体中文")});
    caption->setBuddy(languageBox);

    startButton = named("startButton", new PressButton);
    startButton->setMinimumWidth(StartWidth);
    buttonCaptions += {Label::Begin, startButton, QKeySequence(QStringLiteral("Ctrl+Return"))};

    auto* const strip = named("footer", new QWidget);
    auto* const row = new QHBoxLayout(strip);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(caption);
    row->addWidget(languageBox);
    row->addStretch(1);
    row->addWidget(startButton);
    return strip;
}

void MainWindow::addFields(QGridLayout* grid, int row, QVector<FieldCaption> fields) {
    const int span = fields.size() == 1 ? -1 : 1;
    int column = 0;
    for (FieldCaption& caption : fields) {
        caption.text = new QLabel;
        caption.text->setObjectName(caption.field->objectName() + QLatin1String("Caption"));
        caption.text->setBuddy(caption.field);
        grid->addWidget(caption.text, row, column);
        grid->addWidget(caption.field, row, column + 1, 1, span);
        column += 2;
    }
    fieldCaptions += fields;
}

void MainWindow::addOrders(QGridLayout* grid, int row, const OrderBoxes& orders,
                           const OrderLabels& labels) {
    grid->setRowMinimumHeight(row, GroupGap);
    grid->addWidget(orders.byDefault, row + 1, 1, 1, -1);
    buttonCaptions += {labels.byDefault, orders.byDefault, {}};
    addFields(grid, row + 2, {{labels.data, orders.data}});
    addFields(grid, row + 3, {{labels.table, orders.table}});
}

void MainWindow::connectSignals() {
    const auto indexChanged = QOverload<int>::of(&QComboBox::currentIndexChanged);

    connect(inputButton, &PressButton::pressed, this, &MainWindow::slotInputButton);
    connect(outputButton, &PressButton::pressed, this, &MainWindow::slotOutputButton);
    connect(startButton, &PressButton::pressed, this, &MainWindow::slotWriteLut);
    connect(inputOrders.byDefault, &QCheckBox::stateChanged, this,
            &MainWindow::slotInCheckBoxChanged);
    connect(inputOrders.data, indexChanged, this, &MainWindow::slotInComboxChanged);
    connect(inputOrders.table, indexChanged, this, &MainWindow::slotInComboxChanged);
    connect(outputOrders.byDefault, &QCheckBox::stateChanged, this,
            &MainWindow::slotOutCheckBoxChanged);
    connect(outputOrders.data, indexChanged, this, &MainWindow::slotOutComboxChanged);
    connect(outputOrders.table, indexChanged, this, &MainWindow::slotOutComboxChanged);
    connect(languageBox, indexChanged, this, &MainWindow::slotLanguageChanged);
    connect(outputSize3D, indexChanged, this, [this] {
        suggestOutput();
        refreshOrders();
    });
    connect(outputPathField, &QLineEdit::textChanged, this, [this](const QString& path) {
        outputPathField->setToolTip(tintwell::pathToolTip(path));
        setOutcome({});
    });
    connect(outputPathField, &QLineEdit::returnPressed, this, &MainWindow::goToStart);
}

void MainWindow::addShortcuts() {
    // A button has room for one shortcut; the Enter of the keypad is a key of its own.
    auto* const keypadStart = new QShortcut(QKeySequence(QStringLiteral("Ctrl+Enter")), this);
    keypadStart->setAutoRepeat(false);
    connect(keypadStart, &QShortcut::activated, startButton,
            [this] { startButton->animateClick(); });
    auto* const quit = new QShortcut(QKeySequence(QStringLiteral("Ctrl+Q")), this);
    connect(quit, &QShortcut::activated, this, &MainWindow::close);
}

void MainWindow::goToStart() {
    startButton->setFocus(Qt::TabFocusReason);
    content->ensureWidgetVisible(startButton);
}

void MainWindow::refreshWindow() {
    for (const FieldCaption& caption : qAsConst(fieldCaptions)) {
        const Label panel =
            caption.label < Label::OutputFile ? Label::InputFile : Label::OutputFile;
        const QString text = labelText(language, caption.label);
        caption.text->setText(text);
        caption.field->setAccessibleName(text);
        caption.field->setAccessibleDescription(labelText(language, panel));
    }
    for (const ButtonCaption& caption : qAsConst(buttonCaptions)) {
        caption.button->setText(labelText(language, caption.label));
        // Setting a text resets the shortcut.
        caption.button->setShortcut(caption.shortcut);
        caption.button->setToolTip(caption.shortcut.toString(QKeySequence::NativeText));
    }
    // Both check boxes have the same label; their panel's name tells them apart, as it does for the
    // fields.
    const QString input = labelText(language, Label::InputFile);
    const QString output = labelText(language, Label::OutputFile);
    inputPanel->setAccessibleName(input);
    inputOrders.byDefault->setAccessibleDescription(input);
    outputPanel->setAccessibleName(output);
    outputOrders.byDefault->setAccessibleDescription(output);
    languageBox->setAccessibleName(labelText(language, Label::Language));
    languageBox->setToolTip(labelText(language, Label::Language));
    const QString hint = tintwell::startHint(language);
    startButton->setToolTip(QStringLiteral("%1 (%2)").arg(hint, startButton->toolTip()));
    startButton->setAccessibleDescription(hint);
    // Screen readers read either the tool tip or the description.
    const auto explain = [this](QWidget* widget, Message message) {
        const QString text = messageText(language, message);
        widget->setToolTip(tintwell::sentenceToolTip(text));
        widget->setAccessibleDescription(
            QStringLiteral("%1: %2").arg(widget->accessibleDescription(), text));
    };
    for (const OrderBoxes& orders : {inputOrders, outputOrders}) {
        explain(orders.byDefault, Message::DefaultOrderHint);
        explain(orders.data, Message::DataOrderHint);
        explain(orders.table, Message::TableOrderHint);
    }
    pictures->setLanguage(language);
    refreshOrders();
    refreshNotes();
    arrangePanels();
}

void MainWindow::slotInCheckBoxChanged(int state) {
    if (state == Qt::Checked) {
        resetOrders(inputOrders);
    }
    refreshOrders();
}

void MainWindow::slotInComboxChanged(int /*index*/) {
    clearDefault(inputOrders);
    refreshOrders();
}

void MainWindow::slotOutCheckBoxChanged(int state) {
    if (state == Qt::Checked) {
        resetOrders(outputOrders);
    }
    refreshOrders();
}

void MainWindow::slotOutComboxChanged(int /*index*/) {
    clearDefault(outputOrders);
    refreshOrders();
}

void MainWindow::setOutcome(QVector<Note> notes) {
    outcome = std::move(notes);
    refreshNotes();
}

void MainWindow::refreshNotes() {
    QStringList lines;
    const QVector<Note> notes = outcome + warnings();
    for (const Note& note : notes) {
        lines += tintwell::noteText(language, note);
    }
    const QString text = lines.join(QLatin1Char('\n'));
    statusNote->setText(text);
    statusNote->setToolTip(hasLongWord(text) ? tintwell::pathToolTip(text) : QString());
}

void MainWindow::slotLanguageChanged(int index) {
    language = index;
    toolkitLanguage.set(language);
    refreshWindow();
}

void MainWindow::resetOrders(const OrderBoxes& orders) {
    // Without signals: after the first of two resets the other order would still clear the check
    // box.
    const QSignalBlocker dataBlocker(orders.data);
    const QSignalBlocker tableBlocker(orders.table);
    orders.data->setCurrentIndex(0);
    orders.table->setCurrentIndex(0);
}

void MainWindow::clearDefault(const OrderBoxes& orders) {
    if (orders.data->currentIndex() != 0 || orders.table->currentIndex() != 0) {
        orders.byDefault->setChecked(false);
    }
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!localFiles(event->mimeData()).isEmpty()) {
        acceptAsCopy(event);
        highlightInput(true);
    }
}

void MainWindow::dragLeaveEvent(QDragLeaveEvent* /*event*/) {
    highlightInput(false);
}

void MainWindow::dropEvent(QDropEvent* event) {
    highlightInput(false);
    const QStringList files = localFiles(event->mimeData());
    if (!files.isEmpty()) {
        acceptAsCopy(event);
        openFiles(files);
    }
}

void MainWindow::highlightInput(bool on) {
    inputHighlighted = on;
    update();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == content->widget() && event->type() == QEvent::LayoutRequest) {
        arrangePanels();
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::paintEvent(QPaintEvent* event) {
    QMainWindow::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QWidget* const visible = content->viewport();
    painter.setClipRect(QRect(visible->mapTo(this, QPoint()), visible->size()));
    const QRectF input(inputPanel->mapTo(this, QPoint()), inputPanel->size());
    const QRectF output(outputPanel->mapTo(this, QPoint()), outputPanel->size());
    const QPen frame(faint(palette(), FrameOpacity));
    const QPen highlight(palette().color(QPalette::Highlight), HighlightWidth);
    drawFrame(painter, palette(), input, inputHighlighted ? highlight : frame);
    drawFrame(painter, palette(), output, frame);
    drawChevron(painter, palette(), input, output);
}

void MainWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    arrangePanels();
}

int MainWindow::panelWidth() const {
    return std::max(inputPanel->minimumSizeHint().width(), outputPanel->minimumSizeHint().width());
}

int MainWindow::sideBySideWidth() const {
    return 2 * panelWidth() + PanelGap + 2 * WindowMargin;
}

QSize MainWindow::availableSize() const {
    return screen()->availableSize() - QSize(0, TitleBarHeight);
}

int MainWindow::heightAround() const {
    const QLayout* const layout = content->widget()->layout();
    const int width = content->viewport()->width();
    const int height = layout->hasHeightForWidth() ? layout->minimumHeightForWidth(width)
                                                   : layout->totalMinimumSize().height();
    return height - panels->minimumSize().height() - (pictures->isHidden() ? 0 : picturesHeight());
}

int MainWindow::picturesHeight() const {
    return pictures->minimumSizeHint().height() + WindowMargin;
}

int MainWindow::sideBySideHeight() const {
    return heightAround() + std::max(inputPanel->minimumSizeHint().height(),
                                     outputPanel->minimumSizeHint().height());
}

void MainWindow::arrangePanels() {
    QLayout* const layout = content->widget()->layout();
    // The inner ones first, whose sizes the outer one adds up.
    for (QLayout* const part : {inputPanel->layout(), outputPanel->layout(), footer->layout(),
                                pictures->layout(), layout}) {
        part->activate();
    }
    const int barWidth = content->verticalScrollBar()->sizeHint().width();
    const auto roomForBar = [&](int contentHeight, int windowHeight) {
        return contentHeight > windowHeight ? barWidth : 0;
    };
    const bool sideBySide = width() >= sideBySideWidth() + roomForBar(sideBySideHeight(), height());
    panels->setDirection(sideBySide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    // Immediately, because the frames are drawn around the current positions of the panels.
    layout->activate();
    const QSize available = availableSize();
    int needed = heightAround() + panels->minimumSize().height();
    const bool isHighEnough = needed + picturesHeight() <= available.height();
    needed += isHighEnough ? picturesHeight() : 0;
    pictures->setVisible(isHighEnough);
    // The window becomes smaller than its content only on a small screen, and scrolls there.
    const int narrowest = std::max(panelWidth(), footer->minimumSizeHint().width()) +
                          2 * WindowMargin + roomForBar(needed, available.height());
    setMinimumSize(QSize(narrowest, needed).boundedTo(available));
    update();
}
