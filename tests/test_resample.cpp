#include "calc/lutcalc.h"
#include "samples.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace {

/// The same look-up with each step rounded to single precision. A value is mapped by the reciprocal
/// of the domain's width, times the last index; from the point below, it moves along the axes in
/// descending order of their fractions. The order of equal fractions does not matter.
QVector<float> bySorting(const Read_LUTFile& lut, const float* in) {
    const int last = lut.size3D - 1;
    std::array<int, 3> at{};
    std::array<float, 3> fraction{};
    for (std::size_t a = 0; a < 3; ++a) {
        volatile float factor = lut.domainMax3D[a] - lut.domainMin3D[a];
        factor = 1 / factor;
        factor = factor * float(last);
        volatile float distance = in[a] - lut.domainMin3D[a];
        const float x = std::clamp(distance * factor, 0.0F, float(last));
        at[a] = int(x);
        fraction[a] = x - float(at[a]);
    }
    std::array<std::size_t, 3> axes = {0, 1, 2};
    std::sort(axes.begin(), axes.end(), [&](auto a, auto b) { return fraction[a] > fraction[b]; });
    QVector<float> out(3, 0);
    float before = 1;
    for (std::size_t step = 0; step <= 3; ++step) {
        const float after = step < 3 ? fraction[axes[step]] : 0;
        for (int c = 0; c < 3; ++c) {
            volatile float term = lut.data3D[at[0]][at[1]][at[2]][c] * (before - after);
            out[c] += term;
        }
        if (step < 3) {
            at[axes[step]] = std::min(at[axes[step]] + 1, last);
        }
        before = after;
    }
    return out;
}

} // namespace

class TestResample : public QObject {
    Q_OBJECT

    LutCalc m_calc;

    QVector<float> looked(Read_LUTFile& lut, float x, float y, float z) {
        const float in[] = {x, y, z};
        float out[] = {-9, -9, -9};
        m_calc.Lut3D_Tetrahedral(in, out, lut);
        return samples::cell(out);
    }

private Q_SLOTS:
    void agreesToTheBit_data() {
        QTest::addColumn<int>("size");
        QTest::newRow("two points") << 2;
        QTest::newRow("odd steps") << 34;
    }
    void agreesToTheBit() {
        QFETCH(int, size);
        std::mt19937 random(3);
        std::uniform_real_distribution<float> real(-0.7F, 2.3F);
        Read_LUTFile lut(nullptr);
        samples::fillRandom(lut, size, 1, -0.5F, 1.5F);
        const float minima[] = {-0.1F, 0.0F, 0.5F};
        const float maxima[] = {1.1F, 2.0F, 1.75F};
        std::copy_n(minima, 3, lut.domainMin3D);
        std::copy_n(maxima, 3, lut.domainMax3D);
        for (int n = 0; n < 20'000; ++n) {
            const float in[] = {real(random), real(random), real(random)};
            QCOMPARE(looked(lut, in[0], in[1], in[2]), bySorting(lut, in));
        }
        std::fill_n(lut.domainMin3D, 3, 0.0F); // where equal values have equal fractions
        std::fill_n(lut.domainMax3D, 3, 1.0F);
        const float values[] = {0.21F, 0.53F, 0.88F};
        for (int n = 0; n < 27; ++n) {
            const float in[] = {values[n / 9], values[n / 3 % 3], values[n % 3]};
            QCOMPARE(looked(lut, in[0], in[1], in[2]), bySorting(lut, in));
        }
    }

    void nodesAndEdges() {
        Read_LUTFile lut(nullptr);
        samples::fillRandom(lut, 5, 4, -0.5F, 1.5F);
        QCOMPARE(looked(lut, 0.25F, 0.5F, 0.75F), samples::cell(lut.data3D[1][2][3]));
        QCOMPARE(looked(lut, 1, 1, 1), samples::cell(lut.data3D[4][4][4]));
        QCOMPARE(looked(lut, -3, 0.5F, 7), samples::cell(lut.data3D[0][2][4]));
        QCOMPARE(looked(lut, -INFINITY, INFINITY, 0), samples::cell(lut.data3D[0][4][0]));
        QCOMPARE(looked(lut, NAN, 1, 0.5F), samples::cell(lut.data3D[0][4][2]));
        lut.domainMax3D[1] = lut.domainMin3D[1]; // no width: below, at and above it
        QCOMPARE(looked(lut, 0, -1, 0), samples::cell(lut.data3D[0][0][0]));
        QCOMPARE(looked(lut, 0, 0, 0), samples::cell(lut.data3D[0][0][0]));
        QCOMPARE(looked(lut, 0, 1, 0), samples::cell(lut.data3D[0][4][0]));
    }

    void wholeLatticeIsTheLookUpPointByPoint_data() {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        for (const auto& [from, to] :
             {std::pair{5, 17}, {17, 5}, {6, 6}, {33, 17}, {1, 4}, {2, 9}}) {
            QTest::addRow("%d to %d", from, to) << from << to;
        }
    }
    void wholeLatticeIsTheLookUpPointByPoint() {
        QFETCH(int, from);
        QFETCH(int, to);
        Read_LUTFile src(nullptr);
        Read_LUTFile dst(nullptr);
        samples::fillRandom(src, from, 5, -0.5F, 1.5F);
        src.domainMax3D[0] = 1.3F; // the new lattice covers 0..1 all the same
        src.domainMin3D[2] = -0.1F;
        samples::empty3D(dst, to);
        dst.dataOrder = dst.tableOrder = false; // neither is used
        m_calc.Lut3D_Out(src, dst);
        const auto last = float(to - 1);
        for (int i = 0; i < to; ++i) {
            for (int j = 0; j < to; ++j) {
                for (int k = 0; k < to; ++k) {
                    QCOMPARE(samples::cell(dst.data3D[i][j][k]),
                             looked(src, float(i) / last, float(j) / last, float(k) / last));
                }
            }
        }
        QCOMPARE(dst.domainMax3D[0], 1.0F);
    }

    void emptyAndSingleTables() {
        Read_LUTFile empty(nullptr);
        Read_LUTFile src(nullptr);
        Read_LUTFile point(nullptr);
        samples::fillRandom(src, 3, 6, -0.5F, 1.5F);
        samples::empty3D(point, 1);
        m_calc.Lut3D_Out(empty, point);
        m_calc.Lut3D_Out(src, empty);
        QCOMPARE(samples::cell(point.data3D[0][0][0]), QVector<float>({0, 0, 0}));
        m_calc.Lut3D_Out(src, point);
        QCOMPARE(samples::cell(point.data3D[0][0][0]), samples::cell(src.data3D[0][0][0]));
    }
};

QTEST_GUILESS_MAIN(TestResample)
#include "test_resample.moc"
