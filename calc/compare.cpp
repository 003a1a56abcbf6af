#include "calc/compare.h"

#include "calc/chain.h"
#include "calc/lattice_axis.h"
#include "calc/lattice_rows.h"
#include "calc/look_up.h"
#include "calc/make_table.h"
#include "calc/measure.h"
#include "lut/lattice.h"
#include "lut/read_lutfile.h"
#include "lut/truncate.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

namespace tintwell {

namespace {

/// The middles of the cells of an axis of \a points over 0..1; if there are more than \a most
/// cells, of \a most from the first to the last.
std::vector<float> middles(int points, int most) {
    const std::int64_t cells = points - 1;
    const std::int64_t count = std::min(cells, std::int64_t{most});
    std::vector<float> inputs;
    for (std::int64_t n = 0; n < count; ++n) {
        const std::int64_t cell = count < cells ? n * (cells - 1) / (count - 1) : n;
        inputs.push_back(static_cast<float>(2 * cell + 1) / static_cast<float>(2 * cells));
    }
    return inputs;
}

/// The largest finite difference of any channel, \a before included.
float largestFinite(float before, const float* a, const float* b) {
    float largest = before;
    for (int c = 0; c < 3; ++c) {
        const float difference = std::fabs(a[c] - b[c]);
        if (difference > largest && std::isfinite(difference)) {
            largest = difference;
        }
    }
    return largest;
}

/// \a exact(colour) puts the right result in the place of a colour.
template <typename Exact>
float errorOfCurves(const Read_LUTFile& made, Exact&& exact) {
    constexpr int mostCells = 1 << 16;
    float largest = 0;
    for (const float input : middles(made.size1D, mostCells)) {
        float expected[] = {input, input, input};
        float found[] = {input, input, input};
        exact(expected);
        lookUp1D(made, found, found);
        largest = largestFinite(largest, expected, found);
    }
    return largest;
}

/// The inputs along each axis of a grid, as many on all three.
using GridInputs = std::array<std::vector<float>, 3>;

/// The effect of the lattice of a table or, if there is none, of its curves on a grid of colours.
/// What depends on one axis alone is computed once.
class GridEffect {
public:
    GridEffect(const Read_LUTFile& lut, const GridInputs& inputs)
        : m_lut(lut), m_positions{gridPositions(latticeAxis(lut, 0), inputs[0]),
                                  gridPositions(latticeAxis(lut, 1), inputs[1]),
                                  gridPositions(latticeAxis(lut, 2), inputs[2])} {
        for (std::size_t n = 0; n < inputs[0].size(); ++n) {
            Channels response = {inputs[0][n], inputs[1][n], inputs[2][n]};
            lookUp1D(lut, response.data(), response.data());
            m_responses.push_back(response);
        }
    }

    void at(std::size_t i, std::size_t j, std::size_t k, float* out) const {
        if (!m_lut.hasTable3D()) {
            fillCell(out, true, m_responses[i][0], m_responses[j][1], m_responses[k][2]);
            return;
        }
        const AxisPosition<float>& p0 = m_positions[0][i];
        const AxisPosition<float>& p1 = m_positions[1][j];
        interpolate(rowsAround(m_lut, p0, p1), rowOrder(p0.fraction, p1.fraction),
                    m_positions[2][k], out);
    }

private:
    const Read_LUTFile& m_lut;
    std::array<std::vector<AxisPosition<float>>, 3> m_positions;
    std::vector<Channels> m_responses;
};

/// \a finish(colour) puts the right result in the place of that of \a from.
template <typename Finish>
float errorOfLattice(const Read_LUTFile& from, const Read_LUTFile& made, Finish&& finish) {
    constexpr int mostCells = 64;
    const std::vector<float> inputs = middles(made.size3D, mostCells);
    const GridEffect source(from, {inputs, inputs, inputs});
    const GridEffect result(made, {inputs, inputs, inputs});
    float largest = 0;
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        for (std::size_t j = 0; j < inputs.size(); ++j) {
            for (std::size_t k = 0; k < inputs.size(); ++k) {
                float expected[3];
                float found[3];
                source.at(i, j, k, expected);
                finish(expected);
                result.at(i, j, k, found);
                largest = largestFinite(largest, expected, found);
            }
        }
    }
    return largest;
}

float differenceOf(float a, float b) {
    if (a == b || (std::isnan(a) && std::isnan(b))) {
        return 0;
    }
    const float difference = std::fabs(a - b);
    return std::isnan(difference) ? std::numeric_limits<float>::infinity() : difference;
}

/// Takes the samples of two tables, point by point.
class Collector {
public:
    Collector(const GridInputs& inputs, Comparison& result) : m_inputs(inputs), m_result(result) {}

    /// \a difference gets what is between the two.
    void take(const std::array<int, 3>& index, const float* first, const float* second,
              float* difference) {
        for (std::size_t c = 0; c < 3; ++c) {
            m_areIdentical = m_areIdentical && isIdentical(first[c], second[c]);
            difference[c] = differenceOf(first[c], second[c]);
            if (std::isfinite(difference[c])) {
                const auto exact = static_cast<double>(difference[c]);
                ++m_finite[c];
                m_sum[c] += exact;
                m_squares[c] += exact * exact;
            } else {
                ++m_result.nonFinite;
            }
            if (difference[c] > m_largest) {
                m_largest = difference[c];
                m_result.index = index;
                std::copy_n(first, 3, m_result.first.begin());
                std::copy_n(second, 3, m_result.second.begin());
            }
            float& largest = m_result.channels[c].largest;
            largest = std::max(largest, difference[c]);
        }
    }

    void finish() {
        m_result.isIdentical = m_result.by == ComparedBy::Points && m_areIdentical;
        for (std::size_t c = 0; c < 3; ++c) {
            const auto count = static_cast<double>(m_finite[c]);
            const double none = std::numeric_limits<double>::infinity();
            m_result.channels[c].mean = count > 0 ? m_sum[c] / count : none;
            m_result.channels[c].rms = count > 0 ? std::sqrt(m_squares[c] / count) : none;
            m_result.input[c] = m_inputs[c][static_cast<std::size_t>(m_result.index[c])];
        }
    }

private:
    static bool isIdentical(float a, float b) {
        return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b) ||
               (std::isnan(a) && std::isnan(b));
    }

    const GridInputs& m_inputs;
    Comparison& m_result;
    bool m_areIdentical = true;
    float m_largest = -1; // so that the first point is taken even if there is no difference
    std::array<std::int64_t, 3> m_finite = {};
    std::array<double, 3> m_sum = {};
    std::array<double, 3> m_squares = {};
};

/// Where two tables are compared: the kind and size of the grid, and its inputs.
Comparison plannedComparison(const Read_LUTFile& first, const Read_LUTFile& second,
                             bool haveSameInputs) {
    Comparison plan;
    const bool anyLattice = first.hasTable3D() || second.hasTable3D();
    plan.kind = anyLattice ? TableKind::ThreeD : TableKind::OneD;
    const int sizes[] = {sizeOf(first, plan.kind), sizeOf(second, plan.kind)};
    plan.size = std::max(sizes[0], sizes[1]);
    plan.by = haveSameInputs && sizes[0] == sizes[1] ? ComparedBy::Points : ComparedBy::Evaluation;
    for (int c = 0; c < 3; ++c) {
        float from = std::numeric_limits<float>::infinity();
        float to = -from;
        for (const Read_LUTFile* const lut : {&first, &second}) {
            const float min = lut->hasTable3D() ? lut->domainMin3D[c] : lut->domainMin1D[c];
            const float max = lut->hasTable3D() ? lut->domainMax3D[c] : lut->domainMax1D[c];
            from = std::min({from, min, max});
            to = std::max({to, min, max});
        }
        const bool isUsable = from < to && std::isfinite(to - from);
        plan.from[static_cast<std::size_t>(c)] = isUsable ? from : 0;
        plan.to[static_cast<std::size_t>(c)] = isUsable ? to : 1;
    }
    return plan;
}

GridInputs inputsOf(const Comparison& plan) {
    GridInputs inputs;
    for (std::size_t c = 0; c < 3; ++c) {
        const Range range = {plan.from[c], plan.to[c]};
        for (int n = 0; n < plan.size; ++n) {
            const double fraction = n > 0 ? static_cast<double>(n) / (plan.size - 1) : 0;
            inputs[c].push_back(static_cast<float>(range.at(fraction)));
        }
    }
    return inputs;
}

/// Visits the points of a comparison of curves with what either table has there.
template <typename Visit>
void visitCurves(const Read_LUTFile& first, const Read_LUTFile& second, const Comparison& plan,
                 const GridInputs& inputs, Visit&& visit) {
    for (int n = 0; n < plan.size; ++n) {
        const std::array<int, 3> index = {n, n, n};
        if (plan.by == ComparedBy::Points) {
            visit(index, first.data1D[n], second.data1D[n]);
            continue;
        }
        const auto place = static_cast<std::size_t>(n);
        const float in[] = {inputs[0][place], inputs[1][place], inputs[2][place]};
        float one[3];
        float other[3];
        lookUp1D(first, in, one);
        lookUp1D(second, in, other);
        visit(index, one, other);
    }
}

/// The same in a lattice.
template <typename Visit>
void visitLattices(const Read_LUTFile& first, const Read_LUTFile& second, const Comparison& plan,
                   const GridInputs& inputs, Visit&& visit) {
    if (plan.by == ComparedBy::Points) {
        visitLattice(plan.size, [&](int i, int j, int k) {
            visit(std::array{i, j, k}, first.data3D[i][j][k], second.data3D[i][j][k]);
            return true;
        });
        return;
    }
    const GridEffect firstEffect(first, inputs);
    const GridEffect secondEffect(second, inputs);
    visitLattice(plan.size, [&](int i, int j, int k) {
        const auto x = static_cast<std::size_t>(i);
        const auto y = static_cast<std::size_t>(j);
        const auto z = static_cast<std::size_t>(k);
        float one[3];
        float other[3];
        firstEffect.at(x, y, z, one);
        secondEffect.at(x, y, z, other);
        visit(std::array{i, j, k}, one, other);
        return true;
    });
}

bool prepare(const Comparison& plan, Read_LUTFile& differences) {
    if (!makeZeros(differences, plan.kind, plan.size)) {
        return false;
    }
    const bool is3D = plan.kind == TableKind::ThreeD;
    std::copy_n(plan.from.begin(), 3, is3D ? differences.domainMin3D : differences.domainMin1D);
    std::copy_n(plan.to.begin(), 3, is3D ? differences.domainMax3D : differences.domainMax1D);
    return true;
}

/// What is lost of a positive number when it is rounded to a multiple of 1 / \a parts.
double roundingLoss(float value, double parts) {
    const double scaled = static_cast<double>(value) * parts;
    const auto nearest = static_cast<double>(static_cast<std::int64_t>(scaled + 0.5));
    return std::fabs(scaled - nearest) / parts;
}

double lossToSixDecimals(float value) {
    constexpr float wholeFrom = 8388608.0F; // where floats have no fractions
    const float magnitude = std::fabs(value);
    return magnitude < wholeFrom ? roundingLoss(magnitude, 1e6) : 0;
}

double lossToSixDigits(float value) {
    const float magnitude = std::fabs(value);
    if (magnitude == 0) {
        return 0;
    }
    double parts = 1e6; // right from 0.1 to 1, where most samples are
    while (static_cast<double>(magnitude) * parts < 1e5) {
        parts *= 10;
    }
    while (static_cast<double>(magnitude) * parts >= 1e6) {
        parts /= 10;
    }
    return roundingLoss(magnitude, parts);
}

/// Visits the cells of a table, which must exist, in the order of memory.
template <typename Visit>
void visitCells(const Read_LUTFile& lut, TableKind kind, Visit&& visit) {
    if (kind == TableKind::OneD) {
        std::for_each_n(lut.data1D, lut.size1D, visit);
        return;
    }
    visitLattice(lut.size3D, [&](int i, int j, int k) {
        visit(lut.data3D[i][j][k]);
        return true;
    });
}

/// The largest \a lossOf(sample) of the finite samples.
template <typename LossOf>
float largestLoss(const Read_LUTFile& lut, TableKind kind, LossOf lossOf) {
    double largest = 0;
    visitCells(lut, kind, [&](const float* cell) {
        for (int c = 0; c < 3; ++c) {
            if (std::isfinite(cell[c])) {
                largest = std::max(largest, lossOf(cell[c]));
            }
        }
    });
    return static_cast<float>(largest);
}

} // namespace

float resamplingError(const Read_LUTFile& from, const Read_LUTFile& made, TableKind kind) {
    if (kind == TableKind::ThreeD) {
        return errorOfLattice(from, made, [](const float* /*colour*/) {});
    }
    const auto effect = from.hasTable1D() ? lookUp1D : lookUp3D;
    return errorOfCurves(made, [&](float* colour) { effect(from, colour, colour); });
}

float compositionError(Tables tables, const Read_LUTFile& made, TableKind kind) {
    if (kind == TableKind::OneD) {
        const Chain all(tables);
        return errorOfCurves(made, [&](float* colour) { all.apply(colour); });
    }
    const Chain others(tables.subspan(1));
    return errorOfLattice(*tables.front(), made, [&](float* colour) { others.apply(colour); });
}

float tableDifference(const Read_LUTFile& a, const Read_LUTFile& b, TableKind kind) {
    const int size = sizeOf(a, kind);
    if (size != sizeOf(b, kind)) {
        return std::numeric_limits<float>::infinity();
    }
    float largest = 0;
    const auto compare = [&largest](const float* one, const float* other) {
        for (int c = 0; c < 3; ++c) {
            largest = std::max(largest, differenceOf(one[c], other[c]));
        }
    };
    for (int n = 0; kind == TableKind::OneD && n < size; ++n) {
        compare(a.data1D[n], b.data1D[n]);
    }
    visitLattice(kind == TableKind::ThreeD ? size : 0, [&](int i, int j, int k) {
        compare(a.data3D[i][j][k], b.data3D[i][j][k]);
        return true;
    });
    return largest;
}

float Comparison::largest() const {
    return std::max({channels[0].largest, channels[1].largest, channels[2].largest});
}

bool compareTables(const Read_LUTFile& first, const Read_LUTFile& second, bool haveSameInputs,
                   Comparison& result, Read_LUTFile* differences) {
    result = plannedComparison(first, second, haveSameInputs);
    if (differences != nullptr && !prepare(result, *differences)) {
        return false;
    }
    const GridInputs inputs = inputsOf(result);
    Collector collector(inputs, result);
    const auto take = [&](const std::array<int, 3>& index, const float* one, const float* other) {
        float unkept[3];
        float* const difference = differences == nullptr ? unkept
                                  : result.kind == TableKind::OneD
                                      ? differences->data1D[index[0]]
                                      : differences->data3D[index[0]][index[1]][index[2]];
        collector.take(index, one, other, difference);
    };
    if (result.kind == TableKind::OneD) {
        visitCurves(first, second, result, inputs, take);
    } else {
        visitLattices(first, second, result, inputs, take);
    }
    collector.finish();
    return true;
}

float writingLoss(const Read_LUTFile& lut, TableKind kind, std::int64_t scale) {
    if (scale >= 2) {
        return largestLoss(lut, kind, [scale](float value) {
            const auto printed = static_cast<double>(scaledInteger(value, scale));
            return std::fabs(static_cast<double>(value) - printed / static_cast<double>(scale));
        });
    }
    return kind == TableKind::ThreeD ? largestLoss(lut, kind, lossToSixDecimals)
                                     : largestLoss(lut, kind, lossToSixDigits);
}

} // namespace tintwell
