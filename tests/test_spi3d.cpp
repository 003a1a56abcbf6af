#include "lut/lattice.h"
#include "one_format.h"

class TestSpi3D : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{13};

    /// A line for each point, red telling which.
    static QByteArrayList points(int size) {
        QByteArrayList lines;
        for (int n = 0; n < size * size * size; ++n) {
            lines += QByteArray::number(n / (size * size)) + ' ' +
                     QByteArray::number(n / size % size) + ' ' + QByteArray::number(n % size) +
                     "  " + QByteArray::number(n / 32.0) + " 0.5 0.25";
        }
        return lines;
    }

private Q_SLOTS:
    void placesSamples_data() {
        QTest::addColumn<int>("size");
        QTest::addColumn<bool>("shuffled");
        QTest::newRow("two points") << 2 << false;
        QTest::newRow("three points") << 3 << false;
        QTest::newRow("three points, shuffled") << 3 << true;
    }
    void placesSamples() {
        QFETCH(int, size);
        QFETCH(bool, shuffled);
        QByteArrayList lines = points(size);
        for (int n = 0; shuffled && n < lines.size(); ++n) {
            lines.swapItemsAt(n, n * 7 % lines.size());
        }
        const QByteArray sizes = QByteArray::number(size) + ' ';
        const QByteArray text = "SPILUT 1.0\n3 3\n" + sizes.repeated(3) + '\n' + lines.join('\n');
        for (const bool tableOrder : {true, false}) {
            Read_LUTFile lut(nullptr);
            QVERIFY(m_format.readInOrders(lut, text, tableOrder, tableOrder));
            const bool placed = tintwell::visitLattice(size, [&](int i, int j, int k) {
                const float red = float((i * size + j) * size + k) / 32;
                const float* const at = tableOrder ? lut.data3D[i][j][k] : lut.data3D[k][j][i];
                return samples::cell(at) == (tableOrder ? QVector<float>({red, 0.5F, 0.25F})
                                                        : QVector<float>({0.25F, 0.5F, red}));
            });
            QVERIFY(placed);
        }
    }

    /// What a text makes of the size and of cell (0, 1, 1) in the format's own orders.
    void reads_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("reads");
        QTest::addColumn<int>("size");
        QTest::addColumn<QVector<float>>("sample");
        const auto row = [](const char* name, const QByteArray& text, bool reads, int size,
                            const QVector<float>& sample = {}) {
            QTest::newRow(name) << text << reads << size << sample;
        };
        const QByteArray header = "SPILUT 1.0\n3 3\n2 2 2\n";
        const QVector<float> sample = {1, 0.5F, 0.25F};
        row("plain", header + "0 1 1 1 0.5 0.25\n", true, 2, sample);
        row("as other systems write it",
            "\xEF\xBB\xBF# c\r\n3 1\r\n\r\nSPILUT 1.0\r\n# 2 1\r\n3\t3\r\nx\r\n2\t2  2\r\n\r\n"
            "# 0 1 1 0 0 0\r\n\t0 1\t1   1 .5 .25",
            true, 2, sample);
        row("headers that match in part", "SPILUT\n3\n3 3 3\n2 2\n2 2 2 9\n0 1 1 1 .5 .25\n", true,
            2, sample);
        row("later line wins", header + "0 1 1 0 0 0\n0 1 1 1 .5 .25\n", true, 2, sample);
        row("clamped", header + "0 1 1 7 .5 -1\n", true, 2, {1, 0.5F, 0});
        row("partial line keeps the rest", header + "0 0 1 0 .5 .25\n0 1 1 1\n", true, 2, sample);
        row("partial first line", header + "1\n0 1 1 1\n", true, 2, {1, 0, 0});
        row("places outside are passed over, their values carry",
            header + "2 0 0 1 .5 .25\n0 -1 0 1 .5 .25\n0 0 2147483647 1 .5 .25\n0 1 1\n", true, 2,
            sample);
        row("samples cut off", header, true, 2, {0, 0, 0});
        row("channels differ", "SPILUT 1.0\n3 1\n2 2 2\n", false, 0);
        row("sizes differ", "SPILUT 1.0\n3 3\n32 32 16\n", false, 0);
        row("no signature", "spilut\n3 3\n2 2 2\n", false, 0);
        row("no size", "SPILUT 1.0\n3 3\n2 2\n", false, 0);
        row("size zero", "SPILUT 1.0\n3 3\n0 0 0\n", false, 0);
        row("size negative", "SPILUT 1.0\n3 3\n-2 -2 -2\n", false, -2);
        row("size too large", "SPILUT 1.0\n3 3\n257 257 257\n", false, 257);
        row("nothing", "", false, 0);
    }
    void reads() {
        QFETCH(QByteArray, text);
        QFETCH(QVector<float>, sample);
        Read_LUTFile lut(nullptr);
        QTEST(m_format.read(lut, text), "reads");
        QTEST(lut.size3D, "size");
        if (!sample.isEmpty()) {
            QCOMPARE(samples::cell(lut.data3D[0][1][1]), sample);
        }
    }

    void probeStopsBehindTheSize() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, "SPILUT 1.0\n3 3\n999 999 999\n", true));
        QCOMPARE(lut.size3D, 999);
        QVERIFY(lut.data3D == nullptr);
    }

    void writes() {
        Read_LUTFile lut(nullptr);
        QCOMPARE(m_format.written(lut), QByteArray("SPILUT 1.0\n3 3\n0 0 0\n"));
        samples::fill3D(lut, 2, [](int i, int j, int k) {
            return QVector<float>({float(i) / 2, float(j) / 4, float(k) - 0.0078125F});
        });
        const QByteArray header = "SPILUT 1.0\n3 3\n2 2 2\n";
        QCOMPARE(m_format.written(lut), header + "0 0 0 0.000000 0.000000 -0.007813\n"
                                                 "0 0 1 0.000000 0.000000 0.992188\n"
                                                 "0 1 0 0.000000 0.250000 -0.007813\n"
                                                 "0 1 1 0.000000 0.250000 0.992188\n"
                                                 "1 0 0 0.500000 0.000000 -0.007813\n"
                                                 "1 0 1 0.500000 0.000000 0.992188\n"
                                                 "1 1 0 0.500000 0.250000 -0.007813\n"
                                                 "1 1 1 0.500000 0.250000 0.992188\n");
        QCOMPARE(m_format.writtenInOrders(lut, false, false, 1023),
                 header + "0 0 0 -0.007813 0.000000 0.000000\n"
                          "0 0 1 -0.007813 0.000000 0.500000\n"
                          "0 1 0 -0.007813 0.250000 0.000000\n"
                          "0 1 1 -0.007813 0.250000 0.500000\n"
                          "1 0 0 0.992188 0.000000 0.000000\n"
                          "1 0 1 0.992188 0.000000 0.500000\n"
                          "1 1 0 0.992188 0.250000 0.000000\n"
                          "1 1 1 0.992188 0.250000 0.500000\n");
    }

    /// The scale that the format has no use for is set back on the writer itself.
    void scaleIsSetBack_data() {
        QTest::addColumn<int>("scale");
        QTest::addColumn<int>("kept");
        QTest::newRow("integer") << 2 << 1;
        QTest::newRow("none") << 0 << 0;
    }
    void scaleIsSetBack() {
        QFETCH(int, scale);
        const samples::Folder folder;
        LUTFILE_ST st = samples::request(folder.path(QStringLiteral("out")), 13);
        st.outputScale = scale;
        Read_LUTFile lut(nullptr);
        Write_LUTFile writer(nullptr);
        QVERIFY(writer.WriteFile(st, lut));
        QTEST(int(writer.outputScale), "kept");
    }
};

QTEST_GUILESS_MAIN(TestSpi3D)
#include "test_spi3d.moc"
