#include "app/tool_tips.h"

#include <QRegularExpression>
#include <QTextDocument>

namespace tintwell {

QString pathToolTip(const QString& path) {
    if (path.isEmpty()) {
        return {};
    }
    // A path may have no place to break at, so it gets spaces of no width, after each folder and
    // within long names.
    static const QRegularExpression piece(QStringLiteral("(/|[^/]{32})"));
    QString breakable = path;
    breakable.replace(piece, QStringLiteral("\\1\u200B"));
    return QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(breakable.toHtmlEscaped());
}

QString sentenceToolTip(const QString& sentence) {
    return sentence.isEmpty() ? QString()
                              : Qt::convertFromPlainText(sentence, Qt::WhiteSpaceNormal);
}

} // namespace tintwell
