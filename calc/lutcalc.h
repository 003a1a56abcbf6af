#pragma once

#include <QObject>

class Read_LUTFile;

/// Table arithmetic in single precision. Keeps no state; works on its arguments alone. Without the
/// table that it names, or with only its size, an operation does nothing.
class LutCalc : public QObject {
    Q_OBJECT

public:
    explicit LutCalc(QObject* parent = nullptr);

    /// Evaluates the 3D table at the colour \a in (three floats in the table's input domain) by
    /// tetrahedral interpolation into \a out (three floats, in stored channel order). Inputs
    /// outside the domain take the table's edge; a zero-width domain or a NaN input takes the
    /// lower edge.
    void Lut3D_Tetrahedral(const float* in, float* out, Read_LUTFile& lut);

    /// The same look-up for codes on the scale 0..255 (three to \a in, three from \a out), with
    /// samples truncated to codes and integer arithmetic after that. Lattice points are
    /// 255 / (size3D - 1) codes apart, truncated, so codes do not map onto 0..1 exactly; codes past
    /// the last point take it. Leaves \a out alone for tables of one point or more than 256.
    void Lut3D_Tetrahedral_Int(const unsigned long* in, unsigned long* out, Read_LUTFile& lut);

    // Whole tables. Each operation fills a table that its owner has allocated for the size it
    // names, without clamping, reordering or touching the domain. New tables cover the inputs 0..1,
    // point i of n at i / (n - 1), whatever the domain of their source is; a single point is at 0.

    /// Resamples the 3D table of \a src into `dst.data3D` (`dst.size3D`).
    void Lut3D_Out(Read_LUTFile& src, Read_LUTFile& dst);
    /// Composes two 3D tables into `result.data3D` (`result.size3D`): \a first, then \a second.
    void Lut3D_Merge(Read_LUTFile& first, Read_LUTFile& second, Read_LUTFile& result);
    /// Fills `lut.data3D` with the identity.
    void Lut3D_OnebyOne(Read_LUTFile& lut);

    /// Fills `lut.data1D` with the identity on every channel.
    void Lut1D_OnebyOne(Read_LUTFile& lut);
    /// Evaluates the curve of each channel at its own input by linear interpolation: three floats
    /// in the 1D domain to three floats. Outside the domain lies its edge.
    void Lut1D_liner(const float* in, float* out, Read_LUTFile& lut);
    /// Resamples the 1D table of \a src into `dst.data1D` (`dst.size1D`).
    void Lut1D_Out(Read_LUTFile& src, Read_LUTFile& dst);
    /// Fills `lut.data3D` with the separable table of three curves: \a table has \a length rows of
    /// three floats, and lattice index x takes the row at or below x / (size3D - 1) of the last
    /// one.
    void Lut1D_to_Lut3D(const float* const* table, int length, Read_LUTFile& lut);
    /// Fills `dst.data1D` (`dst.size1D`) with the grey diagonal of the 3D table of \a src.
    void Lut3D_to_Lut1D(Read_LUTFile& src, Read_LUTFile& dst);

    // Device words: a table as a flat array of 16-bit words of \a bits bits, in native byte order.
    // 3D: channel c of point (i, j, k) is word ((i * n + j) * n + k) * 3 + c. 1D: channel c of
    // entry i is word 3 * i + c. Gamma: one word an entry, for channel 0. The table and the buffer
    // must be large enough for the container's size.
    //
    // Packing takes the low 16 bits of sample x (2^bits - 1), truncated toward zero: no rounding,
    // no clamping. Unpacking divides by 2^bits - 1.

    void Lut3D_to_Uart(unsigned short* words, int bits, Read_LUTFile& lut);
    void Uart_to_Lut3D(const unsigned short* words, int bits, Read_LUTFile& lut);
    void Lut1D_to_Uart(unsigned short* words, int bits, Read_LUTFile& lut);
    void Uart_to_Lut1D(const unsigned short* words, int bits, Read_LUTFile& lut);
    void Gamma_to_Uart(unsigned short* words, int bits, Read_LUTFile& lut);
    /// Each word goes to all three channels.
    void Uart_to_Gamma(const unsigned short* words, int bits, Read_LUTFile& lut);
};
