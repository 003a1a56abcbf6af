#include "lut/catalogue.h"

#include <QFileInfo>

#include <algorithm>

namespace tintwell {

const Format* formatByName(const QString& name) {
    bool isNumber = false;
    const int number = name.toInt(&isNumber);
    if (isNumber) {
        return formatOf(number);
    }
    const auto* const found =
        std::find_if(catalogue.begin(), catalogue.end(),
                     [&](const Format& format) { return name == QLatin1String(format.name); });
    return found != catalogue.end() ? found : nullptr;
}

QStringList extensionsOf(const Format& format) {
    return QString::fromLatin1(format.extensions).split(QLatin1Char(' '));
}

std::vector<const Format*> formatsByExtension(const QString& path) {
    const QString extension = QFileInfo(path).suffix().toLower();
    std::vector<const Format*> formats;
    for (const Format& format : catalogue) {
        if (extensionsOf(format).contains(extension)) {
            formats.push_back(&format);
        }
    }
    return formats;
}

} // namespace tintwell
