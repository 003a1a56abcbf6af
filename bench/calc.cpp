#include "bench/suite.h"

#include "calc/lutcalc.h"

#include <optional>

namespace bench {

namespace {

void resample(benchmark::State& state, int from, int to) {
    const auto source = gradedLattice(from);
    const auto target = gradedLattice(to);
    for (auto _ : state) {
        LutCalc().Lut3D_Out(*source, *target);
        benchmark::ClobberMemory();
    }
    count(state, cubed(to));
}

void merge(benchmark::State& state, int size) {
    const auto first = gradedLattice(size);
    const auto second = gradedLattice(size);
    const auto result = gradedLattice(size);
    for (auto _ : state) {
        LutCalc().Lut3D_Merge(*first, *second, *result);
        benchmark::ClobberMemory();
    }
    count(state, cubed(size));
}

void makeLattice(std::optional<Read_LUTFile>& lut, int size) {
    lut.emplace(nullptr);
    lut->size3D = size;
    lut->allocate3D();
}

void allocate(benchmark::State& state, int size) {
    std::optional<Read_LUTFile> lut;
    for (auto _ : state) {
        makeLattice(lut, size);
        untimed(state, [&] { lut.reset(); });
    }
    count(state, cubed(size));
}

void release(benchmark::State& state, int size) {
    std::optional<Read_LUTFile> lut;
    for (auto _ : state) {
        untimed(state, [&] { makeLattice(lut, size); });
        lut.reset();
    }
    count(state, cubed(size));
}

} // namespace

void registerCalc() {
    for (const auto& [from, to] : resamplings) {
        add(nameOf("resample", from, to), resample, from, to);
    }
    for (const int size : latticeSizes) {
        add(nameOf("merge", size), merge, size);
        add(nameOf("allocate", size), allocate, size);
        add(nameOf("release", size), release, size);
    }
}

} // namespace bench
