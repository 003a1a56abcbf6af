#include "cli/words.h"

#include <QFileInfo>

namespace cli {

QString formatted(float value) {
    return QString::number(static_cast<double>(value), 'g', 6);
}

QString formatted(const tintwell::Channels& values) {
    const bool same = values[0] == values[1] && values[1] == values[2];
    return same ? formatted(values[0])
                : QStringLiteral("%1 %2 %3")
                      .arg(formatted(values[0]), formatted(values[1]), formatted(values[2]));
}

QString counted(qint64 count, const char* one, const char* several) {
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : several));
}

QString entriesText(int size) {
    return counted(size, "entry", "entries");
}

QString sizeText(tintwell::TableKind kind, int size) {
    return kind == tintwell::TableKind::OneD ? entriesText(size)
                                             : counted(size, "point per axis", "points per axis");
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
