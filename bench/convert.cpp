#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

/// convert IN OUT: reads a cube file and writes it as another.
int main(int argc, char* argv[]) {
    if (argc != 3) {
        return 1;
    }
    LUTFILE_ST st;
    st.path = QString::fromLocal8Bit(argv[1]);
    Read_LUTFile lut(nullptr);
    if (!lut.ReadFile(st, false)) {
        return 1;
    }
    st.path = QString::fromLocal8Bit(argv[2]);
    return Write_LUTFile(nullptr).WriteFile(st, lut) ? 0 : 1;
}
