#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

bool Read_LUTFile::Read_Csv(QString, bool) {
    return false;
}

bool Write_LUTFile::Write_Csv(QString, Read_LUTFile&) {
    return false;
}
