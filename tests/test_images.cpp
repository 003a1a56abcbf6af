#include "one_format.h"

#include <QImage>

#include <sys/stat.h>

class TestImages : public QObject {
    Q_OBJECT

    static constexpr int texture = 1;
    static constexpr int unwrapped = 2;

    samples::Folder m_folder;

    /// A picture whose pixels differ from each other along rows, columns and channels.
    static QImage picture(int width, int height, QImage::Format format = QImage::Format_RGB888) {
        QImage image(width, height, QImage::Format_ARGB32);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                image.setPixel(x, y, qRgba(x % 256, y % 256, (x + y) / 8 % 256, x % 255 + 1));
            }
        }
        return image.convertToFormat(format);
    }

    static QImage blank(int width, int height) {
        QImage image(width, height, QImage::Format_Mono);
        image.fill(0);
        return image;
    }

    QString saved(const QImage& image, const QString& name = QStringLiteral("in.png")) const {
        image.save(m_folder.path(name));
        return m_folder.path(name);
    }

private Q_SLOTS:
    void pixelsFillTheirPlaces_data() {
        QTest::addColumn<int>("code");
        QTest::addColumn<QImage>("image");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("tiles"); // per row
        const QString png = QStringLiteral("in.png");
        QTest::newRow("texture of 64") << texture << picture(64, 64) << png << 4;
        QTest::newRow("texture of 512") << texture << picture(512, 512) << png << 8;
        QTest::newRow("bmp") << texture << picture(64, 64) << QStringLiteral("in.bmp") << 4;
        QTest::newRow("alpha") << texture << picture(64, 64, QImage::Format_ARGB32) << png << 4;
        QTest::newRow("palette") << texture << picture(64, 64, QImage::Format_Indexed8) << png << 4;
        QTest::newRow("grey") << texture << picture(64, 64, QImage::Format_Grayscale8) << png << 4;
        QTest::newRow("one point") << unwrapped << picture(1, 1) << png << 1;
        QTest::newRow("rows are padded") << unwrapped << picture(9, 3) << png << 3;
        QTest::newRow("seventeen points") << unwrapped << picture(289, 17) << png << 17;
        QTest::newRow("thirty-two points") << unwrapped << picture(1024, 32) << png << 32;
    }
    void pixelsFillTheirPlaces() {
        QFETCH(int, code);
        QFETCH(QImage, image);
        QFETCH(QString, name);
        QFETCH(int, tiles);
        const QString path = saved(image, name);
        const int n = code == texture ? tiles * tiles : tiles;
        for (const bool tableOrder : {false, true}) {
            LUTFILE_ST st = samples::request(path, code, true, tableOrder);
            st.defaultOrder = !tableOrder; // the opposite of the formats' own
            Read_LUTFile lut(nullptr);
            QVERIFY(lut.ReadFile(st, false));
            QCOMPARE(lut.size3D, n);
            QCOMPARE(samples::cell(lut.domainMax3D), QVector<float>({1, 1, 1}));
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    const QRgb rgb = image.pixel(x, y);
                    QCOMPARE(samples::sampleAt(lut, y / n * tiles + x / n, y % n, x % n),
                             QVector<float>({float(qRed(rgb)) / 255, float(qGreen(rgb)) / 255,
                                             float(qBlue(rgb)) / 255}));
                }
            }
        }
    }

    void reversedChannels() {
        Read_LUTFile lut(nullptr);
        QVERIFY(
            lut.ReadFile(samples::request(saved(picture(512, 512)), texture, false, true), false));
        QCOMPARE(samples::cell(lut.data3D[1][3][6]), // the pixel at (70, 3)
                 QVector<float>({9.0F / 255, 3.0F / 255, 70.0F / 255}));
    }

    /// The result for a blank image, probed and read.
    void sizes_data() {
        QTest::addColumn<int>("code");
        QTest::addColumn<QImage>("image");
        QTest::addColumn<bool>("probes");
        QTest::addColumn<bool>("reads");
        QTest::addColumn<int>("size");
        const auto row = [](const char* name, int code, const QImage& image, bool probes,
                            bool reads, int size) {
            QTest::newRow(name) << code << image << probes << reads << size;
        };
        row("texture of 64", texture, blank(64, 64), true, true, 16);
        row("other side", texture, blank(256, 256), false, false, 0);
        row("not square", texture, blank(512, 256), false, false, 0);
        row("texture larger than any table", texture, blank(4096, 4097), false, false, 0);
        row("strip", unwrapped, blank(4096, 64), true, true, 64);
        row("as the label has it", unwrapped, blank(1024, 16), false, false, 0);
        row("square", unwrapped, blank(33, 33), false, false, 0);
        row("beyond a full read", unwrapped, blank(260 * 260, 260), true, false, 260);
        row("strip larger than any table", unwrapped, blank(5000, 4000), false, false, 0);
    }
    void sizes() {
        QFETCH(int, code);
        QFETCH(QImage, image);
        const LUTFILE_ST st = samples::request(saved(image), code);
        Read_LUTFile probed(nullptr);
        QTEST(probed.ReadFile(st, true), "probes");
        QTEST(probed.size3D, "size");
        QVERIFY(probed.data3D == nullptr);
        Read_LUTFile read(nullptr);
        QTEST(read.ReadFile(st, false), "reads");
        QTEST(read.size3D, "size");
    }

    void largestTextureIsProbed() {
        Read_LUTFile lut(nullptr);
        QVERIFY(lut.ReadFile(samples::request(saved(blank(4096, 4096)), texture), true));
        QCOMPARE(lut.size3D, 256);
    }

    /// An image without pixels has the shape of a strip, but not that of a texture.
    void filesThatAreNotImages() {
        const QByteArray blankXpm = "/* XPM */\nstatic char *a[] = {\"64 64 1 1\",\"a c black\"," +
                                    ("\"" + QByteArray(64, 'a') + "\",").repeated(64) + "};";
        saved(picture(64, 64));
        const QByteArray png = m_folder.content(QStringLiteral("in.png"));
        const QString pipe = m_folder.path(QStringLiteral("pipe.png"));
        QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
        for (const QString& path :
             {m_folder.file(QStringLiteral("empty.png"), ""),
              m_folder.file(QStringLiteral("cut.png"), png.left(png.size() / 2)),
              m_folder.file(QStringLiteral("text.png"), "text"),
              m_folder.file(QStringLiteral("svg.png"),
                            "<svg xmlns='http://www.w3.org/2000/svg' width='64' height='64'/>"),
              m_folder.file(QStringLiteral("xpm.png"), blankXpm), pipe}) {
            for (const bool probe : {true, false}) {
                Read_LUTFile lut(nullptr);
                QVERIFY(!lut.ReadFile(samples::request(path, texture), probe));
                QVERIFY(lut.ReadFile(samples::request(path, unwrapped), probe));
                QCOMPARE(lut.size3D, 0);
                QVERIFY(lut.data3D == nullptr);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestImages)
#include "test_images.moc"
