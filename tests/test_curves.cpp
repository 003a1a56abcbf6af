#include "calc/lutcalc.h"
#include "samples.h"

#include <cmath>
#include <limits>

namespace {

QVector<float> squares(int i) {
    const auto x = float(i);
    return {x * x, -x, 1 / (1 + x)};
}

} // namespace

class TestCurves : public QObject {
    Q_OBJECT

    LutCalc m_calc;

    QVector<float> through(Read_LUTFile& lut, float r, float g, float b) {
        const float in[] = {r, g, b};
        float out[3];
        m_calc.Lut1D_liner(in, out, lut);
        return samples::cell(out);
    }

private Q_SLOTS:
    void identity() {
        Read_LUTFile lut(nullptr);
        m_calc.Lut1D_OnebyOne(lut);
        lut.size1D = 5;
        QVERIFY(lut.allocate1D());
        m_calc.Lut1D_OnebyOne(lut);
        QCOMPARE(samples::cell(lut.data1D[3]), QVector<float>({0.75F, 0.75F, 0.75F}));
        QCOMPARE(through(lut, 0.125F, 0.8125F, 1), QVector<float>({0.125F, 0.8125F, 1}));
        QCOMPARE(through(lut, -1, 2, NAN), QVector<float>({0, 1, 0}));
        Read_LUTFile point(nullptr);
        samples::fill1D(point, 1, squares);
        m_calc.Lut1D_OnebyOne(point);
        QCOMPARE(point.data1D[0][0], 0.0F);
    }

    void channelsAndDomainsAreTheirOwn() {
        Read_LUTFile lut(nullptr);
        samples::fill1D(lut, 5, squares);
        const float min[] = {-1, 0, 0};
        const float max[] = {1, 4, 0}; // the last has no width
        std::copy_n(min, 3, lut.domainMin1D);
        std::copy_n(max, 3, lut.domainMax1D);
        QCOMPARE(through(lut, 0.25F, 1.5F, 0), QVector<float>({6.5F, -1.5F, 1}));
        QCOMPARE(through(lut, -1, 9, 1), QVector<float>({0, -4, 0.2F}));
    }

    /// First the reciprocal of the width, then times the last index, with rounding at each step.
    void orderOfOperations() {
        constexpr int size = 34;
        Read_LUTFile lut(nullptr);
        samples::fill1D(lut, size, squares);
        std::fill_n(lut.domainMin1D, 3, -0.1F);
        std::fill_n(lut.domainMax1D, 3, 1.1F);
        volatile float factor = 1.1F - -0.1F;
        factor = 1 / factor;
        factor = factor * (size - 1);
        for (int n = 0; n < 1000; ++n) {
            const float value = float(n) / 999;
            volatile float x = value - -0.1F;
            x = x * factor;
            const int lower = int(x);
            const float* const low = lut.data1D[lower];
            const float* const high = lut.data1D[std::min(lower + 1, size - 1)];
            volatile float y = (high[2] - low[2]);
            y = y * (x - float(lower));
            QVERIFY(through(lut, value, value, value)[2] == y + low[2]);
        }
    }

    void resampling_data() {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::newRow("longer") << 17 << 60;
        QTest::newRow("shorter") << 60 << 17;
        QTest::newRow("to one") << 5 << 1;
        QTest::newRow("from one") << 1 << 5;
    }
    void resampling() {
        QFETCH(int, from);
        QFETCH(int, to);
        Read_LUTFile src(nullptr);
        Read_LUTFile dst(nullptr);
        samples::fill1D(src, from, squares);
        samples::fill1D(dst, to, squares);
        m_calc.Lut1D_Out(src, dst);
        for (int i = 0; i < to; ++i) {
            const float t = to > 1 ? float(i) / float(to - 1) : 0;
            QCOMPARE(samples::cell(dst.data1D[i]), through(src, t, t, t));
        }
        QCOMPARE(samples::cell(dst.data1D[to - 1]),
                 samples::cell(src.data1D[to > 1 ? from - 1 : 0]));
        Read_LUTFile empty(nullptr);
        m_calc.Lut1D_Out(empty, dst);
        m_calc.Lut1D_Out(src, empty);
    }

    void expansionUsesTheRowBelow() {
        Read_LUTFile curve(nullptr);
        Read_LUTFile lut(nullptr);
        samples::fill1D(curve, 1024, [](int i) {
            return QVector<float>({float(i), float(i) + 0.25F, float(i) + 0.5F});
        });
        samples::empty3D(lut, 33);
        m_calc.Lut1D_to_Lut3D(curve.data1D, 1024, lut);
        QCOMPARE(samples::cell(lut.data3D[1][2][3]), QVector<float>({31, 63.25F, 95.5F}));
        QCOMPARE(samples::cell(lut.data3D[32][0][31]), QVector<float>({1023, 0.25F, 991.5F}));
        m_calc.Lut1D_to_Lut3D(curve.data1D, 0, lut); // no rows
        QCOMPARE(lut.data3D[1][2][3][0], 31.0F);
        m_calc.Lut1D_to_Lut3D(curve.data1D, 1, lut);
        QCOMPARE(samples::cell(lut.data3D[32][32][32]), QVector<float>({0, 0.25F, 0.5F}));
        Read_LUTFile point(nullptr);
        samples::empty3D(point, 1);
        m_calc.Lut1D_to_Lut3D(curve.data1D, 1024, point);
        QCOMPARE(samples::cell(point.data3D[0][0][0]), QVector<float>({0, 0.25F, 0.5F}));
    }

    void greyDiagonal() {
        Read_LUTFile lut(nullptr);
        samples::empty3D(lut, 9);
        m_calc.Lut3D_OnebyOne(lut);
        lut.data3D[4][4][4][1] = 0.625F;
        Read_LUTFile curve(nullptr);
        samples::fill1D(curve, 17, squares);
        m_calc.Lut3D_to_Lut1D(lut, curve);
        QCOMPARE(samples::cell(curve.data1D[8]), QVector<float>({0.5F, 0.625F, 0.5F}));
        QCOMPARE(samples::cell(curve.data1D[7]), QVector<float>({0.4375F, 0.5F, 0.4375F}));
        QCOMPARE(samples::cell(curve.data1D[16]), QVector<float>({1, 1, 1}));
        // There and back: the diagonal of a separable table gives the curves that it was made of.
        Read_LUTFile source(nullptr);
        samples::fill1D(source, 9, squares);
        m_calc.Lut1D_to_Lut3D(source.data1D, 9, lut);
        Read_LUTFile back(nullptr);
        samples::fill1D(back, 9, [](int) { return QVector<float>({0, 0, 0}); });
        m_calc.Lut3D_to_Lut1D(lut, back);
        for (int i = 0; i < 9; ++i) {
            QCOMPARE(samples::cell(back.data1D[i]), samples::cell(source.data1D[i]));
        }
        Read_LUTFile empty(nullptr);
        m_calc.Lut3D_to_Lut1D(empty, back);
        QCOMPARE(back.data1D[2][0], 4.0F);
    }

    void packing_data() {
        QTest::addColumn<float>("sample");
        QTest::addColumn<int>("bits");
        QTest::addColumn<int>("word");
        QTest::newRow("one") << 1.0F << 10 << 1023;
        QTest::newRow("half") << 0.5F << 10 << 511;
        QTest::newRow("16 bits") << 1.0F << 16 << 65535;
        QTest::newRow("just below zero") << -0.0005F << 10 << 0;
        QTest::newRow("a thousandth below zero") << -0.001F << 10 << 65535;
        QTest::newRow("minus one") << -1.0F << 10 << 64513;
        QTest::newRow("wraps") << 65.0F << 10 << 66495 - 65536;
        QTest::newRow("beyond 32 bits") << 3e9F << 1 << int(3'000'000'000 % 65536);
        QTest::newRow("beyond 64 bits") << 1e30F << 16 << 0;
        QTest::newRow("not a number") << std::numeric_limits<float>::quiet_NaN() << 8 << 0;
        QTest::newRow("deep") << 0.5F << 20 << (1048575 / 2) % 65536;
        QTest::newRow("absurdly deep") << 1.0F << 1000 << 0;
        QTest::newRow("no bits") << 1.0F << 0 << 0;
    }
    void packing() {
        QFETCH(float, sample);
        QFETCH(int, bits);
        Read_LUTFile lut(nullptr);
        samples::fill1D(lut, 1, [&](int) { return QVector<float>({0.25F, sample, sample}); });
        samples::empty3D(lut, 1);
        std::copy_n(lut.data1D[0], 3, lut.data3D[0][0][0]);
        unsigned short words[3] = {};
        m_calc.Lut1D_to_Uart(words, bits, lut);
        QTEST(int(words[2]), "word");
        m_calc.Lut3D_to_Uart(words, bits, lut);
        QTEST(int(words[1]), "word");
        lut.data1D[0][0] = sample;
        m_calc.Gamma_to_Uart(words, bits, lut);
        QTEST(int(words[0]), "word");
    }

    void wordsAndBack() {
        constexpr int size = 4;
        Read_LUTFile lut(nullptr);
        samples::fill3D(lut, size, [](int i, int j, int k) {
            return QVector<float>({float(i) / 3, float(j) / 3, float(k) / 3});
        });
        std::vector<unsigned short> words(3 * size * size * size + 1, 7777);
        m_calc.Lut3D_to_Uart(words.data(), 12, lut);
        QCOMPARE(int(words[((1 * size + 2) * size + 3) * 3 + 2]), 4095);
        QCOMPARE(int(words[((1 * size + 2) * size + 3) * 3 + 1]), 2730);
        QCOMPARE(int(words.back()), 7777);

        Read_LUTFile back(nullptr);
        samples::fill3D(back, size, [](int, int, int) { return QVector<float>({9, 9, 9}); });
        m_calc.Uart_to_Lut3D(words.data(), 12, back);
        for (int n = 0; n < size * size * size; ++n) {
            for (int c = 0; c < 3; ++c) {
                const float before = lut.data3D[n / 16][n / 4 % 4][n % 4][c];
                const float after = back.data3D[n / 16][n / 4 % 4][n % 4][c];
                QVERIFY(after <= before && before - after < 1 / 4095.0F);
            }
        }

        Read_LUTFile curve(nullptr);
        samples::fill1D(curve, 2, squares);
        const unsigned short given[] = {0, 1, 1023, 512, 65535, 2};
        m_calc.Uart_to_Lut1D(given, 10, curve);
        QCOMPARE(samples::cell(curve.data1D[1]),
                 QVector<float>({float(512 / 1023.0), float(65535 / 1023.0), float(2 / 1023.0)}));
        m_calc.Uart_to_Gamma(given + 1, 10, curve);
        QCOMPARE(samples::cell(curve.data1D[1]), QVector<float>({1, 1, 1}));
        Read_LUTFile empty(nullptr);
        m_calc.Lut3D_to_Uart(nullptr, 10, empty);
        m_calc.Uart_to_Lut1D(nullptr, 10, empty);
    }
};

QTEST_GUILESS_MAIN(TestCurves)
#include "test_curves.moc"
