#include "cli/words.h"

#include <QFileInfo>

namespace cli {

QString entriesText(int size) {
    return size == 1 ? QStringLiteral("1 entry") : QStringLiteral("%1 entries").arg(size);
}

QString sizeText(tintwell::TableKind kind, int size) {
    return kind == tintwell::TableKind::OneD ? entriesText(size)
                                             : QStringLiteral("%1 points per axis").arg(size);
}

QString unknownFormat(const QString& name) {
    return QStringLiteral("unknown format \"%1\" (see tintwell-cli formats)").arg(name);
}

QString unknownExtension(const QString& path) {
    return QStringLiteral("found the extension \"%1\", expected a known one "
                          "(see tintwell-cli formats)")
        .arg(QFileInfo(path).suffix());
}

} // namespace cli
