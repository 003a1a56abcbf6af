#pragma once

#include "lut/lutfile_st.h"

#include <QObject>
#include <QString>

#include <cstdint>

class QTextStream;
class Read_LUTFile;

namespace tintwell {
enum class FormatCode : int;
}

/// Writes a container to a file, and provides the emitters that print table entries.
class Write_LUTFile : public QObject {
    Q_OBJECT

public:
    bool dataOrder = true;        ///< emit channels as R, G, B (true) or B, G, R
    bool tableOrder = true;       ///< cell (i, j, k) is data[i][j][k] (true) or data[k][j][i]
    bool defaultOrder = false;    ///< use the format's own pair of orders instead of the two above
    std::int64_t outputScale = 1; ///< below 2: real numbers; else integers of value x scale
    QString lastError; ///< why the last write failed, even if a writer returned true (full disk)

    explicit Write_LUTFile(QObject* parent);

    /// Writes \a lut to \a st.path in the format \a st.formatCode, with the orders and the scale of
    /// \a st. False, with no file touched, for an unknown code, a format without a writer, and a
    /// container that was only probed; false if the file cannot be opened.
    bool WriteFile(LUTFILE_ST st, Read_LUTFile& lut);

    // The writers, next to their readers under formats/. False only if the file cannot be opened.
    bool Write_Cube(QString path, Read_LUTFile& lut);
    bool Write_Mga(QString path, Read_LUTFile& lut);
    bool Write_1dLut_Discreet(QString path, Read_LUTFile& lut);
    bool Write_1dLut(QString path, Read_LUTFile& lut);
    bool Write_DavLut(QString path, Read_LUTFile& lut);
    bool Write_Itx(QString path, Read_LUTFile& lut);
    bool Write_Spi1D(QString path, Read_LUTFile& lut);
    bool Write_Spi3D(QString path, Read_LUTFile& lut);
    bool Write_Csv(QString path, Read_LUTFile& lut);
    bool Write_NVX1D(QString path, Read_LUTFile& lut);
    bool Write_NVX3D(QString path, Read_LUTFile& lut);

    /// Prints 3D cell (i, j, k) without a line end. Below scale 2: three real numbers in fixed
    /// notation, each right-aligned in 8 columns, \a sep between them. From scale 2 on: three
    /// integers (value x scale, truncated toward zero), \a sep after each. Leaves the stream in
    /// fixed notation with field width 0.
    void White3D(float**** data, QTextStream& out, int i, int j, int k, long scale, QString sep);
    /// Prints 1D cell i without a line end, \a sep after each of the three values: real numbers in
    /// the stream's own notation below scale 2, else truncated integers. Of the order flags only
    /// `dataOrder` is used.
    void White1D(float** data, QTextStream& out, int i, long scale, QString sep);
    /// Prints channel 0 of 1D cell i as White1D would, followed by \a sep. The order flags are not
    /// used.
    void WhiteGamma(float** data, QTextStream& out, int i, long scale, QString sep);

    // Shared by the writers.

    /// With `defaultOrder` set, sets the format's own pair of orders.
    void applyDefaultOrders(tintwell::FormatCode format);
    /// For formats that have only real numbers: sets an integer scale back to 1.
    void forceRealNumbers();
};
