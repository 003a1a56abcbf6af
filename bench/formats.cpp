#include "bench/suite.h"

#include "lut/write_lutfile.h"

#include <QFile>
#include <QFileInfo>

#include <optional>

namespace bench {

namespace {

void probe(benchmark::State& state, const Tables& tables, const Format& format, int size) {
    const LUTFILE_ST st = format.request(tables.path(format, size));
    for (auto _ : state) {
        if (!Read_LUTFile(nullptr).ReadFile(st, true)) {
            state.SkipWithError("not probed");
            break;
        }
    }
    count(state, format.points(size), QFileInfo(st.path).size());
}

void read(benchmark::State& state, const Tables& tables, const Format& format, int size) {
    const LUTFILE_ST st = format.request(tables.path(format, size));
    std::optional<Read_LUTFile> lut;
    for (auto _ : state) {
        if (!lut.emplace(nullptr).ReadFile(st, false)) {
            state.SkipWithError("not read");
            break;
        }
        untimed(state, [&] { lut.reset(); });
    }
    count(state, format.points(size), QFileInfo(st.path).size());
}

/// Writes to a new file each time, because the cost of emptying a large old one varies widely.
void write(benchmark::State& state, const Tables& tables, const Format& format, int size) {
    const auto lut = format.graded(size);
    const LUTFILE_ST st = format.request(tables.freshPath());
    std::int64_t bytes = 0;
    for (auto _ : state) {
        if (!Write_LUTFile(nullptr).WriteFile(st, *lut)) {
            state.SkipWithError("not written");
            break;
        }
        untimed(state, [&] {
            bytes = QFileInfo(st.path).size();
            QFile::remove(st.path);
        });
    }
    count(state, format.points(size), bytes);
}

} // namespace

void registerFormats(const Tables& tables) {
    for (const Format& format : formats()) {
        for (const int size : format.sizes) {
            add(format.named("probe", size), probe, tables, format, size);
            add(format.named("read", size), read, tables, format, size);
            if (format.row->write != nullptr) {
                add(format.named("write", size), write, tables, format, size);
            }
        }
    }
}

} // namespace bench
