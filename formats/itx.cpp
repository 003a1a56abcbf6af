// The itx format, 3D:
//
//     LUT_3D_SIZE 2
//     0.000000 0.000000 0.000000
//     0.000000 0.000000 1.000000
//     ...
//
// Samples come k fastest. The size keyword is that of the cube format, and the only one: other
// lines before it mean nothing.

#include "formats/sized_lattice.h"

namespace {

constexpr tintwell::SizedLattice itx = {"", "LUT_3D_SIZE", "a LUT_3D_SIZE line", true, false};

} // namespace

bool Read_LUTFile::Read_Itx(QString path, bool probe) {
    return tintwell::readSizedLattice(itx, path, probe, *this);
}

bool Write_LUTFile::Write_Itx(QString path, Read_LUTFile& lut) {
    return tintwell::writeSizedLattice(itx, path, lut, *this);
}
