#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

bool Read_LUTFile::Read_1dLut(QString, bool) {
    return false;
}

bool Write_LUTFile::Write_1dLut(QString, Read_LUTFile&) {
    return false;
}
