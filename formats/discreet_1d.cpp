#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

bool Read_LUTFile::Read_1dLut_Discreet(QString, bool) {
    return false;
}

bool Write_LUTFile::Write_1dLut_Discreet(QString, Read_LUTFile&) {
    return false;
}
