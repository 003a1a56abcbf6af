#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

bool Read_LUTFile::Read_Spi3D(QString, bool) {
    return false;
}

bool Write_LUTFile::Write_Spi3D(QString, Read_LUTFile&) {
    return false;
}
