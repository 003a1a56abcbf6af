// Reads with any format, resamples, and writes with any format. Six letters choose the two formats
// by their codes, the orders, the scale, the new size, and what happens to a curve.

#include "harness.h"

#include "calc/lutcalc.h"
#include "lut/catalogue.h"
#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

#include <QByteArray>

namespace {

/// Larger tables run the same code, only longer.
constexpr int sizeLimit3D = 40;
constexpr int sizeLimit1D = 5000;

LUTFILE_ST inOrders(LUTFILE_ST st, int choice) {
    st.defaultOrder = (choice & 4) != 0;
    st.dataOrder = (choice & 2) != 0;
    st.tableOrder = (choice & 1) != 0;
    return st;
}

bool isSmall(const Read_LUTFile& lut) {
    return lut.size3D <= sizeLimit3D && lut.size1D <= sizeLimit1D;
}

void makeTable3D(Read_LUTFile& lut, int size) {
    lut.setSize3D(size);
    fuzz::require(lut.allocate3D(), "a small lattice is allocated");
}

void makeTable1D(Read_LUTFile& lut, int size) {
    lut.setSize1D(size);
    fuzz::require(lut.allocate1D(), "a small curve is allocated");
}

/// What the program does, and the library's other operations for such tables.
void resample(Read_LUTFile& lut, Read_LUTFile& result, int size, bool otherKind) {
    LutCalc calc;
    if (lut.data3D != nullptr) {
        makeTable3D(result, size);
        calc.Lut3D_Out(lut, result);
    }
    if (lut.data1D != nullptr) {
        makeTable1D(result, size);
        calc.Lut1D_Out(lut, result);
    }
    if (otherKind && lut.data3D != nullptr && lut.data1D == nullptr) {
        makeTable1D(result, size);
        calc.Lut3D_to_Lut1D(lut, result);
    }
    if (otherKind && lut.data1D != nullptr && lut.data3D == nullptr) {
        makeTable3D(result, size);
        calc.Lut1D_to_Lut3D(lut.data1D, lut.size1D, result);
    }
}

} // namespace

void fuzz::run(std::string_view input) {
    constexpr long scales[] = {1, 0, 2, 255, 1023, 65535, 1L << 40};
    Choices choices(input);
    const int reader = choices.oneOf(tintwell::formatCount);
    const int writer = choices.oneOf(tintwell::formatCount);
    const int orders = choices.oneOf(64);
    const long scale = scales[choices.oneOf(7)];
    const int size = 1 + choices.oneOf(20);
    const bool otherKind = choices.oneOf(2) == 1;

    const MemoryFile source(choices.rest());
    Read_LUTFile lut(nullptr);
    const LUTFILE_ST from = inOrders(request(source.path(), reader), orders % 8);
    Read_LUTFile probed(nullptr);
    if (!probed.ReadFile(from, true) || !isSmall(probed) || !lut.ReadFile(from, false) ||
        !isSmall(lut)) {
        return;
    }
    Read_LUTFile result(nullptr);
    resample(lut, result, size, otherKind);
    touch(result);

    for (Read_LUTFile* table : {&lut, &result}) {
        const MemoryFile target;
        LUTFILE_ST to = inOrders(request(target.path(), writer), orders / 8);
        to.outputScale = scale;
        const bool written = Write_LUTFile(nullptr).WriteFile(to, *table);
        require(written == (tintwell::formatOf(writer)->write != nullptr), "every writer writes");
        Read_LUTFile again(nullptr);
        const bool readAgain = written && again.ReadFile(to, false);
        const bool hasLattice =
            table->size3D > 1 && tintwell::formatOf(writer)->kind == tintwell::TableKind::ThreeD;
        if (written && hasLattice) {
            require(readAgain, "what was written is read again");
            require(again.size3D == table->size3D, "and is of the same size");
        }
        touch(again);
    }
}
