#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

bool Read_LUTFile::Read_Csp(QString, bool) {
    return false;
}
