#include "samples.h"

#include <QImage>

class TestTexture : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    /// A picture whose pixels differ from each other within rows, columns and channels.
    static QImage picture(int width, int height, QImage::Format format = QImage::Format_RGB888) {
        QImage image(width, height, QImage::Format_ARGB32);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                image.setPixel(x, y, qRgba(x % 256, y % 256, (x + y) / 8 % 256, x % 255 + 1));
            }
        }
        return image.convertToFormat(format);
    }

    QString saved(const QImage& image, const QString& name = QStringLiteral("in.png")) const {
        image.save(m_folder.path(name));
        return m_folder.path(name);
    }

    /// Every sample is the pixel of its place.
    static bool holds(const Read_LUTFile& lut, const QImage& image, int tiles) {
        const int n = tiles * tiles;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QRgb rgb = image.pixel(x, y);
                const float* const cell = lut.data3D[x % n][y % n][y / n * tiles + x / n];
                if (cell[0] != float(qRed(rgb)) / 255 || cell[1] != float(qGreen(rgb)) / 255 ||
                    cell[2] != float(qBlue(rgb)) / 255) {
                    return false;
                }
            }
        }
        return lut.size3D == n;
    }

private Q_SLOTS:
    void reads_data() {
        QTest::addColumn<QImage>("image");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("tiles");
        const QString png = QStringLiteral("in.png");
        QTest::newRow("64") << picture(64, 64) << png << 4;
        QTest::newRow("512") << picture(512, 512) << png << 8;
        QTest::newRow("bmp") << picture(64, 64) << QStringLiteral("in.bmp") << 4;
        QTest::newRow("alpha") << picture(64, 64, QImage::Format_ARGB32) << png << 4;
        QTest::newRow("palette") << picture(64, 64, QImage::Format_Indexed8) << png << 4;
        QTest::newRow("grey") << picture(64, 64, QImage::Format_Grayscale8) << png << 4;
    }
    void reads() {
        QFETCH(QImage, image);
        QFETCH(QString, name);
        QFETCH(int, tiles);
        Read_LUTFile lut(nullptr);
        QVERIFY(lut.ReadFile(samples::request(saved(image, name), 1), false));
        QVERIFY(holds(lut, image, tiles));
        QCOMPARE(samples::cell(lut.domainMax3D), QVector<float>({1, 1, 1}));
    }

    void givenOrders() {
        const QImage image = picture(512, 512);
        Read_LUTFile lut(nullptr);
        QVERIFY(lut.ReadFile(samples::request(saved(image), 1, false, true), false));
        // The pixel at (70, 3).
        QCOMPARE(samples::cell(lut.data3D[1][3][6]),
                 QVector<float>({9.0F / 255, 3.0F / 255, 70.0F / 255}));
    }

    void sizes_data() {
        QTest::addColumn<QSize>("side");
        QTest::addColumn<int>("size");
        QTest::newRow("largest") << QSize(4096, 4096) << 256;
        QTest::newRow("other side") << QSize(256, 256) << 0;
        QTest::newRow("not square") << QSize(512, 256) << 0;
        QTest::newRow("larger than any table") << QSize(4096, 4097) << 0;
    }
    void sizes() {
        QFETCH(QSize, side);
        QFETCH(int, size);
        QImage image(side, QImage::Format_Grayscale8);
        image.fill(0);
        Read_LUTFile lut(nullptr);
        QCOMPARE(lut.ReadFile(samples::request(saved(image), 1), true), size > 0);
        QCOMPARE(lut.size3D, size);
        QVERIFY(lut.data3D == nullptr);
    }

    void refusesWhatIsNoImage() {
        saved(picture(64, 64));
        const QByteArray png = m_folder.content(QStringLiteral("in.png"));
        Read_LUTFile lut(nullptr);
        for (const QByteArray& content : {QByteArray(), QByteArray("text"), png.left(100)}) {
            const QString path = m_folder.file(QStringLiteral("bad.png"), content);
            QVERIFY(!lut.ReadFile(samples::request(path, 1), true));
            QVERIFY(!lut.ReadFile(samples::request(path, 1), false));
        }
        QVERIFY(!lut.ReadFile(samples::request(m_folder.path(QString()), 1), false));
    }
};

QTEST_GUILESS_MAIN(TestTexture)
#include "test_texture.moc"
