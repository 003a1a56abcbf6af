#include "calc/lutcalc.h"
#include "samples.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <random>

namespace {

/// The same look-up by barycentric coordinates in double precision: walk from the lower corner
/// along the axes in falling order of their fractions.
std::array<double, 3> bySorting(const Read_LUTFile& lut, const float* in) {
    std::array<int, 3> at{};
    std::array<double, 3> fraction{};
    for (std::size_t a = 0; a < 3; ++a) {
        const double last = lut.size3D - 1;
        const double width = double(lut.domainMax3D[a]) - double(lut.domainMin3D[a]);
        const double x =
            std::clamp((double(in[a]) - double(lut.domainMin3D[a])) / width * last, 0.0, last);
        at[a] = std::min(int(x), std::max(0, lut.size3D - 2));
        fraction[a] = x - at[a];
    }
    std::array<std::size_t, 3> axes = {0, 1, 2};
    std::sort(axes.begin(), axes.end(), [&](auto a, auto b) { return fraction[a] > fraction[b]; });
    std::array<double, 3> out{};
    double before = 1;
    for (std::size_t step = 0; step <= 3; ++step) {
        const double after = step < 3 ? fraction[axes[step]] : 0;
        for (std::size_t c = 0; c < 3; ++c) {
            out[c] += double(lut.data3D[at[0]][at[1]][at[2]][c]) * (before - after);
        }
        if (step < 3) {
            at[axes[step]] = std::min(at[axes[step]] + 1, lut.size3D - 1);
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
    void agreesWithSortedFractions() {
        std::mt19937 random(3);
        std::uniform_real_distribution<float> real(-0.7F, 2.3F);
        Read_LUTFile lut(nullptr);
        samples::fillRandom(lut, 5, 1, -0.5F, 1.5F);
        const float minima[] = {-0.25F, 0.0F, 0.5F};
        const float maxima[] = {1.0F, 2.0F, 1.75F};
        std::copy_n(minima, 3, lut.domainMin3D);
        std::copy_n(maxima, 3, lut.domainMax3D);
        for (int n = 0; n < 20'000; ++n) {
            float in[] = {real(random), real(random), real(random)};
            const auto expected = bySorting(lut, in);
            const QVector<float> actual = looked(lut, in[0], in[1], in[2]);
            for (std::size_t c = 0; c < 3; ++c) {
                QVERIFY(std::fabs(double(actual[int(c)]) - expected[c]) < 2e-5);
            }
        }
    }

    /// Each branch and each tie, in the exact order of operations.
    void branchesToTheBit_data() {
        QTest::addColumn<QVector<float>>("at");
        QTest::addColumn<int>("second");
        QTest::addColumn<int>("third");
        const auto row = [](const char* name, float x, float y, float z, int second, int third) {
            QTest::newRow(name) << QVector<float>({x, y, z}) << second << third;
        };
        row("x > y > z", 0.7F, 0.4F, 0.1F, 4, 6);
        row("x > z > y", 0.7F, 0.1F, 0.4F, 4, 5);
        row("x > z = y", 0.7F, 0.3F, 0.3F, 4, 5);
        row("z > x > y", 0.4F, 0.1F, 0.7F, 1, 5);
        row("z = x > y", 0.6F, 0.1F, 0.6F, 1, 5);
        row("z > y > x", 0.1F, 0.4F, 0.7F, 1, 3);
        row("z > y = x", 0.3F, 0.3F, 0.7F, 1, 3);
        row("y > z > x", 0.1F, 0.7F, 0.4F, 2, 3);
        row("y = z > x", 0.1F, 0.6F, 0.6F, 2, 3);
        row("y > x > z", 0.4F, 0.7F, 0.1F, 2, 6);
        row("y = x > z", 0.6F, 0.6F, 0.2F, 2, 6);
        row("y > x = z", 0.2F, 0.6F, 0.2F, 2, 6);
        row("all equal", 0.3F, 0.3F, 0.3F, 2, 6);
    }
    void branchesToTheBit() {
        QFETCH(QVector<float>, at);
        QFETCH(int, second);
        QFETCH(int, third);
        Read_LUTFile lut(nullptr);
        samples::fillRandom(lut, 2, 2, -0.5F, 1.5F);
        QVector<float> f = at;
        std::sort(f.begin(), f.end(), std::greater<>());
        const auto corner = [&](int bits) {
            return lut.data3D[bits >> 2][(bits >> 1) & 1][bits & 1];
        };
        QVector<float> expected;
        for (int c = 0; c < 3; ++c) {
            volatile float sum = corner(0)[c] * (1 - f[0]); // volatile: each step rounds to single
            volatile float term = corner(second)[c] * (f[0] - f[1]);
            sum = sum + term;
            term = corner(third)[c] * (f[1] - f[2]);
            sum = sum + term;
            term = corner(7)[c] * f[2];
            expected << sum + term;
        }
        QCOMPARE(looked(lut, at[0], at[1], at[2]), expected);
    }

    /// The reciprocal of the width comes first, then times the last point, and each step rounds.
    void orderOfOperations() {
        constexpr int size = 34;
        Read_LUTFile lut(nullptr);
        samples::fill3D(lut, size, [](int i, int, int) {
            return QVector<float>({float(i * i), 0, 0});
        });
        std::fill_n(lut.domainMin3D, 3, -0.1F);
        std::fill_n(lut.domainMax3D, 3, 1.3F);
        volatile float factor = 1.3F - -0.1F;
        factor = 1 / factor;
        factor = factor * (size - 1);
        for (int n = 0; n < 1000; ++n) {
            const float value = float(n) / 999;
            volatile float x = value - -0.1F;
            x = x * factor;
            const int lower = int(x);
            const float fraction = x - float(lower);
            volatile float low = float(lower * lower) * (1 - fraction);
            volatile float high = float((lower + 1) * (lower + 1)) * fraction;
            QVERIFY(looked(lut, value, -1, -1)[0] == low + high);
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
        dst.dataOrder = dst.tableOrder = false; // neither is looked at
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
