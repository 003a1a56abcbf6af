#include "cli/output.h"

#include "calc/compare.h"
#include "calc/measure.h"
#include "cli/input.h"
#include "cli/report.h"
#include "cli/shape.h"
#include "cli/target.h"
#include "cli/words.h"
#include "lut/words.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace cli {

namespace {

using tintwell::Format;
using tintwell::IntegerSamples;

/// Finer than any real number printed with six digits needs.
constexpr int usualScale = 65535;

/// What real numbers may lose as they are printed: six decimals or six digits.
constexpr float realPrecision = 1e-6F;

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

/// What a table loses in a file: the notes on writing it.
class Losses {
public:
    Losses(const Format& format, int scale, const Read_LUTFile& lut)
        : m_format(format), m_scale(scale), m_lut(lut) {}

    QStringList notes(std::optional<int> askedScale) const {
        QStringList notes = {
            scaleIgnored(askedScale), scaleUntold(), scaleChanged(), wrongLength(),
            curvesDropped(),          clamped(),     rounded(),      readElsewhere()};
        notes.removeAll(QString());
        return notes;
    }

private:
    IntegerSamples integers() const { return m_format.traits.integers; }
    bool writesIntegers() const { return m_scale > 1; }

    QString scaleIgnored(std::optional<int> asked) const {
        return asked.value_or(1) > 1 && integers() == IntegerSamples::Never
                   ? QStringLiteral("--scale has no effect on %1, which holds real numbers only")
                         .arg(QLatin1String(m_format.name))
                   : QString();
    }

    QString scaleUntold() const {
        return writesIntegers() && integers() == IntegerSamples::ScaleLost
                   ? QStringLiteral("the file does not state its scale: readers will clamp its "
                                    "integers")
                   : QString();
    }

    /// Readers find another scale than the one written.
    QString scaleChanged() const {
        if (integers() == IntegerSamples::Always && m_lut.hasTable1D()) {
            const float last = m_lut.data1D[m_lut.size1D - 1][0];
            return last > 0.5F && last <= 1
                       ? QString()
                       : QStringLiteral("the last value, %1, gives readers a wrong scale: expected "
                                        "more than 0.5 and at most 1")
                             .arg(last);
        }
        if (integers() != IntegerSamples::LargestIsFull || !m_lut.hasTable1D()) {
            return {};
        }
        const float largest = tintwell::largestSample1D(m_lut);
        return largest != 1
                   ? QStringLiteral("readers take the largest value, %1, as 1").arg(largest)
                   : QString();
    }

    QString wrongLength() const {
        return m_format.fixedSize > 0 && m_lut.size1D != m_format.fixedSize
                   ? QStringLiteral("found %1, but readers expect %2")
                         .arg(entriesText(m_lut.size1D))
                         .arg(m_format.fixedSize)
                   : QString();
    }

    QString curvesDropped() const {
        return integers() == IntegerSamples::Always && !tintwell::hasEqualCurves(m_lut)
                   ? QStringLiteral("%1 has one curve: only the red one is written")
                         .arg(QLatin1String(m_format.name))
                   : QString();
    }

    QString clamped() const {
        const tintwell::Range samples = sampleRange(m_lut, m_format.kind);
        const bool isTooLarge = samples.to > 1 && integers() != IntegerSamples::LargestIsFull;
        return samples.from < 0 || isTooLarge
                   ? QStringLiteral("samples go from %1 to %2: readers will clamp them to 0 to 1")
                         .arg(tintwell::formatted(static_cast<float>(samples.from)),
                              tintwell::formatted(static_cast<float>(samples.to)))
                   : QString();
    }

    QString rounded() const {
        if (!writesIntegers() && m_format.kind == tintwell::TableKind::ThreeD) {
            return {}; // six decimals
        }
        if (writesIntegers() && tintwell::statisticsOf(m_lut, m_format.kind).nonFiniteCount > 0) {
            return QStringLiteral("integers cannot hold samples that are not finite");
        }
        const float loss = tintwell::writingLoss(m_lut, m_format.kind, m_scale);
        return loss > realPrecision ? QStringLiteral("rounding changes samples by up to %1")
                                          .arg(tintwell::formatted(loss))
                                    : QString();
    }

    /// What other programs make of the numbers.
    QString readElsewhere() const {
        const tintwell::FormatTraits& traits = m_format.traits;
        if (integers() == IntegerSamples::LargestIsFull && writesIntegers() &&
            m_scale == m_lut.size1D - 1) {
            return {}; // they take the length for the scale
        }
        return QLatin1String(writesIntegers() ? traits.integersElsewhere : traits.realsElsewhere);
    }

    const Format& m_format;
    int m_scale;
    const Read_LUTFile& m_lut;
};

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

/// Reads a written table again, and tells how far it is off. Returns why it is not as it should
/// be; empty if it is.
QString verify(const Output& output, const Format& format, const QString& place,
               const QString& path, const Read_LUTFile& written, const Notes& notes) {
    const int scale = scaleIn(format, output.scale);
    const bool isScaled = scale > 1 && format.traits.integers != IntegerSamples::ScaleLost;
    const float precision = realPrecision + (isScaled ? 1 / static_cast<float>(scale) : 0);
    Table read;
    if (QString problem = readTable({&format, output.orders}, place, read); !problem.isEmpty()) {
        return QStringLiteral("read again: ") + problem;
    }
    const float difference = tintwell::tableDifference(written, read.lut, format.kind);
    const QString found = difference == 0 ? QStringLiteral("read again, it is the same")
                                          : QStringLiteral("read again, it is off by up to %1")
                                                .arg(tintwell::formatted(difference));
    if (!(difference <= precision)) {
        return found + QStringLiteral(", expected at most ") + tintwell::formatted(precision);
    }
    notes.tell(path, found);
    return {};
}

bool saveTable(const Output& output, const Format& format, const QString& path, Read_LUTFile& lut,
               Notes& notes) {
    LUTFILE_ST st;
    st.formatCode = codeOf(format);
    st.outputScale = scaleIn(format, output.scale);
    setOrders(st, output.orders, format.writerOrders);
    const auto write = [&](const QString& place) {
        st.path = place;
        Write_LUTFile writer(nullptr);
        writer.WriteFile(st, lut);
        return writer.lastError.isEmpty() && output.verify
                   ? verify(output, format, place, path, lut, notes)
                   : writer.lastError;
    };
    return saveFile({path, output.overwrite}, write, notes);
}

} // namespace

std::optional<Output> outputOptions(const CommandLine& line) {
    Output output;
    output.overwrite = line.isSet("force");
    output.verify = line.isSet("verify");
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
                const QString& path, Read_LUTFile& lut, Notes& notes) {
    Read_LUTFile made(nullptr);
    Read_LUTFile* const table = reshaped(format, output.size, source, lut, made, notes);
    if (table == nullptr) {
        return false;
    }
    const Losses losses(format, scaleIn(format, output.scale), *table);
    for (const QString& note : losses.notes(output.scale)) {
        notes.add(path, note);
    }
    if (!notes.allowWriting()) {
        return notes.fail(path, QStringLiteral("not written: ") + notes.reason());
    }
    return saveTable(output, format, path, *table, notes);
}

} // namespace cli
