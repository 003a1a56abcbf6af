// Reads the given .cube file and looks up its middle. Shows that programs can be built against the
// installed library.

#include "calc/lutcalc.h"
#include "formats/hex_float.h"
#include "lut/read_lutfile.h"
#include "lut/write_lutfile.h"

#include <cstdio>

int main(int argc, char* argv[]) {
    LUTFILE_ST st;
    st.path = QString::fromLocal8Bit(argc > 1 ? argv[1] : "");
    Read_LUTFile lut(nullptr);
    if (!lut.ReadFile(st, false) || lut.size3D == 0) {
        return 1;
    }
    const float grey[] = {0.5F, 0.5F, 0.5F};
    float out[3];
    LutCalc().Lut3D_Tetrahedral(grey, out, lut);
    std::printf("%d points, middle %g %g %g\n", lut.size3D, double(out[0]), double(out[1]),
                double(out[2]));
    return 0;
}
