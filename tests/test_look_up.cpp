#include "calc/compare.h"
#include "calc/look_up.h"
#include "calc/lutcalc.h"
#include "samples.h"

#include <algorithm>
#include <array>
#include <cmath>

// Every computation on tables against the same in plain steps, each rounded to single precision.

namespace {

using tintwell::compositionError;
using tintwell::resamplingError;
using tintwell::TableKind;

using Codes = std::array<unsigned long, 3>;

/// By the reciprocal of the domain's width, times the last index.
float positionOf(float value, float min, float max, int last) {
    volatile float factor = max - min;
    factor = 1 / factor;
    factor = factor * float(last);
    volatile float position = value - min;
    position = position * factor;
    return std::clamp(float(position), 0.0F, float(last));
}

float alongCurve(const Read_LUTFile& lut, int c, float value) {
    const int last = lut.size1D - 1;
    const float x = positionOf(value, lut.domainMin1D[c], lut.domainMax1D[c], last);
    const float low = lut.data1D[int(x)][c];
    volatile float rise = lut.data1D[std::min(int(x) + 1, last)][c] - low;
    rise = rise * (x - std::floor(x));
    return rise + low;
}

/// From the point below, along the axes in descending order of their fractions, of which \a one is
/// a whole step. The order of equal fractions does not matter. An axis steps to its upper point
/// only if its fraction is at least \a least.
template <typename Number, typename Value>
std::array<Number, 3> bySorting(const Read_LUTFile& lut, std::array<std::size_t, 3> at,
                                const std::array<Number, 3>& fraction, Number one, Number least,
                                Value valueOf) {
    const auto last = static_cast<std::size_t>(lut.size3D - 1);
    std::array<std::size_t, 3> axes = {0, 1, 2};
    std::sort(axes.begin(), axes.end(), [&](auto a, auto b) { return fraction[a] > fraction[b]; });
    std::array<Number, 3> out = {0, 0, 0};
    Number before = one;
    for (std::size_t step = 0; step <= 3; ++step) {
        const Number after = step < 3 ? fraction[axes[step]] : 0;
        for (std::size_t c = 0; c < 3; ++c) {
            volatile Number term = valueOf(lut.data3D[at[0]][at[1]][at[2]][c]) * (before - after);
            out[c] += term;
        }
        if (step < 3 && after >= least) {
            at[axes[step]] = std::min(at[axes[step]] + 1, last);
        }
        before = after;
    }
    return out;
}

QVector<float> inLattice(const Read_LUTFile& lut, const QVector<float>& in) {
    std::array<std::size_t, 3> at{};
    std::array<float, 3> fraction{};
    for (int a = 0; a < 3; ++a) {
        const float x = positionOf(in[a], lut.domainMin3D[a], lut.domainMax3D[a], lut.size3D - 1);
        at[std::size_t(a)] = std::size_t(x);
        fraction[std::size_t(a)] = x - std::floor(x);
    }
    const auto out = bySorting(lut, at, fraction, 1.0F, 0.0F, [](float value) { return value; });
    return samples::cell(out.data());
}

Codes inLatticeOfCodes(const Read_LUTFile& lut, const Codes& in) {
    const auto last = static_cast<std::uint64_t>(lut.size3D - 1);
    const std::uint64_t step = 255 / last;
    const auto at = [&](std::uint64_t code) { return std::size_t(std::min(code / step, last)); };
    const std::array<std::uint64_t, 3> rest = {in[0] % step, in[1] % step, in[2] % step};
    const std::array<std::uint64_t, 3> sum = bySorting(
        lut, {at(in[0]), at(in[1]), at(in[2])}, rest, step, std::uint64_t{2},
        [](float value) { return static_cast<std::uint64_t>(std::int64_t(value * 255)); });
    const auto code = [step](std::uint64_t wide) {
        return static_cast<unsigned long>(wide / step);
    };
    return {code(sum[0]), code(sum[1]), code(sum[2])};
}

Codes lookedUp(const Read_LUTFile& lut, const Codes& in) {
    Codes out = {9999, 9999, 9999};
    LutCalc().Lut3D_Tetrahedral_Int(in.data(), out.data(), lut);
    return out;
}

void fillRandom(Read_LUTFile& lut, int size, unsigned seed) {
    samples::fillRandom(lut, size, seed, -0.5F, 1.5F);
    samples::fill1D(lut, size,
                    [&](int n) { return samples::cell(lut.data3D[n][size - 1 - n][0]); });
}

void setDomains(Read_LUTFile& lut, const QVector<float>& minima, const QVector<float>& maxima) {
    for (int c = 0; c < 3; ++c) {
        lut.domainMin3D[c] = lut.domainMin1D[c] = minima[c];
        lut.domainMax3D[c] = lut.domainMax1D[c] = maxima[c];
    }
}

QVector<float> through(void (LutCalc::*lookUp)(const float*, float*, const Read_LUTFile&),
                       const Read_LUTFile& lut, const QVector<float>& in) {
    float out[3];
    (LutCalc().*lookUp)(in.constData(), out, lut);
    return samples::cell(out);
}

constexpr auto lattice = &LutCalc::Lut3D_Tetrahedral;
constexpr auto curves = &LutCalc::Lut1D_liner;

void raise(float& largest, const QVector<float>& a, const QVector<float>& b) {
    for (int c = 0; c < 3; ++c) {
        largest = std::max(largest, std::abs(a[c] - b[c]));
    }
}

float& sampleOf(Read_LUTFile& lut, TableKind kind, int n) {
    return kind == TableKind::ThreeD ? lut.data3D[n][n][n][2] : lut.data1D[n][2];
}

float unit(int n, int size) {
    return size > 1 ? float(n) / float(size - 1) : 0;
}

} // namespace

class TestLookUp : public QObject {
    Q_OBJECT

    LutCalc m_calc;

private Q_SLOTS:
    void agreesToTheBit() {
        std::mt19937 random(3);
        std::uniform_real_distribution<float> real(-0.7F, 2.3F);
        for (const int size : {2, 34}) {
            Read_LUTFile lut(nullptr);
            fillRandom(lut, size, 1);
            setDomains(lut, {-0.1F, 0, 0.5F}, {1.1F, 2, 1.75F});
            for (int n = 0; n < 5'000; ++n) {
                const QVector<float> in = {real(random), real(random), real(random)};
                QCOMPARE(through(lattice, lut, in), inLattice(lut, in));
                QCOMPARE(through(curves, lut, in)[n % 3], alongCurve(lut, n % 3, in[n % 3]));
            }
            std::fill_n(lut.domainMin3D, 3, 0.0F); // where equal values have equal fractions
            std::fill_n(lut.domainMax3D, 3, 1.0F);
            const float values[] = {0.21F, 0.53F, 0.88F};
            for (int n = 0; n < 27; ++n) {
                const QVector<float> in = {values[n / 9], values[n / 3 % 3], values[n % 3]};
                QCOMPARE(through(lattice, lut, in), inLattice(lut, in));
            }
        }
    }

    void edges() {
        Read_LUTFile lut(nullptr);
        fillRandom(lut, 5, 4);
        setDomains(lut, {-1, 0, 0.5F}, {1, 2, 0.5F});
        const auto expect = [&](const QVector<float>& in, const std::array<int, 3>& at) {
            QCOMPARE(through(lattice, lut, in), samples::cell(lut.data3D[at[0]][at[1]][at[2]]));
            for (int c = 0; c < 3; ++c) {
                QCOMPARE(through(curves, lut, in)[c], lut.data1D[at[std::size_t(c)]][c]);
            }
        };
        expect({0, 1.5F, 0}, {2, 3, 0});
        expect({-INFINITY, INFINITY, 0.5F}, {0, 4, 0});
        expect({NAN, NAN, NAN}, {0, 0, 0});
        expect({7, -3, 0.51F}, {4, 0, 4}); // above a domain without width
    }

    /// New tables are look-ups point by point over 0..1, whatever the orders and domains say.
    void wholeTables() {
        for (const auto& [from, to] :
             {std::pair{5, 17}, {17, 5}, {6, 6}, {33, 17}, {1, 4}, {3, 1}}) {
            Read_LUTFile source(nullptr);
            Read_LUTFile second(nullptr);
            Read_LUTFile made(nullptr);
            Read_LUTFile merged(nullptr);
            Read_LUTFile chained(nullptr);
            Read_LUTFile grey(nullptr);
            fillRandom(source, from, 5);
            fillRandom(second, 4, 6);
            setDomains(source, {-0.1F, 0, 0.5F}, {1.1F, 2, 1.75F});
            setDomains(second, {0, -0.3F, 0}, {2, 1, 0.9F});
            for (Read_LUTFile* const lut : {&made, &merged, &grey}) {
                fillRandom(*lut, to, 7);
                lut->dataOrder = lut->tableOrder = false;
            }
            m_calc.Lut3D_Out(source, made);
            m_calc.Lut1D_Out(source, made);
            m_calc.Lut3D_Merge(source, second, merged);
            m_calc.Lut3D_to_Lut1D(source, grey);
            const std::array pair = {&source, &second};
            const std::array chain = {&source, &second, &source};
            QVERIFY(tintwell::compose(chain, chained, TableKind::ThreeD, to));
            QVERIFY(tintwell::compose(chain, chained, TableKind::OneD, to));
            std::array<float, 6> errors{};
            for (int n = 0; n < to * to * to; ++n) {
                const int at[] = {n / to / to, n / to % to, n % to};
                const QVector<float> point = {unit(at[0], to), unit(at[1], to), unit(at[2], to)};
                const QVector<float> between = through(lattice, source, point);
                QCOMPARE(samples::cell(made.data3D[at[0]][at[1]][at[2]]), between);
                QCOMPARE(samples::cell(merged.data3D[at[0]][at[1]][at[2]]),
                         through(lattice, second, between));
                QCOMPARE(samples::cell(chained.data3D[at[0]][at[1]][at[2]]),
                         through(lattice, source, through(lattice, second, between)));
                const QVector<float> level(3, point[2]);
                QCOMPARE(samples::cell(made.data1D[at[2]]), through(curves, source, level));
                QCOMPARE(samples::cell(grey.data1D[at[2]]), through(lattice, source, level));
                QCOMPARE(samples::cell(chained.data1D[at[2]]),
                         samples::cell(chained.data3D[at[2]][at[2]][at[2]]));
                if (std::max({at[0], at[1], at[2]}) == to - 1) {
                    continue;
                }
                const int halves = 2 * to - 1;
                const auto middle = [&](int axis) { return unit(2 * at[axis] + 1, halves); };
                const QVector<float> in = {middle(0), middle(1), middle(2)};
                const QVector<float> tone(3, in[2]);
                const auto merge = through(lattice, merged, in);
                const auto curve = through(curves, grey, tone);
                raise(errors[0], through(curves, source, tone), curve);
                raise(errors[1], through(lattice, second, tone), curve);
                raise(errors[2], through(lattice, second, through(lattice, source, tone)), curve);
                raise(errors[3], through(curves, source, in), merge);
                raise(errors[4], through(lattice, second, through(lattice, source, in)), merge);
                raise(errors[5], through(curves, source, through(lattice, second, in)), merge);
            }
            QCOMPARE(made.domainMax3D[0], 1.0F);
            QCOMPARE(resamplingError(source, grey, TableKind::OneD), errors[0]);
            QCOMPARE(compositionError(pair, grey, TableKind::OneD), errors[2]);
            QCOMPARE(compositionError(pair, merged, TableKind::ThreeD), errors[4]);
            source.setSize3D(0);
            second.setSize1D(0);
            QCOMPARE(resamplingError(second, grey, TableKind::OneD), errors[1]);
            QCOMPARE(resamplingError(source, merged, TableKind::ThreeD), errors[3]);
            QCOMPARE(compositionError(std::array{&second, &source}, merged, TableKind::ThreeD),
                     errors[5]);
            m_calc.Lut3D_OnebyOne(merged);
            m_calc.Lut1D_OnebyOne(made);
            m_calc.Lut1D_to_Lut3D(source.data1D, from, made);
            m_calc.Lut1D_to_Lut3D(second.data1D, 0, made); // no entries
            for (int n = 0; n < to; ++n) {
                const float position = unit(n, to);
                const float* const below = source.data1D[int(position * float(from - 1))];
                const float first = source.data1D[0][0];
                QCOMPARE(samples::cell(made.data1D[n]), QVector<float>(3, position));
                QCOMPARE(samples::cell(merged.data3D[n][0][n]),
                         QVector<float>({position, 0, position}));
                QCOMPARE(samples::cell(made.data3D[0][n][n]),
                         QVector<float>({first, below[1], below[2]}));
            }
        }
    }

    void differences() {
        for (const auto& [kind, size] :
             {std::pair{TableKind::OneD, 70'000}, {TableKind::ThreeD, 70}}) {
            Read_LUTFile a(nullptr);
            Read_LUTFile b(nullptr);
            QVERIFY(tintwell::makeIdentity(a, kind, size));
            QCOMPARE(tintwell::tableDifference(a, b, kind), INFINITY);
            QVERIFY(tintwell::makeIdentity(b, kind, size));
            for (const auto& [one, other, difference] : {std::array{NAN, NAN, 0.0F},
                                                         {NAN, 0, INFINITY},
                                                         {-INFINITY, -INFINITY, 0},
                                                         {1, 1.5F, 0.5F}}) {
                sampleOf(a, kind, size - 1) = one;
                sampleOf(b, kind, size - 1) = other;
                QCOMPARE(tintwell::tableDifference(a, b, kind), difference);
            }
            sampleOf(b, kind, 0) = INFINITY;
            // Not every cell of such a size is looked at, but the last one is.
            QVERIFY(std::abs(resamplingError(a, b, kind) - 0.25F) < 0.01F);
        }
    }

    /// Against the number that is printed.
    void lossesOfWriting() {
        std::mt19937 random(12);
        std::uniform_real_distribution<float> real(-1, 1);
        for (int n = 0; n < 2'000; ++n) {
            const long scale = std::array{1, 2, 1023, 65535}[std::size_t(n / 2 % 4)];
            const auto kind = n % 2 == 0 ? TableKind::OneD : TableKind::ThreeD;
            const float value = std::ldexp(real(random), n % 50 - 20);
            Read_LUTFile lut(nullptr);
            QVERIFY(tintwell::makeZeros(lut, kind, 2));
            sampleOf(lut, kind, 0) = INFINITY;
            sampleOf(lut, kind, 1) = value;
            QString text;
            QTextStream out(&text);
            Write_LUTFile writer(nullptr);
            kind == TableKind::OneD ? writer.White1D(lut.data1D, out, 1, scale, " ")
                                    : writer.White3D(lut.data3D, out, 1, 1, 1, scale, " ");
            const double printed = text.split(' ', Qt::SkipEmptyParts)[2].toDouble();
            const double loss = std::abs(double(value) - printed / double(scale));
            const double error = double(tintwell::writingLoss(lut, kind, scale)) - loss;
            QVERIFY(std::abs(error) <= 1e-6 * loss + 1e-12 * double(std::abs(value)));
        }
    }

    /// A size alone, as after a probe, is not a table.
    void missingTables() {
        Read_LUTFile none(nullptr);
        Read_LUTFile lut(nullptr);
        none.size3D = none.size1D = 3;
        fillRandom(lut, 3, 8);
        const float before[] = {lut.data3D[0][0][0][0], lut.data1D[0][0]};
        for (const auto make :
             {&LutCalc::Lut3D_Out, &LutCalc::Lut1D_Out, &LutCalc::Lut3D_to_Lut1D}) {
            (m_calc.*make)(none, lut);
            (m_calc.*make)(lut, none);
        }
        m_calc.Lut3D_Merge(none, lut, lut);
        m_calc.Lut3D_Merge(lut, none, lut);
        m_calc.Lut3D_Merge(lut, lut, none);
        m_calc.Lut1D_to_Lut3D(lut.data1D, 3, none);
        m_calc.Lut3D_OnebyOne(none);
        m_calc.Lut1D_OnebyOne(none);
        float out[] = {9, 9, 9};
        tintwell::lookUp(none, before, out);
        QCOMPARE(samples::cell(out), QVector<float>(3, 9));
        QCOMPARE(lookedUp(none, {1, 2, 3}), (Codes{9999, 9999, 9999}));
        for (const int size : {0, Read_LUTFile::MaxSize1D + 1}) {
            for (const auto kind : {TableKind::OneD, TableKind::ThreeD}) {
                QVERIFY(!tintwell::makeIdentity(none, kind, size));
                QVERIFY(!tintwell::reshape(lut, none, kind, size));
                QVERIFY(!tintwell::compose(std::array{&lut, &lut}, none, kind, size));
            }
        }
        QCOMPARE(lut.data3D[0][0][0][0], before[0]);
        QCOMPARE(lut.data1D[0][0], before[1]);
    }

    void codesAgreeWithSortedRemainders() {
        std::mt19937 random(7);
        for (const int size : {2, 3, 4, 16, 17, 33, 65, 90}) {
            Read_LUTFile lut(nullptr);
            samples::fillRandom(lut, size, 8, -0.5F, 1.5F); // negative sums wrap
            const auto step = 255UL / static_cast<unsigned long>(size - 1);
            for (int n = 0; n < 5'000; ++n) {
                Codes in = {random() % 300, random() % 256, random() % 256};
                if (n % 3 == 0) { // force ties of the remainders
                    unsigned long& other = in[n % 2 == 0 ? 1 : 2];
                    other = in[0] % step + other / step * step;
                }
                QCOMPARE(lookedUp(lut, in), inLatticeOfCodes(lut, in));
            }
        }
        Read_LUTFile lut(nullptr);
        QVERIFY(tintwell::makeIdentity(lut, TableKind::ThreeD, 256));
        QCOMPARE(lookedUp(lut, {255, 90, 0}), (Codes{255, 90, 0}));
        QVERIFY(tintwell::makeZeros(lut, TableKind::ThreeD, 1));
        QCOMPARE(lookedUp(lut, {1, 2, 3}), (Codes{9999, 9999, 9999}));
    }
};

QTEST_GUILESS_MAIN(TestLookUp)
#include "test_look_up.moc"
