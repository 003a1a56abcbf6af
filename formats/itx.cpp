// The itx format, 3D:
//
//     LUT_3D_SIZE 2
//     0.000000 0.000000 0.000000
//     0.000000 0.000000 1.000000
//     ...
//
// Samples are k fastest. The size line is that of the cube format, and the only keyword: other
// lines before it are ignored.

#include "formats/sized_lattice.h"

namespace {

constexpr tintwell::SizedLattice itx = {"", "LUT_3D_SIZE", "a LUT_3D_SIZE line",
                                        tintwell::FormatCode::Itx};

} // namespace

bool Read_LUTFile::Read_Itx(QString path, bool probe) {
    return tintwell::readSizedLattice(itx, path, probe, *this);
}

bool Write_LUTFile::Write_Itx(QString path, Read_LUTFile& lut) {
    return tintwell::writeSizedLattice(itx, path, lut, *this);
}
