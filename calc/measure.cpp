#include "calc/measure.h"

#include "calc/lattice_axis.h"
#include "calc/look_up.h"
#include "lut/lattice.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tintwell {

namespace {

void take(Statistics& statistics, const float* cell, const Channels& identity) {
    for (std::size_t c = 0; c < 3; ++c) {
        if (!std::isfinite(cell[c])) {
            ++statistics.nonFiniteCount;
            continue;
        }
        statistics.min[c] = std::min(statistics.min[c], cell[c]);
        statistics.max[c] = std::max(statistics.max[c], cell[c]);
        statistics.maxDeviation =
            std::max(statistics.maxDeviation, std::fabs(cell[c] - identity[c]));
    }
}

Range inputDomain(const Read_LUTFile& lut, TableKind kind) {
    const float* const min = kind == TableKind::ThreeD ? lut.domainMin3D : lut.domainMin1D;
    const float* const max = kind == TableKind::ThreeD ? lut.domainMax3D : lut.domainMax1D;
    const Range domain = {*std::min_element(min, min + 3), *std::max_element(max, max + 3)};
    return std::isfinite(domain.width()) && domain.width() > 0 ? domain : Range();
}

} // namespace

Statistics statisticsOf(const Read_LUTFile& lut, TableKind kind) {
    Statistics statistics;
    statistics.min.fill(std::numeric_limits<float>::infinity());
    statistics.max.fill(-std::numeric_limits<float>::infinity());
    if (kind == TableKind::OneD) {
        for (int n = 0; n < lut.size1D; ++n) {
            const float t = unitPosition(n, lut.size1D);
            take(statistics, lut.data1D[n], {t, t, t});
        }
        return statistics;
    }
    const int n = lut.size3D;
    visitLattice(n, [&](int i, int j, int k) {
        take(statistics, lut.data3D[i][j][k],
             {unitPosition(i, n), unitPosition(j, n), unitPosition(k, n)});
        return true;
    });
    return statistics;
}

float largestSample1D(const Read_LUTFile& lut) {
    float largest = 0;
    for (int n = 0; n < lut.size1D; ++n) {
        largest = std::max(largest, *std::max_element(lut.data1D[n], lut.data1D[n] + 3));
    }
    return largest;
}

Range sampleRange(const Read_LUTFile& lut, TableKind kind) {
    float least = std::numeric_limits<float>::infinity();
    float largest = -least;
    const auto take = [&](const float* cell) {
        for (int c = 0; c < 3; ++c) {
            least = std::min(least, cell[c]);
            largest = std::max(largest, cell[c]);
        }
    };
    if (kind == TableKind::OneD) {
        std::for_each_n(lut.data1D, lut.size1D, take);
    } else {
        visitLattice(lut.size3D, [&](int i, int j, int k) {
            take(lut.data3D[i][j][k]);
            return true;
        });
    }
    return {least, largest};
}

bool hasEqualCurves(const Read_LUTFile& lut) {
    const auto isSame = [](float a, float b) { return a == b || (std::isnan(a) && std::isnan(b)); };
    return std::all_of(lut.data1D, lut.data1D + lut.size1D, [&](const float* cell) {
        return isSame(cell[0], cell[1]) && isSame(cell[1], cell[2]);
    });
}

GreyAxis greyAxis(const Read_LUTFile& lut, TableKind kind, int steps) {
    const auto lookUpKind = kind == TableKind::ThreeD ? lookUp3D : lookUp1D;
    GreyAxis axis = {inputDomain(lut, kind),
                     std::vector<Channels>(static_cast<std::size_t>(steps))};
    for (std::size_t step = 0; step < axis.outputs.size(); ++step) {
        const auto value = static_cast<float>(axis.input(step));
        const float grey[] = {value, value, value};
        lookUpKind(lut, grey, axis.outputs[step].data());
    }
    return axis;
}

} // namespace tintwell
