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

    QString saved(const QImage& image, const QString& name = QStringLiteral("in.png")) const {
        image.save(m_folder.path(name));
        return m_folder.path(name);
    }

private Q_SLOTS:
    void pixelsFillTheirPlaces() {
        const struct {
            int code;
            QImage image;
            int tilesPerRow;
            const char* name = "in.png";
        } rows[] = {
            {texture, picture(64, 64), 4, "in.bmp"},
            {texture, picture(512, 512), 8},
            {texture, picture(64, 64, QImage::Format_ARGB32), 4},
            {texture, picture(64, 64, QImage::Format_Indexed8), 4},
            {unwrapped, picture(1, 1), 1},
            {unwrapped, picture(9, 3), 3}, // rows are padded
            {unwrapped, picture(289, 17), 17},
        };
        for (const auto& row : rows) {
            const QString path = saved(row.image, row.name);
            const int n = row.image.width() / row.tilesPerRow;
            for (const int orders : {0, 1, 2, 3}) {
                Read_LUTFile lut(nullptr);
                QVERIFY(
                    lut.ReadFile(samples::request(path, row.code, orders & 1, orders & 2), false));
                QCOMPARE(lut.size3D, n);
                QCOMPARE(samples::cell(lut.domainMax3D), QVector<float>({1, 1, 1}));
                for (int place = 0; place < row.image.width() * row.image.height(); ++place) {
                    const int x = place % row.image.width();
                    const int y = place / row.image.width();
                    const QRgb rgb = row.image.pixel(x, y);
                    QVector<float> expected = {float(qRed(rgb)) / 255, float(qGreen(rgb)) / 255,
                                               float(qBlue(rgb)) / 255};
                    if (!lut.dataOrder) {
                        std::reverse(expected.begin(), expected.end());
                    }
                    QCOMPARE(samples::sampleAt(lut, y / n * row.tilesPerRow + x / n, y % n, x % n),
                             expected);
                }
            }
        }
    }

    void sizes() {
        const struct {
            int code, width, height, size;
            bool probes = true;
            bool reads = true;
        } rows[] = {
            {texture, 64, 64, 16},
            {texture, 256, 256, 0, false, false},
            {texture, 512, 256, 0, false, false},
            {texture, 4096, 4097, 0, false, false},
            {unwrapped, 4096, 64, 64},
            {unwrapped, 1024, 16, 0, false, false},
            {unwrapped, 260 * 260, 260, 260, true, false}, // beyond the largest table
            {unwrapped, 5000, 4000, 0, false, false},
        };
        for (const auto& row : rows) {
            QImage blank(row.width, row.height, QImage::Format_Mono);
            blank.fill(0);
            const LUTFILE_ST st = samples::request(saved(blank), row.code);
            Read_LUTFile lut(nullptr);
            QCOMPARE(lut.ReadFile(st, true), row.probes);
            QCOMPARE(lut.size3D, row.size);
            QVERIFY(lut.data3D == nullptr);
            QCOMPARE(lut.ReadFile(st, false), row.reads);
            QCOMPARE(lut.size3D, row.size);
        }
    }

    void largestTextureIsProbed() {
        QImage blank(4096, 4096, QImage::Format_Mono);
        Read_LUTFile lut(nullptr);
        QVERIFY(lut.ReadFile(samples::request(saved(blank), texture), true));
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
             {m_folder.file(QStringLiteral("cut.png"), png.left(png.size() / 2)),
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
