#pragma once

#include <QObject>

class Read_LUTFile;

/// Table arithmetic in single precision. Stateless: it works on its arguments alone. An operation
/// does nothing if the table it needs is missing or has only a size.
class LutCalc : public QObject {
    Q_OBJECT

public:
    explicit LutCalc(QObject* parent = nullptr);

    /// Evaluates the 3D table at the colour \a in (three floats in the table's input domain) by
    /// tetrahedral interpolation and stores the result in \a out (three floats, in stored channel
    /// order). Inputs outside the domain get the value at its edge; a NaN input, or the one value
    /// of a zero-width domain, gets the value at the lower edge.
    void Lut3D_Tetrahedral(const float* in, float* out, const Read_LUTFile& lut);

    /// The same look-up for codes on the scale 0..255 (three in \a in, three in \a out), with
    /// samples truncated to codes and integer arithmetic from there on. Lattice points are 255 /
    /// (size3D - 1) codes apart, truncated, so codes do not map onto 0..1 exactly; codes past the
    /// last point get its value. Leaves \a out unchanged for tables of one point or more than 256.
    void Lut3D_Tetrahedral_Int(const unsigned long* in, unsigned long* out,
                               const Read_LUTFile& lut);

    // Whole tables. Each operation fills a table that its owner has allocated for the stated size,
    // without clamping, reordering or changing the domain. New tables cover the inputs 0..1, with
    // point i of n at i / (n - 1), whatever the domain of their source; a single point is at 0.

    /// Resamples the 3D table of \a src into `dst.data3D` (`dst.size3D`).
    void Lut3D_Out(const Read_LUTFile& src, Read_LUTFile& dst);
    /// Composes two 3D tables into `result.data3D` (`result.size3D`): \a first is applied, then
    /// \a second.
    void Lut3D_Merge(const Read_LUTFile& first, const Read_LUTFile& second, Read_LUTFile& result);
    /// Fills `lut.data3D` with the identity.
    void Lut3D_OnebyOne(Read_LUTFile& lut);

    /// Fills `lut.data1D` with the identity on every channel.
    void Lut1D_OnebyOne(Read_LUTFile& lut);
    /// Evaluates the curve of each channel at its own input by linear interpolation: three floats
    /// in the 1D domain to three floats. Inputs outside the domain get the value at its edge.
    void Lut1D_liner(const float* in, float* out, const Read_LUTFile& lut);
    /// Resamples the 1D table of \a src into `dst.data1D` (`dst.size1D`).
    void Lut1D_Out(const Read_LUTFile& src, Read_LUTFile& dst);
    /// Fills `lut.data3D` with the separable table of three curves: \a table has \a length rows of
    /// three floats, and lattice index x uses the row at position x / (size3D - 1) of the last
    /// row's index, rounded down.
    void Lut1D_to_Lut3D(const float* const* table, int length, Read_LUTFile& lut);
    /// Fills `dst.data1D` (`dst.size1D`) with the grey diagonal of the 3D table of \a src.
    void Lut3D_to_Lut1D(const Read_LUTFile& src, Read_LUTFile& dst);

    // Device words: a table as a flat array of 16-bit words of \a bits bits, in native byte order.
    // 3D: channel c of point (i, j, k) is word ((i * n + j) * n + k) * 3 + c. 1D: channel c of
    // entry i is word 3 * i + c. Gamma: one word per entry, from channel 0. The table and the
    // buffer must be large enough for the container's size.
    //
    // Packing stores the low 16 bits of sample x (2^bits - 1), truncated toward zero: no rounding,
    // no clamping. Unpacking divides by 2^bits - 1.

    void Lut3D_to_Uart(unsigned short* words, int bits, const Read_LUTFile& lut);
    void Uart_to_Lut3D(const unsigned short* words, int bits, Read_LUTFile& lut);
    void Lut1D_to_Uart(unsigned short* words, int bits, const Read_LUTFile& lut);
    void Uart_to_Lut1D(const unsigned short* words, int bits, Read_LUTFile& lut);
    void Gamma_to_Uart(unsigned short* words, int bits, const Read_LUTFile& lut);
    /// Each word sets all three channels.
    void Uart_to_Gamma(const unsigned short* words, int bits, Read_LUTFile& lut);
};
