#include "app/table_pictures.h"

#include "app/table_view.h"
#include "app/tool_tips.h"
#include "calc/make_table.h"
#include "lut/read_lutfile.h"
#include "lut/table_kind.h"
#include "lut/words.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QGridLayout>
#include <QHideEvent>
#include <QLabel>
#include <QThread>

#include <new>
#include <utility>

using tintwell::Message;
using tintwell::messageText;
using tintwell::Note;
using tintwell::noteText;
using tintwell::Orders;

namespace {

// What is read in a moment, and takes some 20 MB of memory.
constexpr int LargestLattice = 65;
constexpr qint64 LargestFile = 16 << 20; // 65 points with 15 digits a number

constexpr int SideGap = 32; ///< as between the panels
constexpr int CaptionGap = 4;

} // namespace

/// A file that is read in a thread of its own, and what came of it.
struct TablePictures::Reading {
    std::unique_ptr<Read_LUTFile> table; ///< none: the read failed
    QString error;

    void run(const QString& path) try {
        auto lut = std::make_unique<Read_LUTFile>(nullptr);
        LUTFILE_ST st;
        st.path = path;
        st.formatCode = static_cast<int>(tintwell::FormatCode::Cube);
        if (!lut->ReadFile(st, false)) {
            error = tintwell::inFile(QFileInfo(path).fileName(), lut->lastError);
            return;
        }
        tintwell::undoLatticeOrder(*lut);
        lut->moveToThread(QCoreApplication::instance()->thread());
        table = std::move(lut);
    } catch (const std::bad_alloc&) {
        error = QStringLiteral("not enough memory");
    }
};

TablePictures::TablePictures(QWidget* parent)
    : QWidget(parent), m_input(makeSide("inputPicture")), m_written(makeSide("outputPicture")) {
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(SideGap);
    grid->setVerticalSpacing(CaptionGap);
    int column = 0;
    for (const Side* const side : {&m_input, &m_written}) {
        grid->addWidget(side->caption, 0, column);
        grid->addWidget(side->view, 1, column);
        grid->setColumnStretch(column, 1);
        ++column;
    }
    grid->setRowStretch(1, 1);
    forget();
}

TablePictures::~TablePictures() {
    if (m_reader) {
        m_reader->wait();
    }
}

TablePictures::Side TablePictures::makeSide(const char* name) {
    auto* const caption = new QLabel(this); // before the view, as screen readers tell of them
    auto* const view = new TableView(this);
    view->setObjectName(QLatin1String(name));
    caption->setObjectName(view->objectName() + QLatin1String("Title"));
    return {.caption = caption, .view = view};
}

void TablePictures::setLanguage(int language) {
    m_language = language;
    showSides();
}

void TablePictures::setInput(const QString& path, int size3D) {
    m_path = path;
    m_size3D = size3D;
    refresh();
}

void TablePictures::refresh() {
    forget();
    if (!isVisible() || m_path.isEmpty()) {
        return;
    }
    if (m_size3D > LargestLattice || QFileInfo(m_path).size() > LargestFile) {
        m_input.note = Note{Message::TooLarge, tintwell::shellWord(QFileInfo(m_path).fileName())};
        showSides();
        return;
    }
    if (m_reader) {
        m_isAwaited = true;
    } else {
        startReading();
    }
}

void TablePictures::setConversion(const Orders& in, const Orders& out, int size) {
    if (in == m_in && out == m_out && size == m_outputSize) {
        return;
    }
    m_in = in;
    m_out = out;
    m_outputSize = size;
    makeWritten();
    showSides();
}

void TablePictures::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    refresh();
}

void TablePictures::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    forget();
}

void TablePictures::forget() {
    m_isAwaited = false;
    m_reading.reset();
    m_input.clear();
    m_written.clear();
    if (m_path.isEmpty()) {
        m_input.note = Note{Message::NoInput};
    }
    showSides();
}

void TablePictures::startReading() {
    m_isAwaited = false;
    const auto reading = m_reading = std::make_shared<Reading>();
    m_reader.reset(QThread::create([reading, path = m_path] { reading->run(path); }));
    connect(m_reader.get(), &QThread::finished, this, [this, reading] {
        m_reader->wait();
        m_reader.reset();
        if (m_isAwaited) {
            startReading();
        } else if (reading == m_reading) {
            take(*reading);
        }
    });
    m_reader->start(QThread::LowPriority);
}

void TablePictures::take(Reading& reading) {
    if (!reading.table) {
        m_input.note = Note{Message::PreviewFailed, reading.error};
    } else if (!reading.table->hasTable3D() && !reading.table->hasTable1D()) {
        m_input.note = Note{Message::NoTable};
    } else {
        m_input.table = std::move(reading.table);
    }
    m_reading.reset();
    makeWritten();
    showSides();
}

void TablePictures::makeWritten() {
    m_written.clear();
    if (!m_input.table) {
        return;
    }
    if (!m_input.table->hasTable3D()) {
        m_written.note = Note{Message::NoLattice};
        return;
    }
    const tintwell::Format& cube = formatOf(tintwell::FormatCode::Cube);
    auto table = std::make_unique<Read_LUTFile>(nullptr);
    if (relay(*m_input.table, swapsBetween(m_in, cube.readerOrders),
              swapsBetween(m_out, cube.writerOrders), m_outputSize, *table)) {
        m_written.table = std::move(table);
    } else {
        m_written.note = Note{Message::Remark, table->lastError};
    }
}

void TablePictures::showSides() {
    m_input.show(m_language, Message::InputPicture);
    m_written.show(m_language, Message::OutputPicture);
}

void TablePictures::Side::clear() {
    view->showText({});
    table.reset();
    note.reset();
}

QString TablePictures::Side::description(int language) const {
    if (!table) {
        return note ? noteText(language, *note) : QString();
    }
    const QString curves = messageText(language, Message::CurvesHint);
    return table->hasTable3D()
               ? messageText(language, Message::SlicesHint) + QLatin1Char(' ') + curves
               : curves;
}

void TablePictures::Side::show(int language, Message name) const {
    caption->setText(messageText(language, name));
    const QString text = description(language);
    view->setAccessibleName(caption->text());
    view->setAccessibleDescription(text);
    view->setToolTip(tintwell::sentenceToolTip(text));
    if (table) {
        view->showTable(*table);
    } else {
        view->showText(text);
    }
}
