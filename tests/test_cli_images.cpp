#include "program.h"

#include "calc/look_up.h"
#include "calc/look_up_image.h"
#include "lut/image_file.h"
#include "picture/table_picture.h"

#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>

#include <algorithm>
#include <array>
#include <cmath>

// The commands that make images with a table, apply and picture, and what they draw.

using samples::Outcome;
using samples::Program;
using tintwell::drawTable;

namespace {

using Words = std::array<int, 4>; ///< a pixel in 16 bits: R, G, B and alpha

Words words(const QImage& image, int x, int y) {
    const QRgba64 colour = image.pixelColor(x, y).rgba64();
    return {colour.red(), colour.green(), colour.blue(), colour.alpha()};
}

int toCode(double value) {
    return int(std::fmin(std::fmax(0, value), 1) * 255 + 0.5);
}

} // namespace

class TestCliImages : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    Outcome run(const QString& line) const { return Program(m_folder).run(line); }

    /// Pixels from all over the colour cube, no two neighbours alike.
    static QImage colours(QImage::Format format) {
        QImage image(61, 47, QImage::Format_RGBA64);
        for (int n = 0; n < 61 * 47; ++n) {
            image.setPixelColor(n % 61, n / 61,
                                QRgba64::fromRgba64(quint16(n * 22'573), quint16(n * 911),
                                                    quint16(65'535 - n * 7), quint16(n * 31 | 1)));
        }
        return image.convertToFormat(format);
    }

private Q_SLOTS:
    void initTestCase() {
        QByteArray bent = "LUT_3D_SIZE 5\nDOMAIN_MIN -1 0 0.5\nDOMAIN_MAX 1 1.5 1\n";
        for (int n = 0; n < 3 * 125; ++n) {
            bent += n == 300 ? "nan "
                             : QByteArray::number(n * 37 % 101 / 50.0 - 0.5) + " \n"[n % 3 / 2];
        }
        m_folder.file("0.cube", bent);
        // Red and green agree in the lower half, green and blue in the upper.
        m_folder.file("15.nvx1d", "Length 3\n0 0 0.3\n0.5 0.5 0.5\n0.7 1 1\n");
        QCOMPARE(run("identity 13.spi3d --size 2").status, 0);
    }

    void appliesTables() {
        using enum QImage::Format; // an image's, and what tables with a hue make of it
        constexpr QImage::Format rows[][2] = {
            {Format_RGB32, Format_RGB32},      {Format_ARGB32, Format_ARGB32},
            {Format_RGBX64, Format_RGBX64},    {Format_RGBA64, Format_RGBA64},
            {Format_Grayscale8, Format_RGB32}, {Format_Grayscale16, Format_RGBX64},
            {Format_Indexed8, Format_ARGB32}};
        for (const QString table : {"0.cube", "15.nvx1d", "13.spi3d"}) {
            const int code = table.section('.', 0, 0).toInt();
            Read_LUTFile lut(nullptr);
            samples::read(m_folder.path(table), code, lut);
            for (const auto& [format, tinted] : rows) {
                const QImage image = colours(format);
                QVERIFY(image.save(m_folder.path("in.png")));
                const Outcome outcome = run("apply --force " + table + " in.png in.png");
                QCOMPARE(outcome.status, 0);
                QCOMPARE(outcome.errors.contains("the domain of the"), code == 0);
                const QImage result(m_folder.path("in.png"));
                QCOMPARE(result.format(), code == 13 && image.isGrayscale() ? format : tinted);
                const int step = tintwell::isDeep(result.format()) ? 1 : 257;
                const auto full = float(65'535 / step);
                for (int n = 0; n < 61 * 47; ++n) {
                    Words expected = words(image, n % 61, n / 61);
                    const float in[] = {float(expected[0] / step) / full,
                                        float(expected[1] / step) / full,
                                        float(expected[2] / step) / full};
                    float out[3];
                    tintwell::lookUp(lut, in, out);
                    for (std::size_t c = 0; c < 3; ++c) {
                        const float inside = std::fmin(std::fmax(0.0F, out[c]), 1.0F);
                        expected[c] = int(inside * full + 0.5F) * step;
                    }
                    QCOMPARE(words(result, n % 61, n / 61), expected);
                }
            }
        }
    }

    void pipesImages() {
        QVERIFY(colours(QImage::Format_RGB32).save(m_folder.path("in.bmp")));
        QCOMPARE(run("apply 15.nvx1d in.bmp o.bmp").status, 0);
        QCOMPARE(run("picture 15.nvx1d o.png").status, 0);
        for (const auto& [in, line] : {std::pair{"in.bmp", "apply 15.nvx1d - -"},
                                       {"15.nvx1d", "apply --from nvx1d /dev/stdin in.bmp -"},
                                       {"15.nvx1d", "picture --from nvx1d - /dev/stdout"}}) {
            const char* const type = *line == 'p' ? "png" : "bmp";
            Program program(m_folder);
            program.setStandardInputFile(m_folder.path(in));
            program.setStandardOutputFile(m_folder.path("piped"));
            QCOMPARE(program.run(line).status, 0);
            QCOMPARE(QImageReader::imageFormat(m_folder.path("piped")), type);
            const QImage image(m_folder.path("piped"));
            QCOMPARE(image.size(), QImage(m_folder.path(QString("o.") + type)).size());
            QVERIFY(*line == 'p' || image == QImage(m_folder.path("o.bmp")));
        }
    }

    /// Images that the toolkit would split among threads, as many at a time as threads.
    void appliesToManyImages() {
        QString all;
        for (int n = 0; n < 12; ++n) {
            const auto format = n % 2 == 0 ? QImage::Format_Grayscale16 : QImage::Format_RGB32;
            const QString name = QString(" %1.png").arg(n);
            QVERIFY(colours(format).scaled(700, 600 + n).save(m_folder.path(name.trimmed())));
            QCOMPARE(run("apply --to bmp 0.cube --quiet --force" + name + " one" + name.trimmed())
                         .status,
                     0);
            all += name;
        }
        for (const QString to : {"", " --to bmp"}) {
            QCOMPARE(run("apply 0.cube --jobs 5 --output-directory all" + to + all).status, 0);
        }
        for (int n = 0; n < 12; ++n) {
            QCOMPARE(m_folder.content(QString("all/%1.bmp").arg(n)),
                     m_folder.content(QString("one%1.png").arg(n)));
            const QImage image(m_folder.path(QString("all/%1.png").arg(n)), "png");
            QCOMPARE(tintwell::isDeep(image.format()), n % 2 == 0);
        }
    }

    /// By the two bits of a zlib stream that tell its level, roughly.
    void compresses() {
        QVERIFY(colours(QImage::Format_RGB32).save(m_folder.path("in.png")));
        const char levels[] = "0011112333";
        for (int level = 0; level < 10; ++level) {
            const QString line = "apply --force 13.spi3d in.png out.png --compression %1";
            QCOMPARE(run(line.arg(level)).status, 0);
            const QByteArray png = m_folder.content("out.png");
            QCOMPARE(quint8(png[png.indexOf("IDAT") + 5]) >> 6, levels[level] - '0');
            QCOMPARE(png.size() > 61 * 47 * 3, level == 0);
        }
    }

    void namesThePackageForTiff() {
        const bool missing = !QImageWriter::supportedImageFormats().contains("tiff");
        m_folder.file("a.png", QByteArray("II*\0", 4));
        for (const QString line :
             {"info a.png", "apply 13.spi3d a.png o.png", "picture 13.spi3d o.tif"}) {
            QCOMPARE(run(line).errors.contains("need the package qt5-image-formats"), missing);
        }
    }

    void drawsWhatIsRead() {
        for (const int code : {0, 15}) {
            const QString file = code == 0 ? "0.cube" : "15.nvx1d";
            Read_LUTFile lut(nullptr);
            samples::read(m_folder.path(file), code, lut);
            QCOMPARE(run("picture --force " + file + " drawn.png").status, 0);
            const QString facts = code == 0
                                      ? "cube, 3D, 5 points per axis, domain -1 0 0.5 to 1 1.5 1"
                                      : "nvx1d, 1D, 3 entries";
            QVERIFY(QImage(m_folder.path("drawn.png")) == drawTable(lut, file, facts));
        }
    }

    void drawsTexts() {
        Read_LUTFile lut(nullptr);
        QVERIFY(tintwell::makeIdentity(lut, tintwell::TableKind::ThreeD, 2));
        const QImage drawn = drawTable(lut, "title", "subtitle");
        for (const QRect& box :
             {QRect(40, 28, 100, 32), QRect(40, 60, 100, 20), QRect(422, 507, 40, 14),
              QRect(40, 104, 400, 20), QRect(840, 104, 300, 20), QRect(840, 124, 30, 16),
              QRect(1222, 617, 17, 20), QRect(840, 640, 30, 48), QRect(840, 688, 30, 48)}) {
            QImage blank(box.size(), QImage::Format_RGB32);
            blank.fill(drawn.pixel(0, 0));
            QVERIFY2(drawn.copy(box) != blank, QByteArray::number(box.top()));
        }
    }

    void drawsSlices() {
        // Points per axis; pixels of a slice; columns of slices; slices
        const int rows[][4] = {{1, 590, 1, 1}, {2, 374, 2, 2}, {17, 119, 6, 17}, {129, 129, 5, 20}};
        for (const auto& [size, side, columns, count] : rows) {
            Read_LUTFile lut(nullptr);
            QVERIFY(tintwell::makeIdentity(lut, tintwell::TableKind::ThreeD, size));
            const QImage drawn = drawTable(lut, {}, {});
            const int last = std::max(size - 1, 1);
            for (int n = 0; n < count; ++n) {
                const double blue = count > 1 ? n * (size - 1) / (count - 1) : 0;
                const QPoint corner(40 + n % columns * (side + 8), 132 + n / columns * (side + 22));
                for (int x = 0; x < side; ++x) {
                    const int y = x * 31 % side;
                    QCOMPARE(drawn.pixel(corner + QPoint(x, y)),
                             qRgb(toCode(double(x * size / side) / last),
                                  toCode(double(y * size / side) / last), toCode(blue / last)));
                }
            }
            QCOMPARE(drawn.pixel(875, 660), drawn.pixel(0, 0)); // to the left of the grey axis
            QCOMPARE(drawn.pixel(876, 660), qRgb(0, 0, 0));
            QCOMPARE(drawn.pixel(1239, 660), qRgb(255, 255, 255));
        }
    }

    void drawsDifferences() {
        Read_LUTFile lut(nullptr);
        QVERIFY(tintwell::makeZeros(lut, tintwell::TableKind::ThreeD, 129));
        lut.data3D[3][7][100][1] = INFINITY; // in slices that have no tile of their own
        lut.data3D[9][8][102][2] = 0.003F;
        const QImage slices = tintwell::drawDifferences(lut, {});
        QCOMPARE(slices.pixel(40 + 3, 585 + 7), qRgb(255, 255, 255));
        QCOMPARE(slices.pixel(40 + 9, 585 + 8), qRgb(0, 0, 153)); // 200 times as much
        QCOMPARE(slices.pixel(40 + 9, 585 + 9), qRgb(0, 0, 0));
        Read_LUTFile curves(nullptr);
        QVERIFY(tintwell::makeZeros(curves, tintwell::TableKind::OneD, 5000));
        curves.data1D[1234][0] = INFINITY;
        curves.data1D[4999][2] = 3;
        const QImage plot = tintwell::drawDifferences(curves, {});
        QCOMPARE(plot.pixel(76 + 1234 * 1164 / 5000, 700), qRgb(255, 255, 255));
        QCOMPARE(plot.pixel(1239, 700), qRgb(0, 0, 153)); // 0.2 times
        QCOMPARE(run("compare 0.cube 13.spi3d --picture apart.png").status, 0);
        QCOMPARE(QImage(m_folder.path("apart.png")).size(), slices.size());
    }

    void drawsCurves() {
        Read_LUTFile lut(nullptr);
        samples::fill1D(lut, 2, [](int n) {
            return n == 0 ? QVector<float>{0.25F, 0, 1.75F} : QVector<float>{0.75F, 2, -0.5F};
        });
        lut.domainMin1D[0] = lut.domainMin1D[1] = -1;
        lut.domainMax1D[0] = lut.domainMax1D[2] = 3;
        const QImage drawn = drawTable(lut, {}, {});
        const QRgb paper = drawn.pixel(77, 133);
        const QRect plot(76, 132, 1164, 482); // -1 to 3 across, -0.5 to 2 upwards
        for (int n = 30; n < plot.width(); n += 45) {
            const float input = 4 * float(n) / float(plot.width() - 1) - 1;
            float out[3];
            const int grey = toCode(double(input));
            QCOMPARE(drawn.pixel(76 + n, 660), qRgb(grey, grey, grey));
            tintwell::lookUp(lut, std::array{input, input, input}.data(), out);
            QCOMPARE(drawn.pixel(76 + n, 700),
                     qRgb(toCode(out[0]), toCode(out[1]), toCode(out[2])));
            for (int c = 0; c < 3; ++c) {
                const int y = plot.top() + int((1 - (double(out[c]) + 0.5) / 2.5) * plot.height());
                const QColor curve = drawn.pixelColor(76 + n, y);
                QVERIFY((c == 0 ? curve.red() : c == 1 ? curve.green() : curve.blue()) > 150);
            }
        }
        QVERIFY(drawn.pixel(76 + 291, 140) != paper && drawn.pixel(90, plot.top() + 96) != paper);
        QCOMPARE(drawn.pixel(600, 140), paper);
    }

    void drawsAnyDomain() {
        const float rows[][3] = {{0, 1, NAN},  {0, 1, INFINITY},      {0, 1e30F, 9},
                                 {9, 1, 0.5F}, {-3e38F, 3e38F, 0.5F}, {0, 1e-30F, 0.5F},
                                 {2, 2, 0.5F}};
        for (const auto& [min, max, value] : rows) {
            Read_LUTFile lut(nullptr);
            samples::fill3D(lut, 1, [sample = value](int, int, int) {
                return QVector<float>{sample, sample, -sample};
            });
            std::fill_n(lut.domainMin3D, 3, min);
            std::fill_n(lut.domainMax3D, 3, max);
            QCOMPARE(drawTable(lut, {}, {}).pixel(876, 660), qRgb(0, 0, 0)); // the ramp's begin
        }
    }
};

QTEST_MAIN(TestCliImages)
#include "test_cli_images.moc"
