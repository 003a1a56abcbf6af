#include "lut/image_file.h"
#include "one_format.h"

#include <QImage>

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

    LUTFILE_ST saved(const QImage& image, int code) const {
        image.save(m_folder.path("in.png"));
        return samples::request(m_folder.path("in.png"), code);
    }

private Q_SLOTS:
    void pixelsFillTheirPlaces() {
        const struct {
            int code;
            QImage image;
            int tilesPerRow;
        } rows[] = {
            {texture, picture(512, 512), 8},
            {texture, picture(64, 64, QImage::Format_ARGB32), 4},
            {texture, picture(64, 64, QImage::Format_Indexed8), 4},
            {unwrapped, picture(1, 1), 1},
            {unwrapped, picture(9, 3), 3}, // rows are padded
            {unwrapped, picture(289, 17), 17},
        };
        for (const auto& [code, image, tilesPerRow] : rows) {
            const QString path = saved(image, code).path;
            const int n = image.width() / tilesPerRow;
            for (const int orders : {0, 1, 2, 3}) {
                const bool rgb = (orders & 1) != 0;
                Read_LUTFile lut(nullptr);
                QVERIFY(lut.ReadFile(samples::request(path, code, rgb, orders & 2), false));
                QCOMPARE(lut.size3D, n);
                QCOMPARE(lut.domainMax3D[0], 1.0F);
                for (int place = 0; place < n * n * n; ++place) {
                    const int x = place % image.width();
                    const int y = place / image.width();
                    const QRgb pixel = image.pixel(x, y);
                    const float red = float(qRed(pixel)) / 255;
                    const float blue = float(qBlue(pixel)) / 255;
                    QCOMPARE(samples::sampleAt(lut, y / n * tilesPerRow + x / n, y % n, x % n),
                             QVector<float>(
                                 {rgb ? red : blue, float(qGreen(pixel)) / 255, rgb ? blue : red}));
                }
            }
        }
    }

    void sizes() {
        const struct {
            int code, width, height, size;
            bool reads = true;
        } rows[] = {
            {texture, 64, 64, 16},
            {texture, 256, 256, 0, false},
            {texture, 512, 256, 0, false},
            {unwrapped, 4096, 64, 64},
            {unwrapped, 260 * 260, 260, 260, false}, // a probe knows no largest table
        };
        for (const auto& row : rows) {
            const LUTFILE_ST st =
                saved(QImage(row.width, row.height, QImage::Format_Mono), row.code);
            Read_LUTFile lut(nullptr);
            QCOMPARE(lut.ReadFile(st, true), row.size > 0);
            QVERIFY(lut.size3D == row.size && lut.data3D == nullptr);
            QCOMPARE(lut.ReadFile(st, false), row.reads);
            QCOMPARE(lut.size3D, row.size);
        }
        Read_LUTFile largest(nullptr);
        const QImage blank(4096, 4096, QImage::Format_Mono);
        QVERIFY(largest.ReadFile(saved(blank, texture), true));
        QCOMPARE(largest.size3D, 256);
        QString path = m_folder.path("in.png");
        for (const int fewer : {0, 1}) {
            const auto stored = tintwell::Orientation::Stored;
            QCOMPARE(tintwell::readImage(path, (1 << 24) - fewer, stored).pixels.isNull(),
                     fewer > 0);
        }
    }

    /// An image without pixels has the shape of a strip, but not that of a texture.
    void filesThatAreNotImages() {
        const QByteArray blankXpm = "/* XPM */\nstatic char *a[] = {\"64 64 1 1\",\"a c black\"," +
                                    ("\"" + QByteArray(64, 'a') + "\",").repeated(64) + "};";
        saved(picture(64, 64), texture);
        const QByteArray png = m_folder.content("in.png");
        for (const QString& path :
             {m_folder.file("cut.png", png.left(png.size() / 2)),
              m_folder.file("svg.png",
                            "<svg xmlns='http://www.w3.org/2000/svg' width='64' height='64'/>"),
              m_folder.file("xpm.png", blankXpm)}) {
            for (const bool probe : {true, false}) {
                Read_LUTFile lut(nullptr);
                QVERIFY(!lut.ReadFile(samples::request(path, texture), probe));
                QVERIFY(lut.ReadFile(samples::request(path, unwrapped), probe));
                QCOMPARE(lut.size3D, 0);
                QVERIFY(lut.data3D == nullptr);
            }
        }
    }

    /// What decoders take, with pixels that are wrong or missing, or refuse without a reason.
    void brokenImages() {
        const auto encoded = [&](const char* name, QImage::Format format) {
            picture(64, 64, format).save(m_folder.path(name));
            return m_folder.content(name);
        };
        const QByteArray png = encoded("in.png", QImage::Format_RGBX64);
        QByteArray bmp = encoded("in.bmp", QImage::Format_RGB888);
        QByteArray jpg = encoded("in.jpg", QImage::Format_RGB888);
        jpg.insert(2, QByteArray::fromHex("ffe10006ffd8ffd9")); // an empty image in the metadata
        const QByteArray trns = QByteArray::fromHex("0000000674524e530000000000006ea60791");
        const QByteArray tiff = QByteArray::fromHex( // of 32 bits and kind 3, as long numbers
            "4d4d002a000000080002010200040000000100000020015300040000000100000003");
        const QString cut = "the file ends before its last pixel";
        const std::pair<QByteArray, QString> rows[] = {
            {QByteArray(png).insert(33, trns), "holds 16-bit colours with a transparent one (tRNS),"
                                               " which cannot be read"},
            {png.left(20), "its header cannot be read"},
            {bmp, ""},
            {bmp.replace(22, 4, QByteArray::fromHex("c0ffffff")), ""}, // the top row first
            {bmp.chopped(1), cut},
            {jpg + "\xFF more", ""},
            {jpg.chopped(2), cut},
            {jpg.chopped(100), cut},
            {tiff,
             "holds 32-bit floating-point samples, expected unsigned integers of 8 or 16 bits"},
        };
        for (const auto& [content, error] : rows) {
            const QString path = m_folder.file("broken", content);
            QCOMPARE(tintwell::readImage(path, 1 << 24, tintwell::Orientation::Stored).error,
                     error);
        }
    }
};

QTEST_GUILESS_MAIN(TestImages)
#include "test_images.moc"
