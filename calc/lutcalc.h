#pragma once

#include <QObject>

class Read_LUTFile;

/// Table arithmetic in single precision. Keeps no state; works on its arguments alone.
class LutCalc : public QObject {
    Q_OBJECT

public:
    explicit LutCalc(QObject* parent = nullptr);

    /// Evaluates the 3D table at the colour \a in (three floats in the table's input domain) by
    /// tetrahedral interpolation into \a out (three floats, in stored channel order). Inputs
    /// outside the domain take the table's edge; a zero-width domain or a NaN input takes the
    /// lower edge. The table must hold at least one point per axis.
    void Lut3D_Tetrahedral(const float* in, float* out, Read_LUTFile& lut);

    /// Fills \a dst.data3D (allocated for `dst.size3D`) with \a src evaluated at the points
    /// i/(n-1), j/(n-1), k/(n-1). The new lattice covers 0..1 whatever the domain of \a src is.
    /// A one-point \a dst takes the value at 0. Does nothing when either size is below 1.
    void Lut3D_Out(Read_LUTFile& src, Read_LUTFile& dst);
};
