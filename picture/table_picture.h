#pragma once

#include <QImage>
#include <QString>

class Read_LUTFile;

namespace tintwell {

/// Draws a picture of a table: the lattice as slices of equal blue, red to the right and green
/// down, and the three curves along the grey axis with grey ramps before and after; for a 1D table,
/// without the slices. The table must be in R, G, B order. Needs a QGuiApplication for its fonts.
QImage drawTable(const Read_LUTFile& lut, const QString& title, const QString& subtitle);

/// Draws the absolute differences of two tables: those of lattices as slices, of which each shows
/// the largest between it and the next, and those of curves over the input. They are amplified, as
/// the subtitle says, so that the largest finite one of all is seen; what is not finite is white.
QImage drawDifferences(const Read_LUTFile& differences, const QString& title);

} // namespace tintwell
