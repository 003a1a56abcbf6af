#include "bench/suite.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <vector>

namespace bench {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

bool isSeparator(char c) {
    return c == ' ' || c == '\t';
}

/// Appends the numbers of a line, up to the first word that is not a number, at \a to.
float* takeNumbers(const char* at, const char* end, float* to) {
    for (;;) {
        at = std::find_if_not(at, end, isSeparator);
        const auto [rest, error] = std::from_chars(at, end, *to);
        if (error != std::errc{}) {
            return to;
        }
        at = rest;
        ++to;
    }
}

/// The numbers of a file, line by line, in a flat array.
void readNumbers(benchmark::State& state, const Tables& tables, const Format& format, int size) {
    const std::string path = tables.path(format, size).toStdString();
    const std::size_t bytes = std::filesystem::file_size(path);
    for (auto _ : state) {
        const std::unique_ptr<char[]> text(new char[bytes + 1]);
        const File file(std::fopen(path.c_str(), "rb"));
        char* const end = text.get() + std::fread(text.get(), 1, bytes, file.get());
        *end = '\n';
        std::unique_ptr<float[]> numbers(new float[bytes / 2 + 1]);
        float* to = numbers.get();
        for (const char* line = text.get(); line < end;) {
            const auto* const feed = static_cast<const char*>(
                std::memchr(line, '\n', static_cast<std::size_t>(end + 1 - line)));
            to = takeNumbers(line, feed, to);
            line = feed + 1;
        }
        benchmark::DoNotOptimize(to);
        untimed(state, [&] { numbers.reset(); });
    }
    count(state, format.points(size), static_cast<std::int64_t>(bytes));
}

std::vector<float> flat(const Read_LUTFile& lut) {
    std::vector<float> numbers;
    forCells(lut, [&](const float* cell) { numbers.insert(numbers.end(), cell, cell + 3); });
    return numbers;
}

/// Formats numbers with six decimals, three per line, in one buffer, and writes it to a new file.
void writeNumbers(benchmark::State& state, const Tables& tables, int size) {
    constexpr std::size_t room = 16; // for a number below ten and the character after it
    const std::vector<float> numbers = flat(*gradedLattice(size));
    const std::string path = tables.freshPath().toStdString();
    std::size_t bytes = 0;
    for (auto _ : state) {
        const std::unique_ptr<char[]> text(new char[room * numbers.size()]);
        char* to = text.get();
        for (std::size_t n = 0; n < numbers.size(); ++n) {
            to = std::to_chars(to, to + room, numbers[n], std::chars_format::fixed, 6).ptr;
            *to++ = n % 3 == 2 ? '\n' : ' ';
        }
        bytes = static_cast<std::size_t>(to - text.get());
        File file(std::fopen(path.c_str(), "wb"));
        std::fwrite(text.get(), 1, bytes, file.get());
        file.reset();
        untimed(state, [&] { std::filesystem::remove(path); });
    }
    count(state, static_cast<std::int64_t>(numbers.size() / 3), static_cast<std::int64_t>(bytes));
}

/// The position of a new lattice's index on the axis of an old one.
struct Position {
    std::ptrdiff_t lower; ///< in the array
    std::ptrdiff_t step;  ///< to the upper neighbour
    float fraction;
};

std::vector<Position> positions(int from, int to, std::ptrdiff_t stride) {
    std::vector<Position> all;
    for (int n = 0; n < to; ++n) {
        const float x =
            static_cast<float>(n) / static_cast<float>(to - 1) * static_cast<float>(from - 1);
        const float lower = std::min(std::floor(x), static_cast<float>(from - 2));
        all.push_back({stride * static_cast<int>(lower), stride, x - lower});
    }
    return all;
}

/// Tetrahedral interpolation from one flat array into another.
void resampleFlat(const std::vector<float>& source, int from, std::vector<float>& target, int to) {
    const std::vector<Position> x = positions(from, to, std::ptrdiff_t{3} * from * from);
    const std::vector<Position> y = positions(from, to, std::ptrdiff_t{3} * from);
    const std::vector<Position> z = positions(from, to, 3);
    float* out = target.data();
    for (const Position& px : x) {
        for (const Position& py : y) {
            const Position& high = px.fraction > py.fraction ? px : py;
            const Position& low = px.fraction > py.fraction ? py : px;
            const float* const row = source.data() + px.lower + py.lower;
            for (const Position& pz : z) {
                const bool aboveHigh = pz.fraction > high.fraction;
                const bool aboveLow = pz.fraction > low.fraction;
                const float most = aboveHigh ? pz.fraction : high.fraction;
                const float middle =
                    aboveHigh ? high.fraction : (aboveLow ? pz.fraction : low.fraction);
                const float least = aboveLow ? low.fraction : pz.fraction;
                const float* const first = row + pz.lower;
                const float* const second = first + (aboveHigh ? pz.step : high.step);
                const float* const third = first + high.step + (aboveLow ? pz.step : low.step);
                const float* const last = first + px.step + py.step + pz.step;
                for (int c = 0; c < 3; ++c) {
                    *out++ = first[c] * (1 - most) + second[c] * (most - middle) +
                             third[c] * (middle - least) + last[c] * least;
                }
            }
        }
    }
}

void resample(benchmark::State& state, int from, int to) {
    const std::vector<float> source = flat(*gradedLattice(from));
    std::vector<float> target = flat(*gradedLattice(to));
    for (auto _ : state) {
        resampleFlat(source, from, target, to);
        benchmark::ClobberMemory();
    }
    count(state, cubed(to));
}

/// The cost of the container alone for a resampling that uses all of the old lattice: reads each of
/// its cells and fills each cell of the new one.
void visitCells(benchmark::State& state, int from, int to) {
    const auto source = gradedLattice(from);
    const auto target = gradedLattice(to);
    for (auto _ : state) {
        float sum = 0;
        forCells(*source, [&](const float* cell) { sum += cell[0]; });
        forCells(*target, [&](float* cell) { std::fill_n(cell, 3, sum); });
        benchmark::ClobberMemory();
    }
    count(state, cubed(to));
}

/// Cells of three floats in rows, planes and a lattice, each a block of its own.
float**** makeCells(std::size_t n) {
    auto**** const lattice = static_cast<float****>(std::calloc(n, sizeof(float***)));
    for (std::size_t i = 0; i < n; ++i) {
        lattice[i] = static_cast<float***>(std::calloc(n, sizeof(float**)));
        for (std::size_t j = 0; j < n; ++j) {
            lattice[i][j] = static_cast<float**>(std::calloc(n, sizeof(float*)));
            for (std::size_t k = 0; k < n; ++k) {
                lattice[i][j][k] = static_cast<float*>(std::calloc(3, sizeof(float)));
            }
        }
    }
    return lattice;
}

void freeCells(float**** lattice, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t j = 0; j < n; ++j) {
            for (std::size_t k = 0; k < n; ++k) {
                std::free(lattice[i][j][k]);
            }
            std::free(lattice[i][j]);
        }
        std::free(lattice[i]);
    }
    std::free(lattice);
}

void allocate(benchmark::State& state, std::size_t size) {
    for (auto _ : state) {
        float**** const lattice = makeCells(size);
        untimed(state, [&] { freeCells(lattice, size); });
    }
    count(state, static_cast<std::int64_t>(size * size * size));
}

void release(benchmark::State& state, std::size_t size) {
    for (auto _ : state) {
        float**** lattice = nullptr;
        untimed(state, [&] { lattice = makeCells(size); });
        freeCells(lattice, size);
    }
    count(state, static_cast<std::int64_t>(size * size * size));
}

} // namespace

void registerFloors(const Tables& tables) {
    for (const Format& format : formats()) {
        for (const int size : format.sizes) {
            if (format.isNumbersAndBlanks) {
                add(format.named("floor/read", size), readNumbers, tables, format, size);
            }
        }
    }
    for (const auto& [from, to] : resamplings) {
        add(nameOf("floor/resample", from, to), resample, from, to);
        add(nameOf("floor/cells", from, to), visitCells, from, to);
    }
    for (const int size : latticeSizes) {
        add(nameOf("floor/write/cube", size), writeNumbers, tables, size);
        add(nameOf("floor/allocate", size), allocate, size);
        add(nameOf("floor/release", size), release, size);
    }
}

} // namespace bench
