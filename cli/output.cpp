#include "cli/output.h"

#include "calc/measure.h"
#include "cli/report.h"
#include "cli/shape.h"
#include "cli/target.h"
#include "cli/words.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace cli {

namespace {

using tintwell::Format;
using tintwell::IntegerSamples;

/// Finer than any real number printed with six digits needs.
constexpr int usualScale = 65535;

/// The factor a writer is asked for; 1 means real numbers.
int scaleIn(const Format& format, std::optional<int> asked) {
    switch (format.traits.integers) {
    case IntegerSamples::Never:
        return 1;
    case IntegerSamples::Always:
        return asked.value_or(usualScale);
    default:
        return asked.value_or(1);
    }
}

/// Notes that readers will find another scale than the one written.
void noteLostScale(const Format& format, const QString& path, const Read_LUTFile& lut) {
    if (!lut.hasTable1D()) {
        return;
    }
    const float last = lut.data1D[lut.size1D - 1][0];
    if (format.traits.integers == IntegerSamples::Always && !(last > 0.5F && last <= 1)) {
        noteFile(path, QStringLiteral("the last value, %1, gives readers a wrong scale: expected "
                                      "more than 0.5 and at most 1")
                           .arg(last));
    }
    if (format.traits.integers != IntegerSamples::LargestIsFull) {
        return;
    }
    const float largest = tintwell::largestSample1D(lut);
    if (largest != 1) {
        noteFile(path, QStringLiteral("readers take the largest value, %1, as 1").arg(largest));
    }
}

void noteQuirks(const Format& format, std::optional<int> scale, const QString& path,
                const Read_LUTFile& lut) {
    const IntegerSamples integers = format.traits.integers;
    const bool asksForIntegers = scale.value_or(1) > 1;
    if (asksForIntegers && integers == IntegerSamples::Never) {
        noteFile(path, QStringLiteral("--scale has no effect on %1, which holds real numbers only")
                           .arg(QLatin1String(format.name)));
    }
    if (asksForIntegers && integers == IntegerSamples::ScaleLost) {
        noteFile(path, QStringLiteral("the file does not state its scale: readers will clamp its "
                                      "integers"));
    }
    if (format.fixedSize > 0 && lut.size1D != format.fixedSize) {
        noteFile(path, QStringLiteral("found %1, but readers expect %2")
                           .arg(entriesText(lut.size1D))
                           .arg(format.fixedSize));
    }
    if (integers == IntegerSamples::Always && !tintwell::hasEqualCurves(lut)) {
        noteFile(path, QStringLiteral("%1 has one curve: only the red one is written")
                           .arg(QLatin1String(format.name)));
    }
}

/// Whether the last code of a curve, which is full scale at most, gives the scale.
bool isCodeScale(std::int64_t scale) {
    constexpr std::int64_t largest = (1 << 24) - 1; // readers use single precision
    return scale >= 3 && scale <= largest && (scale & (scale + 1)) == 0;
}

/// What the options ask for that the format cannot do; empty if nothing.
QString problemWith(const Output& output, const Format& format) {
    const int largest = largestSize(format.kind);
    if (output.size.value_or(0) > largest) {
        return QStringLiteral("found --size %1, expected 2 to %2 for %3")
            .arg(*output.size)
            .arg(largest)
            .arg(QLatin1String(format.name));
    }
    if (format.traits.integers == IntegerSamples::Always &&
        !isCodeScale(output.scale.value_or(usualScale))) {
        return QStringLiteral("found --scale %1, expected a power of two less one, 3 to 16777215, "
                              "for %2")
            .arg(*output.scale)
            .arg(QLatin1String(format.name));
    }
    return {};
}

QString namesOf(const std::vector<const Format*>& formats) {
    QStringList names;
    for (const Format* const format : formats) {
        names += QLatin1String(format->name);
    }
    return names.join(QStringLiteral(" or "));
}

/// One of several formats that are either all written or all not: \a from if it is among them.
/// Null, with the reason in \a problem, for formats that are not written, and if nothing decides.
const Format* choice(const std::vector<const Format*>& formats, const Format* from,
                     const QString& path, QString& problem) {
    if (formats.empty()) {
        problem = path + QStringLiteral(": ") + unknownExtension(path, "--to");
        return nullptr;
    }
    if (formats.front()->write == nullptr) {
        problem =
            QStringLiteral("the format %1 can be read, but not written").arg(namesOf(formats));
        return nullptr;
    }
    if (formats.size() == 1) {
        return formats.front();
    }
    if (std::find(formats.begin(), formats.end(), from) != formats.end()) {
        return from;
    }
    problem = QStringLiteral("%1: the format may be %2, expected --to").arg(path, namesOf(formats));
    return nullptr;
}

bool saveTable(const Output& output, const Format& format, const QString& path, Read_LUTFile& lut) {
    LUTFILE_ST st;
    st.formatCode = codeOf(format);
    st.outputScale = scaleIn(format, output.scale);
    setOrders(st, output.orders, format.writerOrders);
    return saveFile({path, output.overwrite}, [&](const QString& place) {
        st.path = place;
        Write_LUTFile writer(nullptr);
        writer.WriteFile(st, lut);
        return writer.lastError;
    });
}

} // namespace

std::optional<Output> outputOptions(const CommandLine& line) {
    Output output;
    output.overwrite = line.isSet("force");
    if (const std::optional<QString> name = line.value("to")) {
        output.format = tintwell::formatByName(*name);
        if (output.format == nullptr) {
            line.wrong(unknownFormat(*name));
            return std::nullopt;
        }
    }
    if (!line.number("size", 2, largestSize(tintwell::TableKind::OneD), output.size) ||
        !line.number("scale", 1, std::numeric_limits<int>::max(), output.scale)) {
        return std::nullopt;
    }
    const std::optional<Orders> orders = ordersOption(line, "out-order");
    if (!orders) {
        return std::nullopt;
    }
    output.orders = *orders;
    return output;
}

const Format* targetFormat(const CommandLine& line, const Output& output, const QString& path,
                           const Format* from) {
    QString problem;
    const Format* const format = choice(
        output.format != nullptr ? std::vector{output.format} : tintwell::formatsByExtension(path),
        from, path, problem);
    if (format != nullptr) {
        problem = problemWith(output, *format);
    }
    if (!problem.isEmpty()) {
        line.wrong(problem);
        return nullptr;
    }
    return format;
}

bool writeTable(const Output& output, const Format& format, const QString& source,
                const QString& path, Read_LUTFile& lut) {
    Read_LUTFile made(nullptr);
    Read_LUTFile* const table = reshaped(format, output.size, source, lut, made);
    if (table == nullptr) {
        return false;
    }
    noteQuirks(format, output.scale, path, *table);
    noteLostScale(format, path, *table);
    return saveTable(output, format, path, *table);
}

} // namespace cli
