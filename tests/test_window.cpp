#include "app/main_window.h"
#include "lut/lattice.h"
#include "samples.h"

#include <QtWidgets>

namespace {

/// The user's side of the dialogs: the files to choose next (none: cancel), and what was shown.
class User {
public:
    QStringList choice;
    QStringList seen;

    User() {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { answer(); });
        m_timer.start(1);
    }

private:
    void answer() {
        QWidget* const modal = QApplication::activeModalWidget();
        if (auto* const files = qobject_cast<QFileDialog*>(modal)) {
            const QStringList chosen = std::exchange(choice, {});
            const QString quoted = '"' + chosen.join("\" \"") + '"';
            seen += files->windowTitle() + ": " + files->nameFilters().join(";;");
            files->findChild<QLineEdit*>()->setText(chosen.size() > 1 ? quoted : chosen.value(0));
            QMetaObject::invokeMethod(files, chosen.isEmpty() ? "reject" : "accept");
        } else if (auto* const box = qobject_cast<QMessageBox*>(modal)) {
            const bool plain = box->parent() == nullptr && box->icon() == QMessageBox::Warning &&
                               box->standardButtons() == QMessageBox::Ok;
            seen += (plain ? "" : "(not plain) ") + box->windowTitle() + ": " + box->text();
            box->button(QMessageBox::Ok)->click();
        }
    }

    QTimer m_timer;
};

/// A file of samples that are all different: every \a step-th of a larger lattice.
QByteArray cube(int points, int step = 1, bool swapsChannels = false, bool swapsAxes = false) {
    const char* const line =
        swapsChannels ? "1.000000 0.5%05d 0.%06d\n" : "0.%06d 0.5%05d 1.000000\n";
    QByteArray text = "TITLE \nLUT_3D_SIZE " + QByteArray::number(points) + '\n';
    const int size = (points - 1) * step + 1;
    tintwell::visitLattice(points, [&](int i, int j, int k) {
        const int n = step * (swapsAxes ? (k * size + j) * size + i : (i * size + j) * size + k);
        text += QString::asprintf(line, n, n).toLatin1();
        return true;
    });
    return text;
}

constexpr const char* done = "Successful: Export successful !";
constexpr const char* failed = "Error: Format not supported !";

} // namespace

class TestWindow : public QObject {
    Q_OBJECT

    samples::Folder m_folder;
    QScopedPointer<MainWindow> m_window;
    QScopedPointer<User> m_user;
    QColor m_frameBeforeDrop;

    template <typename T>
    T* find(const QString& name) const {
        return m_window->findChild<T*>(name);
    }

    /// The path that a tool tip shows, without the places where it may be wrapped.
    QString tip(const QString& of) const {
        const QString html = find<QWidget>(of)->toolTip();
        return QTextDocumentFragment::fromHtml(html).toPlainText().remove(QChar(0x200B));
    }
    QString text(const QString& of) const { return find<QWidget>(of)->property("text").toString(); }
    void select(const QString& box, int to) const { find<QComboBox>(box)->setCurrentIndex(to); }

    /// Clicks a button and answers its dialog with these files.
    void choose(const QString& button, const QStringList& files) const {
        m_user->choice = files;
        QTest::mouseClick(find<QWidget>(button), Qt::LeftButton);
    }

    QColor frameColour() const {
        auto* const panel = find<QWidget>("inputPanel");
        const QPoint top = panel->mapTo(m_window.data(), {panel->width() / 2, 1});
        return m_window->grab(QRect(top, QSize(1, 1))).toImage().pixelColor(0, 0);
    }

    /// Drags this to the output path, where drops on the window must work too, and lets go if it is
    /// accepted. Returns the resulting action.
    Qt::DropAction drop(const QMimeData& data) {
        auto* const field = find<QLineEdit>("outputPath");
        QDragEnterEvent enter({9, 9}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        enter.ignore();
        QApplication::sendEvent(field, &enter);
        if (!enter.isAccepted()) {
            return Qt::IgnoreAction;
        }
        m_frameBeforeDrop = frameColour();
        QDropEvent released({9, 9}, enter.possibleActions(), &data, Qt::LeftButton, {});
        released.setDropAction(Qt::MoveAction);
        QApplication::sendEvent(m_window.data(), &released);
        return released.dropAction();
    }

    /// What is shown after a press on the start button.
    QString begin() const {
        m_user->seen.clear();
        choose("startButton", {});
        return m_user->seen.join('|');
    }
    QString convertTo(const QString& path) const {
        find<QLineEdit>("outputPath")->setText(path);
        return begin();
    }

    /// Sets the orders by default (-1) or by the boxes: data order + 2 x table order. Returns which
    /// they are.
    int setOrders(const QString& side, int orders) const {
        select(side + "DataOrder", std::max(orders, 0) % 2);
        select(side + "TableOrder", std::max(orders, 0) / 2);
        find<QCheckBox>(side + "DefaultOrder")->setChecked(orders < 0);
        return orders < 0 ? 2 : orders; // a file's own: RGB, first axis fastest
    }

    /// Whether a side shows this in place of a picture, or in description of it, before long.
    bool isShown(const QString& side, const QString& what) const {
        return QTest::qWaitFor([&] {
            return find<QWidget>(side + "Picture")->accessibleDescription().startsWith(what);
        });
    }
    QImage picture(const QString& side, const QString& shown = "Slices") const {
        auto* const view = find<QWidget>(side + "Picture");
        view->setFixedHeight(80); // whatever the height of the notes
        return isShown(side, shown) ? view->grab().toImage() : QImage();
    }

private Q_SLOTS:
    static void initMain() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    void init() {
        m_user.reset(new User);
        m_window.reset(new MainWindow);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
    }

    /// What is written on the window, in the order in which the keyboard visits it.
    void labelsInBothLanguages() {
        const char* const labels[] = {
            "Input File|File Name|Type|Dimension|3D Size|1D Size|Default Order|Data Order|Table "
            "Order|"
            "Output File|File Path|Type|3D Size|Default Order|Data Order|Table "
            "Order|Language|Begin",
            "输入文件|文件名|类型|维度|3D尺寸|1D尺寸|默认顺序|数据顺序|表格顺序|"
            "输出文件|路径|类型|3D尺寸|默认顺序|数据顺序|表格顺序|语言|开始转换"};
        for (const int language : {1, 0, 1}) {
            select("language", language);
            QStringList shown;
            QWidget* const first = find<QWidget>("inputButton");
            first->setFocus();
            do {
                QWidget* const at = QApplication::focusWidget();
                const auto* const button = qobject_cast<QAbstractButton*>(at);
                shown += button != nullptr ? button->text() : at->accessibleName();
                QTest::keyClick(at, Qt::Key_Tab);
            } while (QApplication::focusWidget() != first && shown.size() < 50);
            QCOMPARE(shown.join('|'), labels[language]);
            const QRegularExpression ofField("put.*Caption$");
            for (const QLabel* const caption : m_window->findChildren<QLabel*>(ofField)) {
                const QWidget* const field = caption->buddy();
                QCOMPARE(field->accessibleName(), caption->text());
                QVERIFY(field->accessibleDescription().startsWith(
                    field->parentWidget()->accessibleName()));
            }
            QCOMPARE(find<QWidget>("inputPanel")->accessibleName(), text("inputButton"));
            QCOMPARE(find<QWidget>("outputPanel")->accessibleName(), text("outputButton"));
            QCOMPARE(find<QWidget>("startButton")->toolTip().left(6),
                     language ? "生成 Lut" : "Genera");
        }
        QCOMPARE(find<QPushButton>("inputButton")->shortcut(), QKeySequence("Ctrl+O"));
        QString items;
        for (const QComboBox* const box : m_window->findChildren<QComboBox*>()) {
            for (int n = 0; n < box->count(); ++n) {
                items += box->itemText(n) + ' ';
            }
        }
        QCOMPARE(items, "RGB BGR RGB BGR .cube 17 33 RGB BGR RGB BGR English 简体中文 ");
        QCOMPARE(text("languageCaption") + m_window->windowTitle(), "语言/Language:Tintwell");
    }

    void dialogsInBothLanguages() {
        const QDir folder(QLibraryInfo::location(QLibraryInfo::TranslationsPath));
        const bool translated = folder.exists("qtbase_zh_CN.qm");
        for (const int language : {0, 1, 0, 1}) {
            select("language", language);
            const QDialogButtonBox box(QDialogButtonBox::Open);
            QCOMPARE(box.buttons().constFirst()->text().remove('&'),
                     translated && language ? "打开" : "Open");
        }
    }

    void orders() {
        for (const QString side : {"input", "output"}) {
            auto* const byDefault = find<QCheckBox>(side + "DefaultOrder");
            QVERIFY(byDefault->isChecked());
            for (const int changes : {1, 2, 3}) {
                select(side + "DataOrder", changes & 1);
                select(side + "TableOrder", changes >> 1);
                QVERIFY(!byDefault->isChecked());
                byDefault->click();
                QVERIFY(byDefault->isChecked());
                QCOMPARE(find<QComboBox>(side + "DataOrder")->currentText(), "RGB");
                QCOMPARE(find<QComboBox>(side + "TableOrder")->currentText(), "RGB");
            }
            byDefault->click();
            QVERIFY(!byDefault->isChecked());
            QVERIFY(side == "output" || find<QCheckBox>("outputDefaultOrder")->isChecked());
        }
    }

    void wheelNeedsFocus() {
        auto* const box = find<QComboBox>("inputDataOrder");
        const auto turn = [&](QWidget* focus) {
            focus->setFocus();
            QWheelEvent down({9, 9}, box->mapToGlobal({9, 9}), {}, {0, -120}, {}, {},
                             Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(box, &down);
            return box->currentText();
        };
        QCOMPARE(turn(find<QWidget>("startButton")), "RGB");
        QCOMPARE(box->focusPolicy(), Qt::StrongFocus);
        QCOMPARE(turn(box), "BGR");
    }

    void choosing() {
        const QString first = m_folder.file("first.cube", "LUT_3D_SIZE 9\n");
        const QString second = m_folder.file("second.cube", "LUT_3D_SIZE 5\n");
        choose("inputButton", {first, second});
        const QString asked = begin();
        choose("outputButton", {"/some/where.cube"});
        select("outputSize3D", 1);
        select("inputTableOrder", 1);
        // What follows changes none of this.
        choose("inputButton", {});
        choose("outputButton", {});
        choose("inputButton", {m_folder.file("bad.cube", "LUT_3D_SIZE 0\n")});
        select("language", 1);
        QString shown = tip("inputName");
        for (const char* const name : {"inputName", "inputType", "inputSize3D", "inputSize1D",
                                       "inputDimension", "outputPath"}) {
            shown += ' ' + text(name);
        }
        QCOMPARE(shown, first + " /first.cube .cube 9 0 3D /some/where.cube");
        QCOMPARE(find<QComboBox>("outputSize3D")->currentIndex(), 1);
        QCOMPARE(find<QComboBox>("inputTableOrder")->currentText(), "BGR");
        const QString filter =
            "lut (*.cube *.3dl *.lut *.davlut *.mga *.m3d *.look *.csp *.cub *.itx *.spi1d "
            "*.spi3d *.csv *.nvx1d *.nvx3d);;icc (*.icc *.icm);;texture (*.bmp *.png);;UTIs "
            "(*.tiff *.tif *.dat);;All (*.*)";
        const QString open = "Open ICC/3DLUT File: " + filter;
        const QString save = "Save ICC/3DLUT File: " + filter;
        QCOMPARE(m_user->seen, QStringList({asked, save, open, save, open}));
        QCOMPARE(asked, "Error: Please Select Input/Output File!");
        QCOMPARE(begin(), "Error: File Error!"); // the bad file is the input now
        QCOMPARE(convertTo(""), "错误: 请选择 输入/输出 文件！");
    }

    /// Names of files to open, and which of them is taken, if any.
    void openingFiles() {
        for (const char* const name : {"a.cube", "b.cube", "c.txt", "d.CUBE", "e.txt"}) {
            m_folder.file(name, "LUT_3D_SIZE 5\n");
        }
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_folder.path("."))); // relative paths do not stay so
        for (const QString opening :
             {".>", "none.cube>", ">", "a.cube>/a.cube", "b.cube a.cube>/b.cube",
              "c.txt d.CUBE>/d.CUBE", "c.txt e.txt>/c.txt", ". none.cube c.txt a.cube>/a.cube"}) {
            m_window->openFiles(opening.section('>', 0, 0).split(' '));
            QCOMPARE(text("inputName"), opening.section('>', 1));
        }
        QDir::setCurrent(before);
        QCOMPARE(tip("inputName"), m_folder.path("a.cube"));
    }

    void commandLine() {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const auto start = [&](const QStringList& arguments) {
            program.setProcessEnvironment(environment);
            program.start(TINTWELL_APP, arguments);
        };
        for (const char* const noDisplay : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
            environment.remove(noDisplay);
        }
        for (const QString answer :
             {"-h 0 [file]", "--help 0 [file]", "--help-all 0 --platform <",
              "--version 0 Tintwell ", "--nonsense 1 'nonsense'", "-style=fusion 1 no display",
              "DISPLAY 1 tintwell-cli needs none", "WAYLAND_DISPLAY 1 cannot be opened",
              "QT_QPA_PLATFORM 1 cannot be opened"}) {
            const QString word = answer.section(' ', 0, 0);
            if (word.startsWith('-')) {
                start({word});
            } else {
                environment.insert(word, ":dead");
                start({});
                environment.remove(word);
            }
            QVERIFY(program.waitForFinished());
            QCOMPARE(program.exitCode(), answer.section(' ', 1, 1).toInt());
            const QString text = program.readAllStandardOutput() + program.readAllStandardError();
            QVERIFY2(text.contains(answer.section(' ', 2)), qPrintable(text));
        }
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        start({"/no.cube", "/", "file:///no%20ne", m_folder.file("a.cube", "LUT_3D_SIZE 5\n")});
        QByteArray errors;
        QTRY_VERIFY((errors += program.readAllStandardError()).count("tintwell: ") == 3);
        QVERIFY(errors.endsWith("tintwell: /no.cube: No such file or directory\n"
                                "tintwell: /: is a folder, expected a file\n"
                                "tintwell: /no ne: No such file or directory\n"));
        QCOMPARE(program.state(), QProcess::Running); // the window is open
        program.kill();
        QVERIFY(program.waitForFinished());
    }

    void dropping() {
        QCOMPARE(convertTo("/tmp/out.cube"), "Error: Please Select Input/Output File!");
        QMimeData data;
        data.setText("a.cube");
        QCOMPARE(drop(data), Qt::IgnoreAction);
        const QUrl page("https://tintwell.example/far.cube");
        data.setUrls({page});
        QCOMPARE(drop(data), Qt::IgnoreAction);
        data.setUrls({page, QUrl::fromLocalFile(m_folder.path("."))});
        QCOMPARE(drop(data), Qt::IgnoreAction);
        data.setUrls({page, QUrl::fromLocalFile(m_folder.file("near it.cube", "LUT_3D_SIZE 9\n"))});
        QCOMPARE(drop(data), Qt::CopyAction);
        QCOMPARE(text("inputName") + text("inputSize3D"), "/near it.cube9");
        QCOMPARE(m_frameBeforeDrop, m_window->palette().color(QPalette::Highlight));
        QVERIFY(frameColour() != m_frameBeforeDrop);
    }

    /// A conversion leaves the whole new file or what was there.
    void replacing() {
        const QString old = m_folder.file("old.cube", "old");
        QVERIFY(QFile::link("/dev/full", m_folder.path("full.cube")));
        QVERIFY(QFile::link(old, m_folder.path("link.cube")));
        select("language", 1);
        const auto convert = [&](const QByteArray& input, const char* output) {
            choose("inputButton", {m_folder.file("in.cube", input)});
            return convertTo(m_folder.path(output));
        };
        QCOMPARE(convert(cube(2).left(60), "old.cube"), "Error: File Error!");
        QCOMPARE(convert("LUT_1D_SIZE 2\n0 0 0\n1 1 1\n", "old.cube"), failed);
        QCOMPARE(convert("#\n", "old.cube"), failed);
        QCOMPARE(convert(cube(2), "none/o.cube"), failed);
        QCOMPARE(convert(cube(17), "full.cube"), failed);
        QCOMPARE(m_folder.content("old.cube"), "old");
        QCOMPARE(convert(cube(17), "link.cube"), done);
        QVERIFY(QFileInfo(m_folder.path("link.cube")).isSymLink());
        QCOMPARE(m_folder.content("old.cube"), cube(17));
        QCOMPARE(convert(cube(17), "in.cube"), done);
        QCOMPARE(m_folder.content("in.cube"), cube(17));
    }

    /// What is said before and after a conversion, in the words of the language at hand.
    void notes() {
        const auto told = [this] { return text("statusNote"); };
        const auto choosing = [&](const char* name, const QByteArray& content) {
            choose("inputButton", {m_folder.file(name, content)});
            return told();
        };
        const QString before = QDir::currentPath();
        QCOMPARE(told(), "");
        QCOMPARE(choosing("in.cube", cube(17)), "");
        QCOMPARE(find<QLineEdit>("outputPath")->placeholderText(), "in_17.cube");
        QCOMPARE(QDir::currentPath(), m_folder.path(""));
        const auto writing = [&](const QString& path) {
            find<QLineEdit>("outputPath")->setText(path);
            return told();
        };
        QCOMPARE(writing("no/o.cube"), "There is no folder " + m_folder.path("no"));
        QCOMPARE(writing(m_folder.path(".")), "The output has no name that ends in .cube\n"
                                              "The output is not a regular file");
        QCOMPARE(writing("o.txt"), "The output has no name that ends in .cube");
        QCOMPARE(writing("./in.cube"), "The output is the input, which will be replaced");
        QCOMPARE(choosing("-a 'b'.3dl", cube(2)), "Not a .cube: tintwell-cli convert "
                                                  "'./-a '\\''b'\\''.3dl' converts it\n"
                                                  "The output exists and will be replaced");
        choosing("in.cube", cube(17));
        QCOMPARE(convertTo("new.cube"), done); // beside the input
        const QString name = m_folder.path("new.cube");
        QVERIFY(told().startsWith("Written: " + name + " (17 x 17 x 17, 129."));
        QCOMPARE(choosing("in.cube", cube(17) + "hello\n"),
                 "The output exists and will be replaced");
        QCOMPARE(begin(), done);
        QVERIFY(told().endsWith("\nin.cube:4916: found \"hello\", which is neither a sample nor a "
                                "keyword"));
        QVERIFY(choosing("bad.cube", "LUT_3D_SIZE\t2\n")
                    .startsWith("Cannot be read: bad.cube:1: found \"LUT_3D_SIZE"));
        select("language", 1);
        QVERIFY(told().startsWith("无法读取：bad.cube:1: found"));
        find<QLineEdit>("outputPath")->setText("new2.cube");
        QCOMPARE(choosing("in.3dl", "DOMAIN_MAX 2 2 2\nLUT_1D_SIZE 2\nLUT_3D_SIZE 2\n" + cube(2)),
                 "不是 .cube 文件：可用 tintwell-cli convert in.3dl 转换\n1D 表将丢失\n"
                 "定义域将丢失：输出覆盖 0 到 1");
        QCOMPARE(begin(), "Error: File Error!");
        QVERIFY(told().startsWith("未转换：in.3dl:"));
        choosing("curve.cube", "LUT_1D_SIZE 2\n0 0 0\n1 1 1\n");
        QCOMPARE(begin(), failed);
        QCOMPARE(told(), "未写入：new2.cube: the input has no 3D table\n"
                         "输入没有 3D 表：不会写入任何内容");
        QDir::setCurrent(before);
    }

    void conversion() {
        for (int way = 0; way < 25; ++way) {
            const int points = way % 4 == 3 ? 33 : 17;
            const int outputPoints = way % 8 == 7 ? 33 : 17;
            choose("inputButton", {m_folder.file("in.cube", cube(points))});
            select("outputSize3D", outputPoints == 33 ? 1 : 0);
            const int swaps = setOrders("input", way % 5 - 1) ^ setOrders("output", way / 5 - 1);
            QCOMPARE(convertTo(m_folder.path("out.cube")), done);
            QCOMPARE(
                text("orderNote"),
                QStringList({"Samples unchanged", "Red and blue swapped", "Lattice axes swapped",
                             "Both swapped: red and blue, and the lattice axes"})[swaps]);
            QVERIFY2(m_folder.content("out.cube") ==
                         cube(outputPoints, points > outputPoints ? 2 : 1, swaps & 1, swaps & 2),
                     QByteArray::number(way));
        }
    }

    /// What the output will do is what the written file does as an input.
    void pictures() {
        m_window->setStyleSheet("* { font-size: 8px }"); // so that there is room
        QTRY_VERIFY(find<QWidget>("pictures")->isVisible());
        QVERIFY(isShown("input", "Choose a file"));
        const auto differs = [](const QImage& a, const QImage& b) {
            return a.isNull() || a.size() != b.size() ||
                   !std::equal(a.constBits(), a.constBits() + a.sizeInBytes(), b.constBits(),
                               [](int x, int y) { return std::abs(x - y) <= 2; });
        };
        const QString in[] = {m_folder.file("a.cube", "DOMAIN_MAX 1 1 3\n" + cube(17, 2)),
                              m_folder.file("b.cube", "DOMAIN_MIN -1 0 -0.3\n" + cube(17, 2))};
        const QString out = m_folder.path("out.cube");
        for (const int way : {0, 1, 3, 7, 9}) {
            choose("inputButton", {in[way / 5]});
            const int swaps =
                setOrders("input", way % 5 - 1) ^ setOrders("output", way / 5 * 2 - 1);
            select("outputSize3D", way == 3 ? 1 : 0);
            const QImage before = picture("input");
            const QImage promised = picture("output");
            QCOMPARE(convertTo(out), done);
            choose("inputButton", {out});
            QVERIFY2(!differs(picture("input"), promised), QByteArray::number(way));
            // Without the domain, b.cube is another part of the table.
            QCOMPARE(differs(picture("input"), before), swaps != 0 || way >= 5);
        }
        choose("inputButton", {m_folder.file("big.cube", "LUT_3D_SIZE 66\n")});
        QVERIFY(isShown("input", "Too large to be shown here: tintwell-cli picture big.cube"));
        choose("inputButton", {m_folder.file("bad.cube", cube(2).left(60))});
        QVERIFY(isShown("input", "Cannot be read: bad.cube:"));
        QCOMPARE(find<QWidget>("outputPicture")->accessibleDescription(), "");
        choose("inputButton", {m_folder.file("curve.cube", "LUT_1D_SIZE 2\n0 0 0\n1 1 1\n")});
        QVERIFY(isShown("input", "Curves: ") && isShown("output", "The input has no 3D table"));
        QPalette dark;
        dark.setColor(QPalette::Base, Qt::black);
        find<QWidget>("inputPicture")->setPalette(dark);
        QVERIFY(picture("input", "Curves").pixelColor(9, 3).lightness() < 128);
        m_window->setStyleSheet("* { font-size: 30px }"); // leaves no room
        QTRY_VERIFY(!find<QWidget>("pictures")->isVisible());
    }

    void onePressCountsOnce() {
        auto* const start = find<QPushButton>("startButton");
        QTest::keyClick(start, Qt::Key_Return);
        QTest::keyClick(start, Qt::Key_Space);
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, "\r", true);
        QApplication::sendEvent(start, &held);
        QCOMPARE(m_user->seen.size(), 2);
        QVERIFY(!start->isDown());
    }

    void keys() {
        auto* const path = find<QWidget>("outputPath");
        path->setFocus();
        QTest::keyClick(path, Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), find<QWidget>("startButton"));
        QCOMPARE(m_user->seen.size(), 0);
        QTest::keyClick(path, Qt::Key_Enter, Qt::ControlModifier | Qt::KeypadModifier);
        QTRY_COMPARE(m_user->seen.size(), 1);
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
        QTest::keyClick(path, Qt::Key_Q, Qt::ControlModifier);
        QVERIFY(!m_window->isVisible());
    }

    void longToolTips() {
        const QString path = "/a  <b>&/" + QString(400, 'w') + "/" + QString(120, '/');
        find<QLineEdit>("outputPath")->setText(path);
        QCOMPARE(tip("outputPath"), path);
        QLabel shown(find<QWidget>("outputPath")->toolTip());
        shown.setWordWrap(true); // as of a tool tip
        QVERIFY(shown.sizeHint().width() < 100 * shown.fontMetrics().averageCharWidth());
        find<QLineEdit>("outputPath")->clear();
        QCOMPARE(find<QWidget>("outputPath")->toolTip(), "");
    }

    void panelsFollowTheWidth() {
        const auto* const input = find<QWidget>("inputPanel");
        const auto* const output = find<QWidget>("outputPanel");
        m_window->setStyleSheet("* { font-size: 8px }"); // so that both fit one above the other
        m_window->resize(2000, m_window->height());
        QTRY_VERIFY(output->x() > input->geometry().right());
        QCOMPARE(input->y(), output->y());
        m_window->resize(m_window->minimumWidth(), m_window->height());
        QTRY_VERIFY(output->y() > input->geometry().bottom());
        QCOMPARE(input->x(), output->x());
        QTRY_VERIFY(m_window->height() > 2 * input->height());
    }

    /// On a screen that is too small for large letters, what is out of sight can be scrolled to.
    void scrolling() {
        const auto* const begin = find<QWidget>("startButton");
        const auto* const area = find<QScrollArea>("content");
        const auto isSeen = [&] { return begin->visibleRegion().boundingRect() == begin->rect(); };
        m_window->setStyleSheet("* { font-size: 8px }");
        QTRY_VERIFY(isSeen() && !area->verticalScrollBar()->isVisible());
        m_window->setStyleSheet("* { font-size: 30px }");
        const QSize screen = m_window->screen()->availableSize();
        QTRY_VERIFY(area->verticalScrollBar()->isVisible() && !isSeen());
        QVERIFY(m_window->height() < screen.height() && m_window->width() <= screen.width());
        QTest::keyClick(find<QWidget>("outputPath"), Qt::Key_Return);
        QTRY_VERIFY(isSeen());
    }
};

QTEST_MAIN(TestWindow)
#include "test_window.moc"
