#include "cli/shape.h"

#include "calc/lutcalc.h"
#include "cli/report.h"
#include "lut/lattice.h"

namespace cli {

namespace {

using tintwell::Format;
using tintwell::TableKind;

/// A lattice index takes the entry at its own place.
void expand(const Read_LUTFile& curves, Read_LUTFile& lattice) {
    const float* const* const row = curves.data1D;
    tintwell::visitLattice(lattice.size3D, [&](int i, int j, int k) {
        tintwell::fillCell(lattice.data3D[i][j][k], true, row[i][0], row[j][1], row[k][2]);
        return true;
    });
}

bool makeCurves(Read_LUTFile& lut, int size, Read_LUTFile& shaped) {
    if (!allocate(TableKind::OneD, size, shaped)) {
        return false;
    }
    if (lut.size1D > 0) {
        LutCalc().Lut1D_Out(lut, shaped);
    } else {
        LutCalc().Lut3D_to_Lut1D(lut, shaped);
    }
    return true;
}

bool makeLattice(Read_LUTFile& lut, int size, Read_LUTFile& shaped) {
    if (!allocate(TableKind::ThreeD, size, shaped)) {
        return false;
    }
    if (lut.size3D > 0) {
        LutCalc().Lut3D_Out(lut, shaped);
        return true;
    }
    Read_LUTFile curves(nullptr);
    if (!makeCurves(lut, size, curves)) {
        return false;
    }
    expand(curves, shaped);
    return true;
}

void noteLosses(const Format& format, const QString& path, const Read_LUTFile& lut, int size) {
    const bool to3D = format.kind == TableKind::ThreeD;
    if (lut.size3D > 0 && lut.size1D > 0) {
        noteBothKinds(path, format.kind);
    } else if (to3D && lut.size3D <= 0) {
        noteFile(path,
                 QStringLiteral("the 1D table becomes a lattice of %1 points per axis").arg(size));
    } else if (!to3D && lut.size1D <= 0) {
        noteFile(
            path,
            QStringLiteral("of the 3D table only the grey axis is kept, in %1 entries").arg(size));
    }
}

} // namespace

QString entriesText(int size) {
    return size == 1 ? QStringLiteral("1 entry") : QStringLiteral("%1 entries").arg(size);
}

bool allocate(TableKind kind, int size, Read_LUTFile& lut) {
    if (kind == TableKind::ThreeD) {
        lut.setSize3D(size);
        return lut.allocate3D();
    }
    lut.setSize1D(size);
    return lut.allocate1D();
}

int sizeIn(const Format& format, std::optional<int> asked, int otherwise) {
    return asked.value_or(format.size > 0 ? format.size : otherwise);
}

void noteBothKinds(const QString& path, TableKind kind) {
    noteFile(path, QStringLiteral("only the %1 table is taken, the file has both kinds")
                       .arg(QLatin1String(tintwell::kindName(kind))));
}

Read_LUTFile* shapeFor(const Format& format, std::optional<int> size, const QString& path,
                       Read_LUTFile& lut, Read_LUTFile& shaped) {
    const bool to3D = format.kind == TableKind::ThreeD;
    const int present = to3D ? lut.size3D : lut.size1D;
    const int wanted = sizeIn(format, size, present > 0 ? present : usualSize(format.kind));
    noteLosses(format, path, lut, wanted);
    if (present == wanted) {
        return &lut;
    }
    if (to3D ? makeLattice(lut, wanted, shaped) : makeCurves(lut, wanted, shaped)) {
        return &shaped;
    }
    reportFile(path, shaped.lastError);
    return nullptr;
}

} // namespace cli
