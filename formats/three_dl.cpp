#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

bool Read_LUTFile::Read_3dl(QString, bool) {
    return false;
}
