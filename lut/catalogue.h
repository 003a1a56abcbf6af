#pragma once

#include "lut/format_code.h"
#include "lut/read_lutfile.h"
#include "lut/table_kind.h"
#include "lut/write_lutfile.h"

#include <QString>
#include <QStringList>

#include <array>
#include <cstddef>
#include <vector>

namespace tintwell {

/// The order of the channels of a sample and of the points of a lattice in a file, as the two flags
/// of the container and the writer.
struct Orders {
    bool dataOrder;  ///< samples are R, G, B; else B, G, R
    bool tableOrder; ///< neighbouring samples differ in blue; else in red

    bool operator==(const Orders&) const = default;
};

/// What differs between two pairs of orders.
struct Swaps {
    bool channels = false; ///< red and blue of each sample
    bool axes = false;     ///< the red and the blue axis of the lattice
};

constexpr Swaps swapsBetween(const Orders& a, const Orders& b) {
    return {a.dataOrder != b.dataOrder, a.tableOrder != b.tableOrder};
}

inline constexpr Orders rgbBlueFastest = {.dataOrder = true, .tableOrder = true};
inline constexpr Orders rgbRedFastest = {.dataOrder = true, .tableOrder = false};

/// Whether a format holds integer samples, and whether a reader recovers their scale.
enum class IntegerSamples {
    Never,          ///< real numbers only: writers ignore a scale
    ScaleLost,      ///< files do not state the scale, so readers cannot undo it
    ScaleRecovered, ///< readers find the scale
    LargestIsFull,  ///< readers take the largest number as full scale, integer or not
    Always          ///< there are no real numbers
};

/// What the domain found by a reader is the range of.
enum class DomainMeaning {
    Input,       ///< the input colours
    SampleRange, ///< the samples
    FullScale    ///< the numbers of the file; the last of them is full scale
};

/// What users call a domain of this meaning.
constexpr const char* domainWord(DomainMeaning meaning) {
    return meaning == DomainMeaning::Input         ? "domain"
           : meaning == DomainMeaning::SampleRange ? "range"
                                                   : "scale";
}

/// What only the command line needs to know about a format.
struct FormatTraits {
    IntegerSamples integers = IntegerSamples::Never;
    DomainMeaning domain = DomainMeaning::Input;
    const char* caveat = ""; ///< what may surprise its users; empty if nothing
    // What other programs make of a file that is written; empty if the same.
    const char* realsElsewhere = "";
    const char* integersElsewhere = "";
};

/// One file format.
struct Format {
    FormatCode code;
    const char* name;       ///< on the command line
    const char* extensions; ///< separated by blanks; new files get the first
    const char* label;      ///< UTF-8, as shown to the user
    TableKind kind;
    bool (Read_LUTFile::*read)(QString path, bool probe);
    bool (Write_LUTFile::*write)(QString path, Read_LUTFile& lut) = nullptr; ///< null: no writer
    Orders readerOrders;
    Orders writerOrders = rgbBlueFastest; ///< not used if there is no writer
    int fixedSize = 0;                    ///< the only size of the format; 0: any
    bool isImage = false;
    FormatTraits traits = {};
};

/// Either image format reads any image type; the image's size decides.
inline constexpr const char* imageExtensions = "png bmp tif tiff jpg jpeg";

inline constexpr const char* sampleRangeCaveat =
    "the From range is that of the samples, not of the input";

inline constexpr FormatTraits imageTraits = {
    .integers = IntegerSamples::Always,
    .domain = DomainMeaning::FullScale,
    .caveat = "columns are red, rows green and tiles blue, in 8 bits"};

inline constexpr FormatTraits nvxTraits = {.domain = DomainMeaning::SampleRange,
                                           .caveat = sampleRangeCaveat};

/// Every format, in the order of the codes.
inline constexpr auto catalogue = std::to_array<Format>({
    {.code = FormatCode::Cube,
     .name = "cube",
     .extensions = "cube",
     .label = ".cube",
     .kind = TableKind::ThreeD,
     .read = &Read_LUTFile::Read_Cube,
     .write = &Write_LUTFile::Write_Cube,
     .readerOrders = rgbRedFastest,
     .writerOrders = rgbRedFastest,
     .traits = {.integers = IntegerSamples::ScaleLost}},
    {.code = FormatCode::Texture,
     .name = "texture",
     .extensions = imageExtensions,
     .label = "texture-base 64X64 512X512...",
     .kind = TableKind::ThreeD,
     .read = &Read_LUTFile::Read_Texture,
     .readerOrders = rgbRedFastest,
     .isImage = true,
     .traits = imageTraits},
    {.code = FormatCode::UnwrappedCube,
     .name = "unwrapped",
     .extensions = imageExtensions,
     .label = "identity Unwrapped Cube 1024X16",
     .kind = TableKind::ThreeD,
     .read = &Read_LUTFile::Read_IUC,
     .readerOrders = rgbRedFastest,
     .isImage = true,
     .traits = imageTraits},
    {.code = FormatCode::ThreeDl,
     .name = "3dl",
     .extensions = "3dl",
     .label = ".3dl",
     .kind = TableKind::ThreeD,
     .read = &Read_LUTFile::Read_3dl,
     .readerOrders = rgbBlueFastest,
     .traits = {.integers = IntegerSamples::ScaleRecovered,
                .domain = DomainMeaning::FullScale,
                .caveat = "without a Mesh line the largest sample gives the bit depth, "
                          "two or more; real numbers up to 1 are divided by 3"}},
    {.code = FormatCode::Mga,
     .name = "mga",
     .extensions = "mga m3d",
     .label = ".mga .m3d pandora",
     .kind = TableKind::ThreeD,
     .read = &Read_LUTFile::Read_Mga,
     .write = &Write_LUTFile::Write_Mga,
     .readerOrders = rgbBlueFastest,
     .traits = {.integers = IntegerSamples::ScaleRecovered,
                .domain = DomainMeaning::FullScale,
                .realsElsewhere = "other programs expect integers in this format"}},
    {.code = FormatCode::Look,
     .name = "look",
     .extensions = "look",
     .label = ".look",
     .kind = TableKind::ThreeD,
     .read = &Read_LUTFile::Read_Look,
     .readerOrders = rgbRedFastest,
     .traits = {.domain = DomainMeaning::FullScale,
                .caveat = "a channel with samples above 1 is divided by its largest"}},
    {.code = FormatCode::Discreet1D,
     .name = "discreet",
     .extensions = "lut",
     .label = ".lut 1D Discreet",
     .kind = TableKind::OneD,
     .read = &Read_LUTFile::Read_1dLut_Discreet,
     .write = &Write_LUTFile::Write_1dLut_Discreet,
     .readerOrders = rgbBlueFastest,
     .traits = {.integers = IntegerSamples::LargestIsFull,
                .domain = DomainMeaning::FullScale,
                .caveat = "the largest value of the file is read as 1",
                .realsElsewhere = "other programs expect integers in this format",
                .integersElsewhere = "other programs take the number of entries less one, such as "
                                     "1023, as full scale"}},
    {.code = FormatCode::Plain1D,
     .name = "lut",
     .extensions = "lut",
     .label = ".lut 1D",
     .kind = TableKind::OneD,
     .read = &Read_LUTFile::Read_1dLut,
     .write = &Write_LUTFile::Write_1dLut,
     .readerOrders = rgbBlueFastest,
     .fixedSize = 256,
     .traits = {.integers = IntegerSamples::ScaleLost,
                .caveat = "only the first 256 entries are read"}},
    {.code = FormatCode::DavLut,
     .name = "davlut",
     .extensions = "davlut",
     .label = ".davLut 3DLut",
     .kind = TableKind::ThreeD,
     .read = &Read_LUTFile::Read_DavLut,
     .write = &Write_LUTFile::Write_DavLut,
     .readerOrders = rgbBlueFastest},
    {.code = FormatCode::Csp,
     .name = "csp",
     .extensions = "csp",
     .label = ".csp",
     .kind = TableKind::ThreeD,
     .read = &Read_LUTFile::Read_Csp,
     .readerOrders = rgbRedFastest,
     .traits = {.caveat = "the shapers are not applied: the ends of their outputs are taken as "
                          "the domain"}},
    {.code = FormatCode::TruelightCube,
     .name = "cub",
     .extensions = "cub",
     .label = ".cub Truelight Cube",
     .kind = TableKind::ThreeD,
     .read = &Read_LUTFile::Read_Cub,
     .readerOrders = rgbRedFastest,
     .traits = {.domain = DomainMeaning::FullScale,
                .caveat = "the shaper, read as a 1D table, is divided by the width"}},
    {.code = FormatCode::Itx,
     .name = "itx",
     .extensions = "itx",
     .label = ".itx",
     .kind = TableKind::ThreeD,
     .read = &Read_LUTFile::Read_Itx,
     .write = &Write_LUTFile::Write_Itx,
     .readerOrders = rgbRedFastest,
     .writerOrders = rgbRedFastest},
    {.code = FormatCode::Spi1D,
     .name = "spi1d",
     .extensions = "spi1d",
     .label = ".spi1d",
     .kind = TableKind::OneD,
     .read = &Read_LUTFile::Read_Spi1D,
     .write = &Write_LUTFile::Write_Spi1D,
     .readerOrders = rgbRedFastest, // swaps red and blue of its own writer's files
     .writerOrders = rgbBlueFastest,
     .traits = {.integers = IntegerSamples::ScaleRecovered,
                .domain = DomainMeaning::SampleRange,
                .caveat = sampleRangeCaveat,
                .integersElsewhere = "other programs take From as the range of the inputs and do "
                                     "not scale the samples"}},
    {.code = FormatCode::Spi3D,
     .name = "spi3d",
     .extensions = "spi3d",
     .label = ".spi3d",
     .kind = TableKind::ThreeD,
     .read = &Read_LUTFile::Read_Spi3D,
     .write = &Write_LUTFile::Write_Spi3D,
     .readerOrders = rgbBlueFastest,
     .traits = {.caveat = "points without a line are black"}},
    {.code = FormatCode::Csv,
     .name = "csv",
     .extensions = "csv",
     .label = ".csv log",
     .kind = TableKind::OneD,
     .read = &Read_LUTFile::Read_Csv,
     .write = &Write_LUTFile::Write_Csv,
     .readerOrders = rgbBlueFastest,
     .traits = {.integers = IntegerSamples::Always,
                .domain = DomainMeaning::FullScale,
                .caveat = "one curve for all channels; the last code gives the scale, the next "
                          "power of two less one"}},
    {.code = FormatCode::Nvx1D,
     .name = "nvx1d",
     .extensions = "nvx1d",
     .label = ".nvx1d norvane专用格式1D",
     .kind = TableKind::OneD,
     .read = &Read_LUTFile::Read_NVX1D,
     .write = &Write_LUTFile::Write_NVX1D,
     .readerOrders = rgbBlueFastest,
     .traits = nvxTraits},
    {.code = FormatCode::Nvx3D,
     .name = "nvx3d",
     .extensions = "nvx3d",
     .label = ".nvx3d norvane专用格式3D",
     .kind = TableKind::ThreeD,
     .read = &Read_LUTFile::Read_NVX3D,
     .write = &Write_LUTFile::Write_NVX3D,
     .readerOrders = rgbBlueFastest,
     .traits = nvxTraits},
});

inline constexpr int formatCount = static_cast<int>(catalogue.size());

constexpr const Format& formatOf(FormatCode code) {
    return catalogue[static_cast<std::size_t>(code)];
}

/// The format of a code; null outside the catalogue.
constexpr const Format* formatOf(int code) {
    return code >= 0 && code < formatCount ? &formatOf(static_cast<FormatCode>(code)) : nullptr;
}

constexpr int codeOf(const Format& format) {
    return static_cast<int>(format.code);
}

/// The format with a short name ("cube") or a code number ("0"); null if there is none.
const Format* formatByName(const QString& name);

/// The file extensions of a format, that of new files first.
QStringList extensionsOf(const Format& format);

/// The formats whose extensions include that of a path, in any case.
std::vector<const Format*> formatsByExtension(const QString& path);

/// One bit per code, set for the 3D formats.
constexpr unsigned kindBits() {
    unsigned bits = 0;
    for (const Format& format : catalogue) {
        bits |= format.kind == TableKind::ThreeD ? 1U << static_cast<unsigned>(format.code) : 0U;
    }
    return bits;
}

constexpr bool isInOrderOfCodes() {
    for (std::size_t place = 0; place < catalogue.size(); ++place) {
        if (static_cast<std::size_t>(catalogue[place].code) != place) {
            return false;
        }
    }
    return true;
}

static_assert((kindBits() & 0x1FFFFU) == 77631U,
              "one of the first 17 formats has changed its kind");
static_assert(isInOrderOfCodes());

} // namespace tintwell
