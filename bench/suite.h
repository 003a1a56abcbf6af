#pragma once

#include "bench/tables.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <string>
#include <utility>

namespace bench {

// The parts of the suite. Names are "subject/format/size"; times are for one whole table.

void registerFormats(const Tables& tables); ///< probing, reading and writing
void registerCalc();                        ///< resampling, merging, allocation and release
/// "floor/...": what the same work costs on flat arrays, with nothing else around it.
void registerFloors(const Tables& tables);
/// "peer/...": the same work done by OpenColorIO.
void registerPeer(const Tables& tables);

/// Reads a file in this process, which must be fresh, and prints three numbers of bytes: the rise
/// of the peak memory, the size of the table, and the length of the file.
bool printPeakMemory(const QString& cubePath);

/// The points per axis of a resampling.
inline constexpr std::array<std::pair<int, int>, 7> resamplings = {
    {{65, 33}, {33, 65}, {17, 65}, {65, 48}, {33, 64}, {17, 33}, {65, 129}}};

template <typename... Arguments>
void add(const std::string& name, Arguments&&... arguments) {
    benchmark::RegisterBenchmark(name.c_str(), std::forward<Arguments>(arguments)...)
        ->Unit(benchmark::kMillisecond);
}

/// "subject/33", and with more numbers "subject/33/64".
template <typename... Numbers>
std::string nameOf(const std::string& subject, Numbers... numbers) {
    return (subject + ... + ('/' + std::to_string(numbers)));
}

/// Excludes the time of \a rest from the measurement.
template <typename Rest>
void untimed(benchmark::State& state, Rest&& rest) {
    state.PauseTiming();
    rest();
    state.ResumeTiming();
}

/// Sets the rates: table points (or entries) per second, and bytes of their file if there is one.
inline void count(benchmark::State& state, std::int64_t points, std::int64_t bytes = 0) {
    state.SetItemsProcessed(state.iterations() * points);
    if (bytes > 0) {
        state.SetBytesProcessed(state.iterations() * bytes);
    }
}

} // namespace bench
