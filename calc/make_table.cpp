#include "calc/make_table.h"

#include "calc/chain.h"
#include "calc/lutcalc.h"
#include "lut/lattice.h"
#include "lut/read_lutfile.h"

#include <algorithm>
#include <utility>

namespace tintwell {

namespace {

/// Fills the points at lattice index x of each axis from entry x of that channel's curve.
void expand(const Read_LUTFile& curves, Read_LUTFile& lattice) {
    const float* const* const entry = curves.data1D;
    visitLattice(lattice.size3D, [&](int i, int j, int k) {
        fillCell(lattice.data3D[i][j][k], true, entry[i][0], entry[j][1], entry[k][2]);
        return true;
    });
}

bool makeCurves(const Read_LUTFile& from, Read_LUTFile& lut, int size) {
    if (!makeZeros(lut, TableKind::OneD, size)) {
        return false;
    }
    if (from.hasTable1D()) {
        LutCalc().Lut1D_Out(from, lut);
    } else {
        LutCalc().Lut3D_to_Lut1D(from, lut);
    }
    return true;
}

bool makeLattice(const Read_LUTFile& from, Read_LUTFile& lut, int size) {
    if (!makeZeros(lut, TableKind::ThreeD, size)) {
        return false;
    }
    if (from.hasTable3D()) {
        LutCalc().Lut3D_Out(from, lut);
        return true;
    }
    Read_LUTFile curves(nullptr);
    if (!makeCurves(from, curves, size)) {
        return lut.fail(curves.lastError);
    }
    expand(curves, lut);
    return true;
}

void swapChannels(Read_LUTFile& lut) {
    visitLattice(lut.size3D, [&](int i, int j, int k) {
        float* const cell = lut.data3D[i][j][k];
        std::swap(cell[0], cell[2]);
        return true;
    });
}

void swapAxes(Read_LUTFile& lut) {
    visitLattice(lut.size3D, [&](int i, int j, int k) {
        if (i < k) {
            float* const cell = lut.data3D[i][j][k];
            std::swap_ranges(cell, cell + 3, lut.data3D[k][j][i]);
        }
        return true;
    });
}

void copyLattice(const Read_LUTFile& from, Read_LUTFile& lut) {
    visitLattice(lut.size3D, [&](int i, int j, int k) {
        std::copy_n(from.data3D[i][j][k], 3, lut.data3D[i][j][k]);
        return true;
    });
}

} // namespace

bool makeZeros(Read_LUTFile& lut, TableKind kind, int size) {
    if (kind == TableKind::ThreeD) {
        lut.setSize3D(size);
        return lut.allocate3D();
    }
    lut.setSize1D(size);
    return lut.allocate1D();
}

bool makeIdentity(Read_LUTFile& lut, TableKind kind, int size) {
    if (!makeZeros(lut, kind, size)) {
        return false;
    }
    if (kind == TableKind::ThreeD) {
        LutCalc().Lut3D_OnebyOne(lut);
    } else {
        LutCalc().Lut1D_OnebyOne(lut);
    }
    return true;
}

bool reshape(const Read_LUTFile& from, Read_LUTFile& lut, TableKind kind, int size) {
    return kind == TableKind::ThreeD ? makeLattice(from, lut, size) : makeCurves(from, lut, size);
}

bool compose(Tables tables, Read_LUTFile& lut, TableKind kind, int size) {
    if (kind == TableKind::OneD) {
        if (!makeIdentity(lut, kind, size)) {
            return false;
        }
        const Chain all(tables);
        std::for_each_n(lut.data1D, size, [&](float* cell) { all.apply(cell); });
        return true;
    }
    if (!makeLattice(*tables.front(), lut, size)) {
        return false;
    }
    const Chain others(tables.subspan(1));
    visitLattice(size, [&](int i, int j, int k) {
        others.apply(lut.data3D[i][j][k]);
        return true;
    });
    return true;
}

bool relay(Read_LUTFile& from, const Swaps& read, const Swaps& written, int size,
           Read_LUTFile& lut) {
    if (!makeZeros(lut, TableKind::ThreeD, size)) {
        return false;
    }
    if (read.axes) {
        swapAxes(from);
    }
    if (size == from.size3D) {
        copyLattice(from, lut);
    } else {
        LutCalc().Lut3D_Out(from, lut);
    }
    if (read.axes) {
        swapAxes(from);
    }
    if (written.axes) {
        swapAxes(lut);
    }
    if (read.channels != written.channels) { // resampling treats all channels alike
        swapChannels(lut);
    }
    return true;
}

void undoLatticeOrder(Read_LUTFile& lut) {
    for (int n = 0; !lut.tableOrder && lut.hasTable1D() && n < lut.size1D; ++n) {
        std::swap(lut.data1D[n][0], lut.data1D[n][2]);
    }
}

} // namespace tintwell
