#include "cli/shape.h"

#include "calc/compare.h"
#include "calc/make_table.h"
#include "calc/measure.h"
#include "calc/sizes.h"
#include "cli/report.h"
#include "cli/words.h"
#include "lut/words.h"

namespace cli {

namespace {

using tintwell::Format;
using tintwell::TableKind;

void noteLosses(TableKind kind, const QString& path, const Read_LUTFile& lut, int size,
                Notes& notes) {
    if (lut.hasTable3D() && lut.hasTable1D()) {
        noteBothKinds(path, kind, notes);
    } else if (kind == TableKind::ThreeD && !lut.hasTable3D()) {
        notes.add(path,
                  QStringLiteral("the 1D table becomes a lattice of %1").arg(sizeText(kind, size)));
    } else if (kind == TableKind::OneD && !lut.hasTable1D()) {
        notes.add(path, QStringLiteral("only the grey axis of the 3D table is kept, in %1")
                            .arg(sizeText(kind, size)));
    }
}

/// "; 49 points per axis would keep it under 1/1023"
QString betterSize(const Read_LUTFile& lut) {
    constexpr float small = 1.0F / 1023;
    const std::optional<int> size = tintwell::sizeBelow(lut, small);
    return (size ? QStringLiteral("; ") + sizeText(TableKind::ThreeD, *size)
                 : QStringLiteral("; no usual size up to ") +
                       sizeText(TableKind::ThreeD, tintwell::usualSizes.back())) +
           QStringLiteral(" would keep it under 1/1023");
}

} // namespace

int sizeIn(const Format& format, std::optional<int> asked, int otherwise) {
    return asked.value_or(format.fixedSize > 0 ? format.fixedSize : otherwise);
}

void noteBothKinds(const QString& path, TableKind kind, Notes& notes) {
    notes.add(path, QStringLiteral("only the %1 table is used; the file has both kinds")
                        .arg(QLatin1String(kindName(kind))));
}

void noteError(const QString& path, float error, Notes& notes, const Remedy& remedy) {
    constexpr float visible = 1.0F / 255;
    if (error > visible) {
        notes.add(path, QStringLiteral("between its points the new table is off by up to %1%2")
                            .arg(tintwell::formatted(error), remedy ? remedy() : QString()));
    }
}

Read_LUTFile* reshaped(const Format& format, std::optional<int> size, const QString& path,
                       Read_LUTFile& lut, Read_LUTFile& made, Notes& notes) {
    const int present = tintwell::sizeOf(lut, format.kind);
    const int wanted = sizeIn(format, size, present > 0 ? present : usualSize(format.kind));
    noteLosses(format.kind, path, lut, wanted, notes);
    if (present == wanted) {
        return &lut;
    }
    if (!tintwell::reshape(lut, made, format.kind, wanted)) {
        notes.fail(path, made.lastError);
        return nullptr;
    }
    noteError(path, tintwell::resamplingError(lut, made, format.kind), notes,
              format.kind == TableKind::ThreeD ? [&lut] { return betterSize(lut); } : Remedy());
    return &made;
}

} // namespace cli
