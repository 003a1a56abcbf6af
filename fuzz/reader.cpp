// Reads the input with one reader, named by TINTWELL_FORMAT_CODE.

#include "harness.h"

#include "lut/read_lutfile.h"

#include <optional>

namespace {

constexpr int code = TINTWELL_FORMAT_CODE;
constexpr bool isImage = code == 1 || code == 2;

/// An image of a few bytes may rightly hold the largest lattice, which takes the sanitizers too
/// long: such a lattice is left to the probe.
bool isWorthReading(const Read_LUTFile& probed) {
    return !isImage || probed.size3D <= 64;
}

} // namespace

void fuzz::run(std::string_view input) {
    const MemoryFile file(input);
    std::optional<HeapWatch> watch;
    if (!isImage) { // pixels of a compressed image may be many
        watch.emplace();
    }
    Read_LUTFile probed(nullptr);
    const bool accepted = probed.ReadFile(request(file.path(), code), true);
    require(probed.data3D == nullptr && probed.data1D == nullptr, "a probe allocates no table");
    if (!isWorthReading(probed)) {
        return;
    }
    Read_LUTFile lut(nullptr);
    const bool read = lut.ReadFile(request(file.path(), code), false);
    require(!read || accepted || code == 14, "what reads is accepted by a probe");
    touch(lut, read);
}
