#include "cli/range.h"

#include "cli/report.h"

namespace cli {

namespace {

using tintwell::Format;
using tintwell::Range;
using tintwell::TableKind;

Channels triple(const float* values) {
    return {values[0], values[1], values[2]};
}

} // namespace

QString text(float value) {
    return QString::number(static_cast<double>(value), 'g', 6);
}

QString text(const Channels& values) {
    const bool same = values[0] == values[1] && values[1] == values[2];
    return same ? text(values[0])
                : QStringLiteral("%1 %2 %3").arg(text(values[0]), text(values[1]), text(values[2]));
}

StatedRange rangeOf(const Read_LUTFile& lut, TableKind kind) {
    return kind == TableKind::ThreeD ? StatedRange{triple(lut.domainMin3D), lut.statedMax3D()}
                                     : StatedRange{triple(lut.domainMin1D), lut.statedMax1D()};
}

QString text(const StatedRange& range) {
    return text(range.min) + QStringLiteral(" to ") + text(range.max);
}

const char* nameOf(const StatedRange& range, const Format& format) {
    if (format.range == Range::Input) {
        return "domain";
    }
    if (range.isUnit()) {
        return nullptr;
    }
    return format.range == Range::Scale ? "scale" : "range";
}

QString remarkOn(const StatedRange& range, const Format& format) {
    if (range.isUnit() || format.range == Range::Scale) {
        return {};
    }
    return QStringLiteral("samples are clamped to the %1 %2 and divided by its width; its start is "
                          "not subtracted")
        .arg(QLatin1String(nameOf(range, format)), text(range));
}

void noteRange(const QString& path, int formatCode, const Read_LUTFile& lut) {
    const Format& format = *tintwell::formatOf(formatCode);
    const TableKind kind = lut.size3D > 0 ? TableKind::ThreeD : TableKind::OneD;
    const QString remark = remarkOn(rangeOf(lut, kind), format);
    if (!remark.isEmpty()) {
        noteFile(path, remark);
    }
}

} // namespace cli
