#include "samples.h"

#include <QImage>

#include <sys/stat.h>

class TestUnwrappedCube : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    QString saved(const QImage& image) const {
        const QString path = m_folder.path(QStringLiteral("in.png"));
        image.save(path);
        return path;
    }

private Q_SLOTS:
    void reads_data() {
        QTest::addColumn<int>("size");
        QTest::addColumn<bool>("tableOrder");
        QTest::newRow("one point") << 1 << false;
        QTest::newRow("rows are padded") << 3 << false;
        QTest::newRow("seventeen points") << 17 << true;
        QTest::newRow("thirty-two points") << 32 << false;
    }
    void reads() {
        QFETCH(int, size);
        QFETCH(bool, tableOrder);
        QImage image(size * size, size, QImage::Format_RGB32);
        for (int x = 0; x < image.width(); ++x) {
            for (int y = 0; y < size; ++y) {
                image.setPixel(x, y, qRgb(x % size, y, x / size));
            }
        }
        LUTFILE_ST st = samples::request(saved(image), 2, true, tableOrder);
        st.defaultOrder = !tableOrder;
        Read_LUTFile lut(nullptr);
        QVERIFY(lut.ReadFile(st, false));
        QCOMPARE(lut.size3D, size);
        for (int n = 0; n < size * size * size; ++n) {
            const int i = n / size / size;
            const int j = n / size % size;
            const int k = n % size;
            const float* const at = tableOrder ? lut.data3D[i][j][k] : lut.data3D[k][j][i];
            QCOMPARE(samples::cell(at),
                     QVector<float>({float(k) / 255, float(j) / 255, float(i) / 255}));
        }
        QCOMPARE(samples::cell(lut.domainMax3D), QVector<float>({1, 1, 1}));
    }

    /// What a blank image gives, when it is probed and when it is read.
    void sizes_data() {
        QTest::addColumn<QSize>("image");
        QTest::addColumn<bool>("probes");
        QTest::addColumn<bool>("reads");
        QTest::addColumn<int>("size");
        QTest::newRow("64") << QSize(4096, 64) << true << true << 64;
        QTest::newRow("as the label has it") << QSize(1024, 16) << false << false << 0;
        QTest::newRow("square") << QSize(33, 33) << false << false << 0;
        QTest::newRow("beyond a full read") << QSize(260 * 260, 260) << true << false << 260;
        QTest::newRow("larger than any table") << QSize(5000, 4000) << false << false << 0;
    }
    void sizes() {
        QFETCH(QSize, image);
        QImage blank(image, QImage::Format_Mono);
        blank.fill(0);
        const LUTFILE_ST st = samples::request(saved(blank), 2);
        Read_LUTFile probed(nullptr);
        QTEST(probed.ReadFile(st, true), "probes");
        QTEST(probed.size3D, "size");
        QVERIFY(probed.data3D == nullptr);
        Read_LUTFile read(nullptr);
        QTEST(read.ReadFile(st, false), "reads");
        QTEST(read.size3D, "size");
    }

    /// An image of no pixels has the right shape.
    void whatIsNoImageIsEmpty() {
        saved(QImage(64, 8, QImage::Format_RGB32));
        const QByteArray png = m_folder.content(QStringLiteral("in.png"));
        const QString pipe = m_folder.path(QStringLiteral("pipe.png"));
        QCOMPARE(mkfifo(qPrintable(pipe), 0600), 0);
        for (const QString& path :
             {m_folder.file(QStringLiteral("cut.png"), png.left(png.size() / 2)),
              m_folder.file(QStringLiteral("text.png"), "text"),
              m_folder.path(QStringLiteral("none")), m_folder.path(QString()), pipe}) {
            for (const bool probe : {true, false}) {
                Read_LUTFile lut(nullptr);
                QVERIFY(lut.ReadFile(samples::request(path, 2), probe));
                QCOMPARE(lut.size3D, 0);
                QVERIFY(lut.data3D == nullptr);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestUnwrappedCube)
#include "test_unwrapped_cube.moc"
