#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

bool Read_LUTFile::Read_DavLut(QString, bool) {
    return false;
}

bool Write_LUTFile::Write_DavLut(QString, Read_LUTFile&) {
    return false;
}
