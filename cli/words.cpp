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
