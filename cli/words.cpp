#include "cli/words.h"

#include "lut/words.h"

#include <QFileInfo>

namespace cli {

QString entriesText(int size) {
    return tintwell::counted(size, "entry", "entries");
}

QString sizeText(tintwell::TableKind kind, int size) {
    return kind == tintwell::TableKind::OneD
               ? entriesText(size)
               : tintwell::counted(size, "point per axis", "points per axis");
}

QString unknownFormat(const QString& name) {
    return QStringLiteral("unknown format \"%1\" (see tintwell-cli formats)").arg(name);
}

QString unknownExtension(const QString& path, const char* option) {
    const QFileInfo file(path);
    return file.isDir() ? isFolder()
                        : QStringLiteral("found the extension \"%1\", expected a known one "
                                         "(see tintwell-cli formats), or %2")
                              .arg(file.suffix(), QLatin1String(option));
}

QString isFolder() {
    return QStringLiteral("is a folder, expected a file");
}

} // namespace cli
