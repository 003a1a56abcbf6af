#include "app/main_window.h"
#include "samples.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTimer>

#include <csignal>

#include <sys/resource.h>

namespace {

/// The user's side of the dialogs: files to choose in turn (none: cancel), and what was shown.
class User {
public:
    QVector<QStringList> choices;
    QStringList seen;
    QStringList filters; ///< of the file dialogs

    User() {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { answer(); });
        m_timer.start(1);
    }

private:
    void answer() {
        QWidget* const modal = QApplication::activeModalWidget();
        if (auto* const files = qobject_cast<QFileDialog*>(modal)) {
            seen += files->windowTitle();
            filters += files->nameFilters().join(";;");
            choose(*files, choices.isEmpty() ? QStringList() : choices.takeFirst());
        } else if (auto* const box = qobject_cast<QMessageBox*>(modal)) {
            const bool plain = box->parent() == nullptr && box->icon() == QMessageBox::Warning &&
                               box->standardButtons() == QMessageBox::Ok;
            seen += (plain ? "" : "(not plain) ") + box->windowTitle() + ": " + box->text();
            box->button(QMessageBox::Ok)->click();
        }
    }

    static void choose(QFileDialog& dialog, const QStringList& files) {
        if (files.isEmpty()) {
            dialog.reject();
            return;
        }
        const QString quoted = '"' + files.join("\" \"") + '"';
        dialog.findChild<QLineEdit*>("fileNameEdit")
            ->setText(files.size() > 1 ? quoted : files.first());
        QMetaObject::invokeMethod(&dialog, "accept");
    }

    QTimer m_timer;
};

/// Samples of a lattice in file order, no two alike.
QList<QByteArray> lattice(int size) {
    QList<QByteArray> lines;
    for (int n = 0; n < size * size * size; ++n) {
        lines += QString::asprintf("0.%06d 0.5%05d 1.000000", n, n).toLatin1();
    }
    return lines;
}

QByteArray cube(int size, const QList<QByteArray>& lines) {
    return "TITLE \nLUT_3D_SIZE " + QByteArray::number(size) + '\n' + lines.join('\n') + '\n';
}

QList<QByteArray> withChannelsSwapped(QList<QByteArray> lines) {
    for (QByteArray& line : lines) {
        const QList<QByteArray> values = line.split(' ');
        line = values[2] + ' ' + values[1] + ' ' + values[0];
    }
    return lines;
}

/// The lines at each \a step-th point of a lattice; if \a swapped, its first axis varies fastest.
QList<QByteArray> walked(const QList<QByteArray>& lines, int size, int step, bool swapped) {
    QList<QByteArray> result;
    for (int i = 0; i < size; i += step) {
        for (int j = 0; j < size; j += step) {
            for (int k = 0; k < size; k += step) {
                result +=
                    swapped ? lines[(k * size + j) * size + i] : lines[(i * size + j) * size + k];
            }
        }
    }
    return result;
}

} // namespace

class TestWindow : public QObject {
    Q_OBJECT

    samples::Folder m_folder;
    QScopedPointer<MainWindow> m_window;
    QScopedPointer<User> m_user;

    template <typename T>
    T* find(const QString& name) const {
        T* const widget = m_window->findChild<T*>(name);
        if (widget == nullptr) {
            qFatal("no %s", qPrintable(name));
        }
        return widget;
    }

    QString text(const QString& name) const {
        return find<QWidget>(name)->property("text").toString();
    }
    void select(const QString& box, int index) const {
        find<QComboBox>(box)->setCurrentIndex(index);
    }
    void click(const QString& button) const {
        QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton);
    }

    /// Clicks a file button and answers with these files.
    void choose(const QString& button, const QStringList& files) const {
        m_user->choices = {files};
        click(button);
    }

    /// Drags this to the output path, where drops on the window must work too, and lets go if it is
    /// accepted. Returns the resulting action.
    Qt::DropAction drop(const QMimeData& data) const {
        auto* const field = find<QLineEdit>("outputPath");
        const QPoint at = field->rect().center();
        QDragEnterEvent enter(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        enter.setDropAction(Qt::MoveAction);
        enter.ignore();
        QApplication::sendEvent(field, &enter);
        if (!enter.isAccepted()) {
            return Qt::IgnoreAction;
        }
        QDropEvent released(at, enter.possibleActions(), &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_window.data(), &released);
        return released.dropAction();
    }

    /// What is shown after a press on the start button.
    QStringList begin() const {
        m_user->seen.clear();
        click("startButton");
        return m_user->seen;
    }

private Q_SLOTS:
    static void initMain() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    void init() {
        m_window.reset(new MainWindow);
        m_user.reset(new User);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
    }
    void cleanup() {
        m_user.reset();
        m_window.reset();
    }

    void labels_data() {
        QTest::addColumn<int>("language");
        QTest::addColumn<QStringList>("labels");
        QTest::newRow("English") << 0
                                 << QStringList{"Input File",    "File Name",     "Type",
                                                "Default Order", "Data Order",    "Table Order",
                                                "3D Size",       "1D Size",       "Dimension",
                                                "Output File",   "File Path",     "Type",
                                                "3D Size",       "Default Order", "Data Order",
                                                "Table Order",   "Begin"};
        QTest::newRow("Chinese") << 1 << QStringList{"输入文件", "文件名",   "类型",     "默认顺序",
                                                     "数据顺序", "表格顺序", "3D尺寸",   "1D尺寸",
                                                     "维度",     "输出文件", "路径",     "类型",
                                                     "3D尺寸",   "默认顺序", "数据顺序", "表格顺序",
                                                     "开始转换"};
    }
    void labels() {
        QFETCH(int, language);
        QFETCH(QStringList, labels);
        select("language", 1 - language);
        select("language", language);
        QStringList shown;
        for (const char* const name :
             {"inputButton", "inputNameCaption", "inputTypeCaption", "inputDefaultOrder",
              "inputDataOrderCaption", "inputTableOrderCaption", "inputSize3DCaption",
              "inputSize1DCaption", "inputDimensionCaption", "outputButton", "outputPathCaption",
              "outputTypeCaption", "outputSize3DCaption", "outputDefaultOrder",
              "outputDataOrderCaption", "outputTableOrderCaption", "startButton"}) {
            shown += text(name);
            if (const auto* const caption = qobject_cast<QLabel*>(find<QWidget>(name))) {
                QCOMPARE(caption->buddy()->accessibleName(), caption->text());
            }
        }
        QCOMPARE(shown, labels);
        QCOMPARE(find<QComboBox>("language")->accessibleName(), language ? "语言" : "Language");
        QCOMPARE(text("languageCaption"), "语言/Language:");
        QCOMPARE(find<QComboBox>("outputType")->currentText(), ".cube");
        QCOMPARE(find<QComboBox>("outputType")->count(), 1);
        QCOMPARE(find<QComboBox>("outputSize3D")->itemText(0), "17");
        QCOMPARE(find<QComboBox>("outputSize3D")->itemText(1), "33");
        QCOMPARE(m_window->windowTitle(), "Tintwell");
    }

    void languageKeepsContents() {
        choose("inputButton", {m_folder.file("kept.cube", "LUT_3D_SIZE 5\n")});
        find<QLineEdit>("outputPath")->setText("/tmp/out.cube");
        select("outputSize3D", 1);
        select("inputTableOrder", 1);
        select("language", 1);
        QCOMPARE(text("inputName"), "/kept.cube");
        QCOMPARE(text("inputSize3D"), "5");
        QCOMPARE(text("outputPath"), "/tmp/out.cube");
        QCOMPARE(find<QComboBox>("outputSize3D")->currentIndex(), 1);
        QCOMPARE(find<QComboBox>("inputTableOrder")->currentText(), "BGR");
        QVERIFY(!find<QCheckBox>("inputDefaultOrder")->isChecked());
    }

    void orders_data() {
        QTest::addColumn<QString>("side");
        QTest::addColumn<QString>("other");
        QTest::newRow("input") << "input"
                               << "output";
        QTest::newRow("output") << "output"
                                << "input";
    }
    void orders() {
        QFETCH(QString, side);
        QFETCH(QString, other);
        auto* const byDefault = find<QCheckBox>(side + "DefaultOrder");
        QVERIFY(byDefault->isChecked());
        for (const char* const order : {"DataOrder", "TableOrder"}) {
            select(side + order, 1);
            QVERIFY(!byDefault->isChecked());
            byDefault->click();
            QCOMPARE(find<QComboBox>(side + order)->currentIndex(), 0);
        }
        select(side + "DataOrder", 1);
        select(side + "TableOrder", 1);
        byDefault->click();
        QVERIFY(byDefault->isChecked());
        QCOMPARE(find<QComboBox>(side + "DataOrder")->currentIndex(), 0);
        QCOMPARE(find<QComboBox>(side + "TableOrder")->currentIndex(), 0);
        byDefault->click();
        QVERIFY(!byDefault->isChecked());
        QVERIFY(find<QCheckBox>(other + "DefaultOrder")->isChecked());
    }

    void choosing() {
        const QString first = m_folder.file("first.cube", "LUT_3D_SIZE 9\n");
        const QString second = m_folder.file("second.cube", "LUT_3D_SIZE 5\n");
        const auto fields = [this] {
            return QStringList{text("inputName"),   text("inputType"),      text("inputSize3D"),
                               text("inputSize1D"), text("inputDimension"), text("outputPath")};
        };
        const QStringList shown{"/first.cube", ".cube", "9", "0", "3D", "/some/where.cube"};

        choose("inputButton", {first, second});
        choose("outputButton", {"/some/where.cube"});
        QCOMPARE(m_user->seen, (QStringList{"Open ICC/3DLUT File", "Save ICC/3DLUT File"}));
        const QString filter =
            "lut (*.cube *.3dl *.lut *.davlut *.mga *.m3d *.look *.csp *.cub *.itx *.spi1d "
            "*.spi3d *.csv *.nvx1d *.nvx3d);;icc (*.icc *.icm);;texture (*.bmp *.png);;UTIs "
            "(*.tiff *.tif *.dat);;All (*.*)";
        QCOMPARE(m_user->filters, (QStringList{filter, filter}));
        QCOMPARE(fields(), shown);
        QCOMPARE(find<QLineEdit>("inputName")->toolTip(), first);

        choose("inputButton", {});
        choose("outputButton", {});
        choose("inputButton", {m_folder.file("bad.cube", "LUT_3D_SIZE 0\n")});
        QCOMPARE(m_user->seen.size(), 5);
        QCOMPARE(fields(), shown);
        QCOMPARE(begin(), QStringList("Error: File Error!")); // the bad file is the input now
    }

    void openingFiles_data() {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("taken");
        QTest::newRow("one") << QStringList{"a.cube"} << "/a.cube";
        QTest::newRow("the first") << QStringList{"b.cube", "a.cube"} << "/b.cube";
        QTest::newRow("in capitals") << QStringList{"c.txt", "d.CUBE"} << "/d.CUBE";
        QTest::newRow("any name") << QStringList{"c.txt"} << "/c.txt";
        QTest::newRow("a LUT before others") << QStringList{"c.txt", "a.cube"} << "/a.cube";
        QTest::newRow("no folder") << QStringList{".", "a.cube"} << "/a.cube";
        QTest::newRow("a folder alone") << QStringList{"."} << "";
        QTest::newRow("no existing file") << QStringList{"none.cube", "a.cube"} << "/a.cube";
        QTest::newRow("no file at all") << QStringList() << "";
    }
    void openingFiles() {
        QFETCH(QStringList, files);
        QFETCH(QString, taken);
        for (const char* const name : {"a.cube", "b.cube", "c.txt", "d.CUBE"}) {
            m_folder.file(name, "LUT_3D_SIZE 5\n");
        }
        for (QString& file : files) {
            file = m_folder.path(file);
        }
        m_window->openFiles(files);
        QCOMPARE(text("inputName"), taken);
        QCOMPARE(text("inputSize3D"), taken.isEmpty() ? "" : "5");
    }

    void openingRelativePath() {
        m_folder.file("near.cube", "LUT_3D_SIZE 5\n");
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_folder.path(".")));
        m_window->openFiles({"near.cube"});
        QDir::setCurrent(before);
        QCOMPARE(find<QLineEdit>("inputName")->toolTip(), m_folder.path("near.cube"));
    }

    void dropping() {
        QMimeData files;
        files.setUrls({QUrl("https://tintwell.example/far.cube"),
                       QUrl::fromLocalFile(m_folder.file("near it.cube", "LUT_3D_SIZE 9\n"))});
        QCOMPARE(drop(files), Qt::CopyAction);
        QCOMPARE(text("inputName"), "/near it.cube");
        QCOMPARE(text("inputSize3D"), "9");

        QMimeData words;
        words.setText("a.cube");
        QCOMPARE(drop(words), Qt::IgnoreAction);
        QMimeData page;
        page.setUrls({QUrl("https://tintwell.example/far.cube")});
        QCOMPARE(drop(page), Qt::IgnoreAction);
        QCOMPARE(text("inputName"), "/near it.cube");
    }

    void asksForFiles_data() {
        QTest::addColumn<int>("language");
        QTest::addColumn<QString>("message");
        QTest::newRow("English") << 0 << "Error: Please Select Input/Output File!";
        QTest::newRow("Chinese") << 1 << "错误: 请选择 输入/输出 文件！";
    }
    void asksForFiles() {
        QFETCH(int, language);
        QFETCH(QString, message);
        select("language", language);
        QCOMPARE(begin(), QStringList(message));
        find<QLineEdit>("outputPath")->setText("/tmp/out.cube");
        QCOMPARE(begin(), QStringList(message));
        find<QLineEdit>("outputPath")->clear();
        choose("inputButton", {m_folder.file("in.cube", "LUT_3D_SIZE 5\n")});
        QCOMPARE(begin(), QStringList(message));
    }

    void outcome_data() {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("writes");
        const QByteArray two = cube(2, lattice(2));
        const QByteArray oneD = "LUT_1D_SIZE 2\n0 0 0\n1 1 1\n";
        QTest::newRow("success") << two << "o.cube"
                                 << "Successful: Export successful !" << true;
        QTest::newRow("truncated") << two.left(60) << "o.cube"
                                   << "Error: File Error!" << false;
        QTest::newRow("1D only") << oneD << "o.cube"
                                 << "Error: Format not supported !" << false;
        QTest::newRow("no table") << QByteArray("#\n") << "o.cube"
                                  << "Error: Format not supported !" << false;
        QTest::newRow("no such folder") << two << "none/o.cube"
                                        << "Error: Format not supported !" << false;
    }
    void outcome() {
        QFETCH(QByteArray, input);
        QFETCH(QString, output);
        QFETCH(QString, message);
        QFETCH(bool, writes);
        QFile::remove(m_folder.path(output));
        choose("inputButton", {m_folder.file("in.cube", input)});
        find<QLineEdit>("outputPath")->setText(m_folder.path(output));
        select("language", 1);
        QCOMPARE(begin(), QStringList(message));
        QCOMPARE(QFile::exists(m_folder.path(output)), writes);
    }

    void replacesFilesWholeOrNotAtAll() {
        const QByteArray whole = cube(17, lattice(17));
        const auto convertTo = [this](const QString& output) {
            find<QLineEdit>("outputPath")->setText(output);
            return begin();
        };
        const QStringList failed("Error: Format not supported !");
        const QStringList done("Successful: Export successful !");
        const QString in = m_folder.file("in.cube", whole);
        choose("inputButton", {in});
        QVERIFY(QFile::link("/dev/full", m_folder.path("full.cube")));
        QCOMPARE(convertTo(m_folder.path("full.cube")), failed);

        const QString old = m_folder.file("old.cube", "old");
        QVERIFY(QFile::link(old, m_folder.path("link.cube")));
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit small = {8192, before.rlim_max};
        std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &small);
        const QStringList shown = convertTo(old);
        setrlimit(RLIMIT_FSIZE, &before);
        QCOMPARE(shown, failed);
        QCOMPARE(m_folder.content("old.cube"), QByteArray("old"));

        QCOMPARE(convertTo(m_folder.path("link.cube")), done);
        QCOMPARE(m_folder.content("old.cube"), whole);
        QCOMPARE(convertTo(in), done);
        QCOMPARE(m_folder.content("in.cube"), whole);
    }

    /// Data and table order of the input and of the output, as indices of their boxes; -1: default.
    void conversion_data() {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("outputIndex");
        QTest::addColumn<QVector<int>>("order");
        QTest::addColumn<bool>("swapsChannels");
        QTest::addColumn<bool>("swapsAxes");
        const auto row = [](const char* name, const QVector<int>& order, bool channels, bool axes,
                            int size = 17, int outputIndex = 0) {
            QTest::newRow(name) << size << outputIndex << order << channels << axes;
        };
        row("default orders", {-1, -1, -1, -1}, false, false);
        row("RGB RGB to default", {0, 0, -1, -1}, false, true);
        row("BGR RGB to default", {1, 0, -1, -1}, true, true);
        row("RGB BGR to default", {0, 1, -1, -1}, false, false);
        row("default to RGB RGB", {-1, -1, 0, 0}, false, true);
        row("default to RGB BGR", {-1, -1, 0, 1}, false, false);
        row("default to BGR BGR", {-1, -1, 1, 1}, true, false);
        row("BGR RGB to BGR RGB", {1, 0, 1, 0}, false, false);
        row("33 unchanged", {-1, -1, -1, -1}, false, false, 33, 1);
        row("33 to 17", {-1, -1, -1, -1}, false, false, 33, 0);
        row("33 to 17, orders", {0, 0, 1, 1}, true, true, 33, 0);
    }
    void conversion() {
        QFETCH(int, size);
        QFETCH(int, outputIndex);
        QFETCH(QVector<int>, order);
        QFETCH(bool, swapsChannels);
        QFETCH(bool, swapsAxes);
        const QList<QByteArray> lines = lattice(size);
        choose("inputButton", {m_folder.file("in.cube", cube(size, lines))});
        QFile::remove(m_folder.path("out.cube"));
        choose("outputButton", {m_folder.path("out.cube")});
        select("outputSize3D", outputIndex);
        setOrders("input", order[0], order[1]);
        setOrders("output", order[2], order[3]);
        QCOMPARE(begin(), QStringList("Successful: Export successful !"));

        const int outputSize = outputIndex == 0 ? 17 : 33;
        const QList<QByteArray> expected =
            walked(lines, size, (size - 1) / (outputSize - 1), swapsAxes);
        QCOMPARE(m_folder.content("out.cube"),
                 cube(outputSize, swapsChannels ? withChannelsSwapped(expected) : expected));
    }

    void keyboard() {
        QStringList visited;
        for (QWidget *first = QApplication::focusWidget(), *at = first;;) {
            visited += at->objectName();
            QTest::keyClick(at, Qt::Key_Tab);
            at = QApplication::focusWidget();
            if (at == first || visited.size() > 50) {
                break;
            }
        }
        QCOMPARE(visited,
                 (QStringList{"inputButton", "inputName", "inputType", "inputDimension",
                              "inputSize3D", "inputSize1D", "inputDefaultOrder", "inputDataOrder",
                              "inputTableOrder", "outputButton", "outputPath", "outputType",
                              "outputSize3D", "outputDefaultOrder", "outputDataOrder",
                              "outputTableOrder", "language", "startButton"}));

        auto* const start = find<QPushButton>("startButton");
        QTest::keyClick(start, Qt::Key_Return);
        QTest::keyClick(start, Qt::Key_Space);
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
        QApplication::sendEvent(start, &held);
        QCOMPARE(m_user->seen.size(), 2);
        QVERIFY(!start->isDown());
    }

    void panelsFollowTheWidth() {
        const auto* const input = find<QWidget>("inputPanel");
        const auto* const output = find<QWidget>("outputPanel");
        m_window->resize(2000, m_window->height());
        QTRY_VERIFY(output->x() > input->geometry().right());
        QCOMPARE(input->y(), output->y());
        m_window->resize(m_window->minimumWidth(), m_window->height());
        QTRY_VERIFY(output->y() > input->geometry().bottom());
        QCOMPARE(input->x(), output->x());
        QTRY_VERIFY(m_window->height() > 2 * input->height());
    }

private:
    void setOrders(const QString& side, int data, int table) {
        if (data < 0) {
            return;
        }
        find<QCheckBox>(side + "DefaultOrder")->setChecked(false);
        select(side + "DataOrder", data);
        select(side + "TableOrder", table);
    }
};

QTEST_MAIN(TestWindow)
#include "test_window.moc"
