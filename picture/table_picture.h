#pragma once

#include <QImage>
#include <QString>

class Read_LUTFile;

namespace tintwell {

/// Draws a picture of a table: the lattice as slices of equal blue, red to the right and green
/// down, and the three curves along the grey axis with grey ramps before and after; for a 1D table,
/// without the slices. The table must be in R, G, B order. Needs a QGuiApplication for its fonts.
QImage drawTable(const Read_LUTFile& lut, const QString& title, const QString& subtitle);

} // namespace tintwell
