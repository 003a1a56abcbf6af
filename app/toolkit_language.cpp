#include "app/toolkit_language.h"

#include "app/labels.h"

#include <QCoreApplication>
#include <QLibraryInfo>

namespace tintwell {

void ToolkitLanguage::set(int language) {
    QCoreApplication::removeTranslator(&chinese); // a second time would count twice
    if (language == SimplifiedChinese &&
        chinese.load(QStringLiteral("qtbase_zh_CN"),
                     QLibraryInfo::location(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&chinese);
    }
}

} // namespace tintwell
