#include "program.h"

#include "calc/lutcalc.h"

#include <QImage>

#include <algorithm>
#include <array>

#include <sys/stat.h>

// The commands that make images with a table: apply and picture.

class TestCliImages : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    /// Applies a table to an image. Returns the result; null if the program failed.
    QImage applied(const QString& lut, const QImage& image, const QStringList& options = {}) const {
        const QString in = m_folder.path(QStringLiteral("in.png"));
        const QString out = m_folder.path(QStringLiteral("out.png"));
        image.save(in);
        const QStringList command = {QStringLiteral("apply"), QStringLiteral("--force"), lut, in,
                                     out};
        return samples::run(command + options).status == 0 ? QImage(out) : QImage();
    }

    QString lutFile(const char* name, const QByteArray& content) const {
        return m_folder.file(QString::fromLatin1(name), content);
    }

    QString curvesFile(const char* entries) const {
        return lutFile("curves.spi1d", QByteArray("Version 1\nFrom 0.0 1.0\nLength ") +
                                           QByteArray::number(QByteArray(entries).count('\n')) +
                                           "\nComponents 3\n{\n" + entries + "}\n");
    }

    /// A cube of two points per axis that keeps green, swaps red and blue, and halves what was red.
    QString swappingCube() const {
        return lutFile("swap.cube", "LUT_3D_SIZE 2\n"
                                    "0 0 0\n"
                                    "0 0 0.5\n"
                                    "0 1 0\n"
                                    "0 1 0.5\n"
                                    "1 0 0\n"
                                    "1 0 0.5\n"
                                    "1 1 0\n"
                                    "1 1 0.5\n");
    }

    /// Pixels from all over the colour cube, no two neighbours alike.
    static QImage colours(QImage::Format format) {
        QImage image(61, 47, QImage::Format_RGBA64);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const int n = y * image.width() + x;
                image.setPixelColor(
                    x, y,
                    QColor(QRgba64::fromRgba64(quint16(n * 22'573), quint16(n * 911),
                                               quint16(65'535 - n * 7), quint16(n * 31 | 1))));
            }
        }
        return image.convertToFormat(format);
    }

    static std::array<int, 4> words(const QImage& image, int x, int y) {
        const QRgba64 colour = image.pixelColor(x, y).rgba64();
        return {colour.red(), colour.green(), colour.blue(), colour.alpha()};
    }

    static bool same(const QImage& a, const QImage& b) {
        if (a.size() != b.size()) {
            return false;
        }
        for (int y = 0; y < a.height(); ++y) {
            for (int x = 0; x < a.width(); ++x) {
                if (words(a, x, y) != words(b, x, y)) {
                    return false;
                }
            }
        }
        return true;
    }

    static QImage pixel(int r, int g, int b) {
        QImage image(1, 1, QImage::Format_RGB32);
        image.fill(qRgb(r, g, b));
        return image;
    }

    /// The place of a colour in a picture.
    static QRect boxOf(const QImage& picture, QRgb colour) {
        QRect box;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixel(x, y) == colour) {
                    box |= QRect(x, y, 1, 1);
                }
            }
        }
        return box;
    }

    /// How many pixels of a part of a picture differ from its first pixel.
    static int inked(const QImage& picture, const QRect& part) {
        int count = 0;
        for (int y = part.top(); y <= part.bottom(); ++y) {
            for (int x = part.left(); x <= part.right(); ++x) {
                count += picture.pixel(x, y) != picture.pixel(part.topLeft()) ? 1 : 0;
            }
        }
        return count;
    }

    QImage picture(const QString& lut, const QStringList& options = {}) const {
        const QString out = m_folder.path(QStringLiteral("picture.png"));
        const QStringList command = {QStringLiteral("picture"), QStringLiteral("--force"), lut,
                                     out};
        return samples::run(command + options).status == 0 ? QImage(out) : QImage();
    }

private Q_SLOTS:
    void identityKeepsImages_data() {
        QTest::addColumn<QImage>("image");
        QTest::addColumn<QImage::Format>("format");
        const auto row = [](const char* name, QImage::Format format, QImage::Format saved) {
            QTest::newRow(name) << colours(format) << saved;
        };
        row("8 bits", QImage::Format_RGB32, QImage::Format_RGB32);
        row("8 bits and alpha", QImage::Format_ARGB32, QImage::Format_ARGB32);
        row("16 bits", QImage::Format_RGBX64, QImage::Format_RGBX64);
        row("16 bits and alpha", QImage::Format_RGBA64, QImage::Format_RGBA64);
        row("grey", QImage::Format_Grayscale8, QImage::Format_Grayscale8);
        row("16 bits of grey", QImage::Format_Grayscale16, QImage::Format_Grayscale16);
        QTest::newRow("palette")
            << colours(QImage::Format_RGB32).convertToFormat(QImage::Format_Indexed8)
            << QImage::Format_RGB32;
    }
    void identityKeepsImages() {
        QFETCH(QImage, image);
        QByteArray identity = "LUT_3D_SIZE 2\n";
        for (int n = 0; n < 8; ++n) {
            identity += QByteArray::number(n & 1) + ' ' + QByteArray::number(n >> 1 & 1) + ' ' +
                        QByteArray::number(n >> 2) + '\n';
        }
        const QImage result = applied(lutFile("identity.cube", identity), image);
        QTEST(result.format(), "format");
        QVERIFY(same(result, image));
    }

    void knownPixels_data() {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QRgb>("expected");
        QTest::newRow("format's own orders") << QStringList() << qRgb(40, 100, 100);
        QTest::newRow("bgr") << QStringList{QStringLiteral("--in-order"), QStringLiteral("bgr")}
                             << qRgb(100, 100, 40);
    }
    void knownPixels() {
        QFETCH(QStringList, options);
        const QImage result = applied(swappingCube(), pixel(200, 100, 40), options);
        QCOMPARE(result.size(), QSize(1, 1));
        QTEST(result.pixel(0, 0), "expected");
    }

    void agreesWithTheLookUp_data() {
        QTest::addColumn<QImage::Format>("format");
        QTest::addColumn<float>("fullScale");
        QTest::newRow("8 bits") << QImage::Format_RGB32 << 255.0F;
        QTest::newRow("16 bits") << QImage::Format_RGBX64 << 65535.0F;
    }
    void agreesWithTheLookUp() {
        QFETCH(QImage::Format, format);
        QFETCH(float, fullScale);
        Read_LUTFile lut(nullptr);
        QByteArray text = "SPILUT 1.0\n3 3\n5 5 5\n";
        for (int n = 0; n < 125; ++n) {
            const int i = n / 25;
            const int j = n / 5 % 5;
            const int k = n % 5;
            for (const int number : {i, j, k}) {
                text += QByteArray::number(number) + ' ';
            }
            for (const int number : {i * i + k, j * 4 - i, k * 3 + j}) {
                text += QByteArray::number(number / 16.0) + ' ';
            }
            text += '\n';
        }
        const QString path = lutFile("bent.spi3d", text);
        QVERIFY(lut.ReadFile(samples::request(path, 13), false));
        const QImage image = colours(format);
        const QImage result = applied(path, image);
        QCOMPARE(result.size(), image.size());
        const float toWord = 65535.0F / fullScale;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const auto before = words(image, x, y);
                const auto after = words(result, x, y);
                float colour[3];
                for (std::size_t c = 0; c < 3; ++c) {
                    colour[c] = (float(before[c]) / toWord) / fullScale;
                }
                LutCalc().Lut3D_Tetrahedral(colour, colour, lut);
                for (std::size_t c = 0; c < 3; ++c) {
                    const float code = qBound(0.0F, colour[c], 1.0F) * fullScale + 0.5F;
                    QCOMPARE(after[c], int(code) * int(toWord));
                }
            }
        }
    }

    void respectsTheDomain() {
        // Red runs from 0 to 2, the others from 0 to 1.
        const QString lut = lutFile("domain.csp", "CSPLUTV100\n3D\nBEGIN METADATA\nEND METADATA\n"
                                                  "2\n0 1\n0 2\n2\n0 1\n0 1\n2\n0 1\n0 1\n2 2 2\n"
                                                  "0 0 0\n2 0 0\n0 1 0\n2 1 0\n"
                                                  "0 0 1\n2 0 1\n0 1 1\n2 1 1\n");
        QCOMPARE(applied(lut, pixel(204, 51, 153)).pixel(0, 0), qRgb(102, 51, 153));
    }

    void curves() {
        const QString lut = curvesFile("0 0 1\n0.5 0.25 0.5\n1 0.5 0\n");
        QCOMPARE(applied(lut, pixel(200, 100, 40)).pixel(0, 0), qRgb(200, 50, 215));
    }

    void tintedGreyBecomesColour() {
        const QImage grey = pixel(100, 100, 100).convertToFormat(QImage::Format_Grayscale8);
        const QImage result = applied(swappingCube(), grey);
        QCOMPARE(result.format(), QImage::Format_RGB32);
        QCOMPARE(result.pixel(0, 0), qRgb(100, 100, 50));
    }

    void sameFile() {
        const QString path = m_folder.path(QStringLiteral("same.png"));
        pixel(200, 100, 40).save(path);
        QCOMPARE(samples::run({QStringLiteral("apply"), swappingCube(), path, path}).status, 1);
        QCOMPARE(QImage(path).pixel(0, 0), qRgb(200, 100, 40));
        QCOMPARE(samples::run({QStringLiteral("apply"), QStringLiteral("--force"), swappingCube(),
                               path, path})
                     .status,
                 0);
        QCOMPARE(QImage(path).pixel(0, 0), qRgb(40, 100, 100));
    }

    void notesLostDepth() {
        const QString in = m_folder.path(QStringLiteral("deep.png"));
        const QString out = m_folder.path(QStringLiteral("deep.bmp"));
        colours(QImage::Format_RGBX64).save(in);
        const samples::Outcome outcome =
            samples::run({QStringLiteral("apply"), swappingCube(), in, out});
        QCOMPARE(outcome.status, 0);
        QVERIFY2(outcome.errors.contains(QLatin1String("deep.bmp: note: ")),
                 qPrintable(outcome.errors));
    }

    void errors_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("message");
        const QString lut = swappingCube();
        const QString image = m_folder.path(QStringLiteral("good.png"));
        const QString text = m_folder.file(QStringLiteral("text.png"), "no image");
        const QString out = m_folder.path(QStringLiteral("never.png"));
        const QString gone = m_folder.path(QStringLiteral("gone"));
        const QString broken = lutFile("broken.cube", "LUT_3D_SIZE 2\n0 0 0\n");
        pixel(1, 2, 3).save(image);
        const auto row = [](const char* name, const QStringList& arguments, int status,
                            const QString& message) {
            QTest::newRow(name) << arguments << status << message;
        };
        const QString apply = QStringLiteral("apply");
        const QString draw = QStringLiteral("picture");
        row("no image to read", {apply, lut, gone + ".png", out}, 1, gone + ".png: ");
        row("text for an image", {apply, lut, text, out}, 1, text + ": ");
        const QString cut = m_folder.file(QStringLiteral("cut.png"),
                                          m_folder.content(QStringLiteral("good.png")).chopped(20));
        row("image cut short", {apply, lut, cut, out}, 1, cut + ": ");
        row("folder for an image", {apply, lut, m_folder.path(QString()), out}, 1,
            ": is a folder, expected a file");
        row("broken table", {apply, broken, image, out}, 1, broken + ":");
        row("no folder to write into", {apply, lut, image, gone + "/out.png"}, 1, gone);
        row("existing output", {apply, lut, image, image}, 1, image + ": ");
        const QString full = m_folder.path(QStringLiteral("full.png"));
        QFile::link(QStringLiteral("/dev/full"), full);
        row("full device", {apply, lut, image, full}, 1, full + ": ");
        const QString pipe = m_folder.path(QStringLiteral("pipe.png"));
        QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
        row("pipe", {apply, lut, image, pipe}, 1, pipe + ": is a pipe");
        row("not an image type", {apply, lut, image, gone + ".txt"}, 2, gone + ".txt");
        row("unknown order",
            {apply, QStringLiteral("--in-order"), QStringLiteral("grb"), lut, image, out}, 2,
            QStringLiteral("grb"));
        row("operand missing", {apply, lut, image}, 2, QString());
        row("broken table to draw", {draw, broken, out}, 1, broken + ":");
        row("existing picture", {draw, lut, image}, 1, image + ": ");
        row("unknown format", {draw, QStringLiteral("--from"), QStringLiteral("jpg"), lut, out}, 2,
            QStringLiteral("jpg"));
        row("not a picture type", {draw, lut, gone + ".txt"}, 2, gone + ".txt");
    }
    void errors() {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        const samples::Outcome outcome = samples::run(arguments);
        QTEST(outcome.status, "status");
        const QStringList lines = outcome.errors.split(QLatin1Char('\n'));
        const bool told = std::any_of(lines.cbegin(), lines.cend(), [&](const QString& line) {
            return line.startsWith(QLatin1String("tintwell-cli: ")) && line.contains(message);
        });
        QVERIFY2(told, qPrintable(outcome.errors));
        QVERIFY(!QFile::exists(m_folder.path(QStringLiteral("never.png"))));
    }

    void pictureUnwrapsTheLattice() {
        // Eight colours that appear nowhere else in a picture.
        const QRgb corners[] = {qRgb(10, 20, 130), qRgb(210, 20, 30),  qRgb(10, 220, 30),
                                qRgb(210, 220, 3), qRgb(10, 120, 230), qRgb(210, 20, 230),
                                qRgb(10, 220, 23), qRgb(110, 220, 230)};
        QByteArray text = "LUT_3D_SIZE 2\n";
        for (const QRgb corner : corners) {
            for (const int value : {qRed(corner), qGreen(corner), qBlue(corner)}) {
                text += QByteArray::number(value / 255.0) + ' ';
            }
            text += '\n';
        }
        const QImage drawn = picture(lutFile("corners.cube", text));
        const QImage lattice = drawn.copy(0, 0, drawn.width() * 5 / 8, drawn.height());
        QRect boxes[8];
        for (int n = 0; n < 8; ++n) {
            boxes[n] = boxOf(lattice, corners[n]);
            QVERIFY(boxes[n].width() > 40);
            QCOMPARE(boxes[n].size(), boxes[0].size());
        }
        for (int n = 0; n < 8; n += 2) {
            QCOMPARE(boxes[n + 1].topLeft(), boxes[n].topRight() + QPoint(1, 0));
        }
        for (const int n : {0, 1, 4, 5}) {
            QCOMPARE(boxes[n + 2].topLeft(), boxes[n].bottomLeft() + QPoint(0, 1));
        }
        QVERIFY(boxes[4].left() > boxes[1].right());
        QCOMPARE(boxes[4].top(), boxes[0].top());
    }

    void pictureIsLabelled() {
        const QImage drawn = picture(QStringLiteral(TINTWELL_TEST_DATA "/sample.cube"));
        QVERIFY(drawn.width() >= 800);
        QVERIFY(inked(drawn, {0, 0, drawn.width() / 2, 90}) > 500); // title and format
        // The same drawing under another name has another title; nothing else changes.
        QFile::copy(QStringLiteral(TINTWELL_TEST_DATA "/sample.cube"),
                    m_folder.path(QStringLiteral("other name.cube")));
        const QImage other = picture(m_folder.path(QStringLiteral("other name.cube")));
        QVERIFY(other != drawn);
        const QRect body(0, 90, drawn.width(), drawn.height() - 90);
        QCOMPARE(other.copy(body), drawn.copy(body));
    }

    void pictureOfCurves() {
        // Only blue falls: the output ramp runs from blue to yellow, and there are no slices next
        // to it.
        const QString lut = curvesFile("0 0 1\n1 1 0\n");
        const QImage drawn = picture(lut);
        const QRect blue = boxOf(drawn, qRgb(0, 0, 255));
        const QRect yellow = boxOf(drawn, qRgb(255, 255, 0));
        QVERIFY(blue.height() > 8);
        QVERIFY(yellow.left() - blue.right() > drawn.width() / 2);
        QCOMPARE(yellow.top(), blue.top());
    }

    void pictureOfAnyTable_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("one point") << QByteArray("LUT_3D_SIZE 1\n0.5 0.5 0.5\n");
        QTest::newRow("not a number") << QByteArray("LUT_3D_SIZE 1\nnan inf -inf\n");
        QTest::newRow("beyond 1") << QByteArray(
            "LUT_3D_SIZE 1\nDOMAIN_MAX 1e30 1e30 1e30\n9 9 9\n");
        QTest::newRow("domain upside down")
            << QByteArray("LUT_3D_SIZE 1\nDOMAIN_MIN 9 9 9\n0.5 0.5 0.5\n");
        QTest::newRow("huge domain")
            << QByteArray("LUT_3D_SIZE 1\nDOMAIN_MIN -3e38 0 1e-30\n0.5 0.5 0.5\n");
    }
    void pictureOfAnyTable() {
        QFETCH(QByteArray, text);
        QVERIFY(!picture(lutFile("any.cube", text)).isNull());
    }
};

QTEST_GUILESS_MAIN(TestCliImages)
#include "test_cli_images.moc"
