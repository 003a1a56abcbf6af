// What the window's three buttons do: choose an input, choose an output, convert. An input can also
// be set without the button, by a drop or from the command line.

#include "app/main_window.h"
#include "app/table_pictures.h"
#include "app/tool_tips.h"
#include "calc/lutcalc.h"
#include "lut/catalogue.h"
#include "lut/read_lutfile.h"
#include "lut/stated_domain.h"
#include "lut/words.h"
#include "lut/write_lutfile.h"
#include "saving/save_file.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMessageBox>

using tintwell::Message;
using tintwell::messageText;
using tintwell::Note;

namespace {

/// What the window reads and writes.
constexpr int CubeFormat = static_cast<int>(tintwell::FormatCode::Cube);

/// The lattice sizes on offer, in the order of the output size box.
constexpr int OutputSizes[] = {17, 33};

/// The file filter of both dialogs.
constexpr const char* FileFilter = QT_TRANSLATE_NOOP(
    "MainWindow",
    "lut (*.cube *.3dl *.lut *.davlut *.mga *.m3d *.look *.csp *.cub *.itx *.spi1d *.spi3d *.csv "
    "*.nvx1d *.nvx3d);;icc (*.icc *.icm);;texture (*.bmp *.png);;UTIs (*.tiff *.tif *.dat);;All "
    "(*.*)");

/// The file that the open dialog would offer first: one that matches its first filter is preferred
/// to other files, and folders are never chosen.
QString firstOffered(const QStringList& files) {
    const QString patterns = QString::fromLatin1(FileFilter)
                                 .section(QLatin1Char('('), 1, 1)
                                 .section(QLatin1Char(')'), 0, 0);
    QString other;
    for (const QString& path : files) {
        const QFileInfo file(path);
        if (!file.isFile()) {
            continue;
        }
        if (QDir::match(patterns.split(QLatin1Char(' ')), file.fileName())) {
            return file.absoluteFilePath();
        }
        if (other.isEmpty()) {
            other = file.absoluteFilePath();
        }
    }
    return other;
}

QString inFile(const QString& path, const QString& what) {
    return tintwell::inFile(QFileInfo(path).fileName(), what);
}

bool isSameFile(const QFileInfo& a, const QFileInfo& b) {
    return a.exists() && a.canonicalFilePath() == b.canonicalFilePath();
}

/// The orders that a request stands for.
tintwell::Orders ordersOf(const LUTFILE_ST& st, const tintwell::Orders& own) {
    return st.defaultOrder ? own : tintwell::Orders{st.dataOrder, st.tableOrder};
}

Message effectOf(const tintwell::Swaps& swaps) {
    return swaps.channels && swaps.axes ? Message::BothSwapped
           : swaps.channels             ? Message::ChannelsSwapped
           : swaps.axes                 ? Message::AxesSwapped
                                        : Message::SamplesUnchanged;
}

void report(const QString& title, const QString& text) {
    QMessageBox::warning(nullptr, title, text, QMessageBox::Ok);
}

void askForFiles(int language) {
    if (language == tintwell::SimplifiedChinese) {
        report(QStringLiteral("错误"), QStringLiteral("请选择 输入/输出 文件！"));
    } else {
        report(QStringLiteral("Error"), QStringLiteral("Please Select Input/Output File!"));
    }
}

bool isRgb(const QComboBox* order) {
    return order->currentText() == QLatin1String("RGB");
}

/// Whether the user has no write permission for a file. Such a file is not replaced.
bool isProtected(const QString& path) {
    const QFileInfo file(path);
    return file.exists() && !file.isWritable();
}

/// Returns why the file is not written; empty if it is.
QString write(const LUTFILE_ST& st, Read_LUTFile& lut) {
    if (isProtected(st.path)) {
        return QStringLiteral("the file is protected against writing");
    }
    tintwell::removeLeftOversBeside(st.path);
    const auto writeTo = [&](const QString& path) {
        LUTFILE_ST standIn = st;
        standIn.path = path;
        Write_LUTFile writer(nullptr);
        writer.WriteFile(standIn, lut);
        return writer.lastError;
    };
    const auto error = tintwell::saveFile(st.path, tintwell::IfExists::Replace, writeTo);
    return error ? error->reason : QString();
}

QString writeResampled(const LUTFILE_ST& st, const Read_LUTFile& lut) {
    if (lut.size3D <= 0) {
        return QStringLiteral("the input has no 3D table");
    }
    Read_LUTFile resampled(nullptr);
    Read_LUTFile::Data3DCalloc(&resampled.data3D, st.outSize3D);
    if (resampled.data3D == nullptr) {
        return QStringLiteral("not enough memory for the table");
    }
    resampled.size3D = st.outSize3D;
    LutCalc().Lut3D_Out(lut, resampled);
    return write(st, resampled);
}

} // namespace

void MainWindow::slotInputButton() {
    const QStringList chosen =
        QFileDialog::getOpenFileNames(this, tr("Open ICC/3DLUT File"), QString(), tr(FileFilter));
    if (chosen.isEmpty()) {
        return;
    }
    takeInput(chosen.first());
}

void MainWindow::openFiles(const QStringList& files) {
    const QString chosen = firstOffered(files);
    if (!chosen.isEmpty()) {
        takeInput(chosen);
    }
}

void MainWindow::takeInput(const QString& path) {
    inputPath = path;

    LUTFILE_ST st;
    st.path = inputPath;
    st.formatCode = CubeFormat;
    Read_LUTFile preview(nullptr);
    const bool isRead = preview.ReadFile(st, true);
    inputHas3D = preview.size3D > 0 || !isRead;
    inputHas1D = preview.size1D > 0;
    inputHasDomain = !statedDomain(preview, tintwell::TableKind::ThreeD).isUnit();
    pictures->setInput(inputPath, preview.size3D);
    suggestOutput();
    if (!isRead) {
        setOutcome({{Message::PreviewFailed, inFile(inputPath, preview.lastError)}});
        return;
    }
    inputName->setText(inputPath.mid(inputPath.lastIndexOf(QLatin1Char('/'))));
    inputName->setCursorPosition(0); // the start of a long name says most
    inputName->setToolTip(tintwell::pathToolTip(inputPath));
    inputType->setText(inputPath.mid(inputPath.lastIndexOf(QLatin1Char('.'))));
    inputSize3D->setText(QString::number(preview.size3D));
    inputSize1D->setText(QStringLiteral("0"));
    inputDimension->setText(QStringLiteral("3D"));
    setOutcome({});
}

void MainWindow::slotOutputButton() {
    const QString chosen =
        QFileDialog::getSaveFileName(this, tr("Save ICC/3DLUT File"), QString(), tr(FileFilter));
    if (chosen.isEmpty()) {
        return;
    }
    outputPath = chosen;
    outputPathField->setText(outputPath);
}

void MainWindow::slotWriteLut() {
    if (outputPathField->text().isEmpty() || inputName->text().isEmpty()) {
        askForFiles(language);
        return;
    }
    outputPath = outputPathField->text();
    convert();
    pictures->refresh(); // the files may have changed
}

void MainWindow::convert() {
    Read_LUTFile lut(nullptr);
    if (!lut.ReadFile(request(inputPath, inputOrders), false)) {
        setOutcome({{Message::ReadFailed, inFile(inputPath, lut.lastError)}});
        report(QStringLiteral("Error"), QStringLiteral("File Error!"));
        return;
    }
    LUTFILE_ST output = request(outputPath, outputOrders);
    output.outSize3D = OutputSizes[outputSize3D->currentIndex()];
    SaveLut(output, lut);
}

void MainWindow::SaveLut(LUTFILE_ST st, Read_LUTFile& lut) {
    const QString error = lut.size3D == st.outSize3D ? write(st, lut) : writeResampled(st, lut);
    if (error.isEmpty()) {
        setOutcome(written(st, lut));
        report(QStringLiteral("Successful"), QStringLiteral("Export successful !"));
    } else {
        setOutcome({{Message::WriteFailed, inFile(st.path, error)}});
        report(QStringLiteral("Error"), QStringLiteral("Format not supported !"));
    }
}

QVector<Note> MainWindow::written(const LUTFILE_ST& st, const Read_LUTFile& lut) {
    constexpr int mostRemarks = 3; // more are in what tintwell-cli check prints
    const QFileInfo file(st.path);
    const QString bytes = QLocale::c().formattedDataSize(file.size());
    QVector<Note> notes = {{Message::Written, QStringLiteral("%1 (%2 x %2 x %2, %3)")
                                                  .arg(file.absoluteFilePath(),
                                                       QString::number(st.outSize3D), bytes)}};
    for (const QString& remark : lut.remarks.mid(0, mostRemarks)) {
        notes += {Message::Remark, inFile(inputPath, remark)};
    }
    return notes;
}

void MainWindow::suggestOutput() {
    if (inputPath.isEmpty()) {
        return;
    }
    const QFileInfo input(inputPath);
    QDir::setCurrent(input.absolutePath()); // a bare name stands beside the input
    outputPathField->setPlaceholderText(
        QStringLiteral("%1_%2.cube").arg(input.completeBaseName(), outputSize3D->currentText()));
    refreshNotes();
}

QVector<Note> MainWindow::warnings() const {
    QVector<Note> notes;
    const QFileInfo input(inputPath);
    if (input.isFile() && input.suffix().toLower() != QLatin1String("cube")) {
        notes += {Message::NotACube, tintwell::shellWord(input.fileName())};
    }
    if (!inputHas3D) {
        notes += {Message::NoLattice};
    } else if (inputHas1D) {
        notes += {Message::CurveLost};
    }
    if (inputHasDomain) {
        notes += {Message::DomainLost};
    }
    return notes + outputWarnings();
}

QVector<Note> MainWindow::outputWarnings() const {
    const QString path = outputPathField->text();
    if (path.isEmpty()) {
        return {};
    }
    const QFileInfo output(path);
    if (!output.absoluteDir().exists()) {
        return {{Message::NoFolder, output.absolutePath()}};
    }
    QVector<Note> notes;
    if (output.suffix().toLower() != QLatin1String("cube")) {
        notes += {Message::NoCubeName};
    }
    if (isSameFile(output, QFileInfo(inputPath))) {
        notes += {Message::OutputIsInput};
    } else if (output.exists() && !isJustWritten()) {
        notes += {!output.isFile()       ? Message::OutputNoFile
                  : !output.isWritable() ? Message::OutputProtected
                                         : Message::OutputExists};
    }
    return notes;
}

bool MainWindow::isJustWritten() const {
    return !outcome.isEmpty() && outcome.first().message == Message::Written;
}

void MainWindow::refreshOrders() {
    const tintwell::Format& cube = formatOf(tintwell::FormatCode::Cube);
    const tintwell::Orders in = ordersOf(request({}, inputOrders), cube.readerOrders);
    const tintwell::Orders out = ordersOf(request({}, outputOrders), cube.writerOrders);
    orderNote->setText(messageText(language, effectOf(swapsBetween(in, out))));
    pictures->setConversion(in, out, OutputSizes[outputSize3D->currentIndex()]);
}

LUTFILE_ST MainWindow::request(const QString& path, const OrderBoxes& orders) {
    LUTFILE_ST st;
    st.path = path;
    st.formatCode = CubeFormat;
    st.defaultOrder = orders.byDefault->checkState() == Qt::Checked;
    st.dataOrder = isRgb(orders.data);
    st.tableOrder = isRgb(orders.table);
    return st;
}
