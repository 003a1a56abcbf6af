#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

bool Read_LUTFile::Read_Itx(QString, bool) {
    return false;
}

bool Write_LUTFile::Write_Itx(QString, Read_LUTFile&) {
    return false;
}
