#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

bool Read_LUTFile::Read_NVX3D(QString, bool) {
    return false;
}

bool Write_LUTFile::Write_NVX3D(QString, Read_LUTFile&) {
    return false;
}
