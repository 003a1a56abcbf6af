#include "formats/emit_table.h"

namespace tintwell {

namespace {

TextFile refused(QString& error) {
    error = QStringLiteral("the table has not been read");
    return TextFile(error);
}

} // namespace

TextFile createFor3D(const QString& path, const Read_LUTFile& lut, QString& error) {
    const bool isMissing = lut.size3D > 0 && !lut.hasTable3D();
    return isMissing ? refused(error) : TextFile(path, error);
}

TextFile createFor1D(const QString& path, const Read_LUTFile& lut, QString& error) {
    const bool isMissing = lut.size1D > 0 && !lut.hasTable1D();
    return isMissing ? refused(error) : TextFile(path, error);
}

} // namespace tintwell
