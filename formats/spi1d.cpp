#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

bool Read_LUTFile::Read_Spi1D(QString, bool) {
    return false;
}

bool Write_LUTFile::Write_Spi1D(QString, Read_LUTFile&) {
    return false;
}
