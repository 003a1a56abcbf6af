#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

bool Read_LUTFile::Read_Mga(QString, bool) {
    return false;
}

bool Write_LUTFile::Write_Mga(QString, Read_LUTFile&) {
    return false;
}
