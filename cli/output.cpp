#include "cli/output.h"

#include "cli/report.h"
#include "cli/shape.h"
#include "lut/catalogue.h"

#include <algorithm>
#include <limits>

namespace cli {

namespace {

using tintwell::Codes;
using tintwell::Format;
using tintwell::formatOf;

/// Finer than any real number that is printed with six digits needs.
constexpr std::int64_t usualCodeScale = 65535;

std::int64_t scaleIn(const Format& format, std::int64_t asked) {
    if (asked == 0) {
        return format.codes == Codes::Only ? usualCodeScale : 1;
    }
    return format.codes == Codes::None ? 1 : asked;
}

bool hasUnequalChannels(const Read_LUTFile& lut) {
    return std::any_of(lut.data1D, lut.data1D + lut.size1D,
                       [](const float* cell) { return cell[0] != cell[1] || cell[1] != cell[2]; });
}

float largestOf(const Read_LUTFile& lut) {
    float largest = 0;
    for (int n = 0; n < lut.size1D; ++n) {
        largest = std::max(largest, *std::max_element(lut.data1D[n], lut.data1D[n] + 3));
    }
    return largest;
}

/// Notes that a file will be read with another scale than it was written with.
void noteLostScale(const Format& format, const QString& path, const Read_LUTFile& lut) {
    if (lut.size1D <= 0) {
        return;
    }
    const float last = lut.data1D[lut.size1D - 1][0];
    if (format.codes == Codes::Only && !(last > 0.5F && last <= 1)) {
        noteFile(path,
                 QStringLiteral("the last value, %1, tells a wrong scale to readers: expected "
                                "more than 0.5 and at most 1")
                     .arg(last));
    }
    const float largest = largestOf(lut);
    if (format.codes == Codes::Largest && largest != 1) {
        noteFile(path,
                 QStringLiteral("the largest value, %1, counts as 1 to readers").arg(largest));
    }
}

void noteQuirks(const Format& format, std::int64_t scale, const QString& path,
                const Read_LUTFile& lut) {
    if (scale > 1 && format.codes == Codes::None) {
        noteFile(path, QStringLiteral("--scale means nothing to %1, which has real numbers only")
                           .arg(QLatin1String(format.name)));
    }
    if (scale > 1 && format.codes == Codes::Unscaled) {
        noteFile(path, QStringLiteral("the file does not tell its scale; read again, its integers "
                                      "are clamped"));
    }
    if (format.size > 0 && lut.size1D != format.size) {
        noteFile(path, QStringLiteral("found %1 entries, but readers expect %2")
                           .arg(lut.size1D)
                           .arg(format.size));
    }
    if (format.codes == Codes::Only && hasUnequalChannels(lut)) {
        noteFile(path, QStringLiteral("%1 has one curve: only that of red is written")
                           .arg(QLatin1String(format.name)));
    }
}

/// Whether the last code of a curve, where it is full scale, tells the scale.
bool isCodeScale(std::int64_t scale) {
    constexpr std::int64_t largest = (1 << 24) - 1; // readers go through single precision
    return scale >= 3 && scale <= largest && (scale & (scale + 1)) == 0;
}

/// What of the options the format cannot have; empty: nothing.
QString problemWith(const Output& output, const Format& format) {
    const int largest = largestSize(format.kind);
    if (output.size.value_or(0) > largest) {
        return QStringLiteral("found --size %1, expected 2 to %2 for %3")
            .arg(*output.size)
            .arg(largest)
            .arg(QLatin1String(format.name));
    }
    if (format.codes == Codes::Only && output.scale != 0 && !isCodeScale(output.scale)) {
        return QStringLiteral("found --scale %1, expected a power of two less one, 3 to 16777215, "
                              "for %2")
            .arg(output.scale)
            .arg(QLatin1String(format.name));
    }
    return {};
}

} // namespace

void addOutputOptions(CommandLine& line) {
    line.addOption("to",
                   "Format of the output, by short name or code (see tintwell-cli formats); else "
                   "its extension tells.",
                   "FORMAT");
    line.addOption("size",
                   "Points per axis (3D, 2 to 256) or entries (1D, 2 to 1048576); else as the "
                   "input has, or 33 and 1024 where it is of the other kind.",
                   "N");
    line.addOption("out-order",
                   "Orders of the output: rgb or bgr for the numbers of a sample, red-fastest or "
                   "blue-fastest for the lattice, or one of each with a comma; else as the format "
                   "has them.",
                   "ORDER");
    line.addOption("scale", "Write integers of value x N where the format has them.", "N");
    line.addOption("force", "Replace existing files.");
}

std::optional<Output> outputOptions(const CommandLine& line) {
    Output output;
    output.formatName = line.value("to");
    output.overwrite = line.isSet("force");

    const std::optional<int> size =
        line.number("size", 2, largestSize(tintwell::TableKind::OneD), 0);
    const std::optional<int> scale = line.number("scale", 1, std::numeric_limits<int>::max(), 0);
    if (!size || !scale) {
        return std::nullopt;
    }
    if (*size > 0) {
        output.size = size;
    }
    output.scale = *scale;

    const std::optional<Orders> orders = ordersOption(line, "out-order");
    if (!orders) {
        return std::nullopt;
    }
    output.orders = *orders;
    return output;
}

std::optional<Orders> ordersOption(const CommandLine& line, const char* option) {
    const std::optional<Orders> orders = ordersByName(line.value(option));
    if (!orders) {
        line.wrong(QStringLiteral("found --%1 %2, expected rgb, bgr, red-fastest, blue-fastest, or "
                                  "one of each pair with a comma")
                       .arg(QLatin1String(option), line.value(option)));
    }
    return orders;
}

std::optional<int> targetFormat(const CommandLine& line, const Output& output, const QString& path,
                                std::optional<int> from) {
    QString problem;
    const std::optional<int> code =
        formatOfOutput(path, output.formatName, from.value_or(-1), problem);
    if (code) {
        problem = problemWith(output, *formatOf(*code));
    }
    if (!problem.isEmpty()) {
        line.wrong(problem);
        return std::nullopt;
    }
    return code;
}

bool writeTable(const Output& output, int formatCode, const QString& source, const QString& path,
                Read_LUTFile& lut) {
    const Format& format = *formatOf(formatCode);
    Read_LUTFile shaped(nullptr);
    Read_LUTFile* const table = shapeFor(format, output.size, source, lut, shaped);
    if (table == nullptr) {
        return false;
    }
    noteQuirks(format, output.scale, path, *table);
    noteLostScale(format, path, *table);
    return saveLut({path, output.overwrite}, formatCode, output.orders,
                   scaleIn(format, output.scale), *table);
}

} // namespace cli
