#include "calc/lutcalc.h"
#include "samples.h"

#include <algorithm>
#include <array>
#include <random>

namespace {

using Codes = std::array<unsigned long, 3>;

Codes lookedUp(Read_LUTFile& lut, const Codes& in) {
    Codes out = {9999, 9999, 9999};
    LutCalc().Lut3D_Tetrahedral_Int(in.data(), out.data(), lut);
    return out;
}

/// The same by sorting the axes: one step along each, in descending order of the remainders. The
/// order of equal remainders does not matter.
Codes bySorting(const Read_LUTFile& lut, const Codes& in) {
    const auto last = static_cast<unsigned long>(lut.size3D - 1);
    const unsigned long step = 255 / last;
    std::array<std::size_t, 3> axes = {0, 1, 2};
    std::stable_sort(axes.begin(), axes.end(),
                     [&](auto a, auto b) { return in[a] % step > in[b] % step; });
    Codes at = {in[0] / step, in[1] / step, in[2] / step};
    Codes out = {0, 0, 0};
    unsigned long before = step;
    for (std::size_t n = 0; n <= 3; ++n) {
        const unsigned long after = n < 3 ? in[axes[n]] % step : 0;
        const auto index = [&](std::size_t a) { return std::min(at[a], last); };
        const float* const sample = lut.data3D[index(0)][index(1)][index(2)];
        for (std::size_t c = 0; c < 3; ++c) {
            out[c] += static_cast<unsigned long>(sample[c] * 255) * (before - after);
        }
        if (n < 3) {
            at[axes[n]] += after >= 2 ? 1 : 0;
        }
        before = after;
    }
    for (unsigned long& code : out) {
        code /= step;
    }
    return out;
}

void makeIdentity(Read_LUTFile& lut, int size) {
    samples::empty3D(lut, size);
    LutCalc().Lut3D_OnebyOne(lut);
}

} // namespace

class TestIntegerMerge : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void integersAgreeWithSortedRemainders_data() {
        QTest::addColumn<int>("size");
        for (const int size : {2, 3, 4, 16, 17, 33, 65, 90}) {
            QTest::addRow("%d points", size) << size;
        }
    }
    void integersAgreeWithSortedRemainders() {
        QFETCH(int, size);
        std::mt19937 random(7);
        Read_LUTFile lut(nullptr);
        samples::fillRandom(lut, size, 8);
        const unsigned long step = 255UL / static_cast<unsigned long>(lut.size3D - 1);
        for (int n = 0; n < 20'000; ++n) {
            Codes in = {random() % 256, random() % 256, random() % 256};
            if (n % 3 == 0) { // force ties of the remainders
                unsigned long& other = in[n % 2 == 0 ? 1 : 2];
                other = in[0] % step + other / step * step;
            }
            QCOMPARE(lookedUp(lut, in), bySorting(lut, in));
        }
    }

    void integerCorners() {
        Read_LUTFile lut(nullptr);
        samples::fill3D(lut, 2, [](int i, int j, int k) {
            return QVector<float>({float(i) * 0.999F, float(j) * 0.5F, float(k) + 0.1F});
        });
        QCOMPARE(lookedUp(lut, {255, 255, 255}), (Codes{254, 127, 280}));
        QCOMPARE(lookedUp(lut, {0, 0, 0}), (Codes{0, 0, 25}));

        Read_LUTFile identity(nullptr);
        makeIdentity(identity, 17);
        QCOMPARE(lookedUp(identity, {120, 121, 122}), (Codes{127, 127, 129}));
        QCOMPARE(lookedUp(identity, {255, 1000, 0}), (Codes{255, 255, 0})); // past the last point
    }

    void negativeSamplesWrap() {
        Read_LUTFile lut(nullptr);
        samples::fill3D(lut, 2, [](int, int, int) { return QVector<float>({-1, -0.5F, 0}); });
        const unsigned long minus255 = 0UL - 255;
        const unsigned long minus127 = 0UL - 127;
        const Codes at = {7, 8, 9};
        QCOMPARE(lookedUp(lut, at), (Codes{minus255 * 255 / 255, minus127 * 255 / 255, 0}));
    }

    void integersRefuseUnfitTables() {
        Read_LUTFile point(nullptr);
        makeIdentity(point, 1);
        QCOMPARE(lookedUp(point, {1, 2, 3}), (Codes{9999, 9999, 9999}));
        Read_LUTFile empty(nullptr);
        QCOMPARE(lookedUp(empty, {1, 2, 3}), (Codes{9999, 9999, 9999}));
    }

    void identityFill() {
        Read_LUTFile lut(nullptr);
        LutCalc().Lut3D_OnebyOne(lut);
        makeIdentity(lut, 5);
        QCOMPARE(samples::cell(lut.data3D[4][1][2]), QVector<float>({1, 0.25F, 0.5F}));
        Read_LUTFile point(nullptr);
        makeIdentity(point, 1);
        QCOMPARE(samples::cell(point.data3D[0][0][0]), QVector<float>({0, 0, 0}));
    }

    void mergeIsTwoLookUps() {
        Read_LUTFile first(nullptr);
        Read_LUTFile second(nullptr);
        Read_LUTFile merged(nullptr);
        samples::fillRandom(first, 4, 10);
        samples::fillRandom(second, 6, 11);
        first.data3D[1][1][1][0] = 7; // not clamped in between, only by the second table's domain
        second.domainMax3D[1] = 2;
        samples::empty3D(merged, 7);
        LutCalc calc;
        calc.Lut3D_Merge(first, second, merged);
        for (const auto& [i, j, k] : {std::array{0, 0, 0}, {2, 2, 2}, {1, 4, 6}, {6, 5, 3}}) {
            const float in[] = {float(i) / 6, float(j) / 6, float(k) / 6};
            float between[3];
            float out[3];
            calc.Lut3D_Tetrahedral(in, between, first);
            calc.Lut3D_Tetrahedral(between, out, second);
            QCOMPARE(samples::cell(merged.data3D[i][j][k]), samples::cell(out));
        }
        Read_LUTFile empty(nullptr);
        merged.data3D[0][0][0][0] = 5;
        calc.Lut3D_Merge(first, empty, merged);
        calc.Lut3D_Merge(empty, second, merged);
        calc.Lut3D_Merge(first, second, empty);
        QCOMPARE(merged.data3D[0][0][0][0], 5.0F);
    }
};

QTEST_GUILESS_MAIN(TestIntegerMerge)
#include "test_integer_merge.moc"
