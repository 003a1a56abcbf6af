#pragma once

#include <QImage>
#include <QString>

class Read_LUTFile;

namespace cli {

/// Draws a table for eyes: the lattice as slices of equal blue, red to the right and green down,
/// and the three curves along the grey axis with grey ramps before and after; a 1D table without
/// the slices. The table must lie in R, G, B order. Needs a QGuiApplication for its fonts.
QImage drawLut(Read_LUTFile& lut, const QString& title, const QString& subtitle);

} // namespace cli
