#include "app/path_tool_tip.h"

#include <QRegularExpression>

namespace tintwell {

QString pathToolTip(const QString& path) {
    if (path.isEmpty()) {
        return {};
    }
    // Only rich text is wrapped, and only where it has a place to break. A path may have none, so
    // it gets spaces of no width, after each folder and within long names.
    static const QRegularExpression piece(QStringLiteral("(/|[^/]{32})"));
    QString breakable = path;
    breakable.replace(piece, QStringLiteral("\\1\u200B"));
    return QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(breakable.toHtmlEscaped());
}

} // namespace tintwell
