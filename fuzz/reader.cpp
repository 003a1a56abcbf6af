// Reads the input with the reader of one format, given by TINTWELL_FORMAT.

#include "harness.h"

#include "lut/catalogue.h"
#include "lut/read_lutfile.h"

#include <optional>

namespace {

const tintwell::Format& format() {
    static const tintwell::Format* const named =
        tintwell::formatByName(qEnvironmentVariable("TINTWELL_FORMAT"));
    fuzz::require(named != nullptr, "TINTWELL_FORMAT names a format");
    return *named;
}

/// A valid image of a few bytes may hold the largest lattice, which takes too long under the
/// sanitizers: such a lattice is only probed.
bool isWorthReading(const Read_LUTFile& probed) {
    return !format().isImage || probed.size3D <= 64;
}

/// A probe may need more of a file than a read: 256 entries of a csv.
bool isProbedStrictly() {
    return format().code == tintwell::FormatCode::Csv;
}

} // namespace

void fuzz::run(std::string_view input) {
    const MemoryFile file(input);
    std::optional<HeapWatch> watch;
    if (!format().isImage) { // a compressed image may have many pixels
        watch.emplace();
    }
    const LUTFILE_ST st = request(file.path(), codeOf(format()));
    Read_LUTFile probed(nullptr);
    const bool accepted = probed.ReadFile(st, true);
    require(probed.data3D == nullptr && probed.data1D == nullptr, "a probe allocates no table");
    if (!isWorthReading(probed)) {
        return;
    }
    Read_LUTFile lut(nullptr);
    const bool read = lut.ReadFile(st, false);
    require(!read || accepted || isProbedStrictly(),
            "a file that can be read is accepted by a probe");
    touch(lut, read);
}
