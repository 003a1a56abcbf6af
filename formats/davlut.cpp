// The DavLut format, 3D:
//
//     # Authors: norvane
//
//     3DLUTSIZE 2
//     0.000000 0.000000 0.000000
//     0.000000 0.000000 1.000000
//     ...
//
// Samples are k fastest. Lines before the size line are ignored.

#include "formats/sized_lattice.h"

namespace {

constexpr tintwell::SizedLattice davLut = {"# Authors: norvane\n\n", "3DLUTSIZE",
                                           "a 3DLUTSIZE line", tintwell::FormatCode::DavLut};

} // namespace

bool Read_LUTFile::Read_DavLut(QString path, bool probe) {
    return tintwell::readSizedLattice(davLut, path, probe, *this);
}

bool Write_LUTFile::Write_DavLut(QString path, Read_LUTFile& lut) {
    return tintwell::writeSizedLattice(davLut, path, lut, *this);
}
