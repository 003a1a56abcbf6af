#include "calc/look_up.h"

#include "lut/read_lutfile.h"

void tintwell::lookUp(const Read_LUTFile& lut, const float* in, float* out) {
    if (lut.hasTable3D()) {
        lookUp3D(lut, in, out);
    } else {
        lookUp1D(lut, in, out);
    }
}
