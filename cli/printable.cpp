#include "cli/printable.h"

#include <QVector>

#include <algorithm>

namespace cli {

namespace {

bool isPrintable(uint character) {
    switch (QChar::category(character)) {
    case QChar::Other_Control:
        return character == '\t';
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return true;
    }
}

QString escaped(const QString& units) {
    QString text;
    for (const QChar unit : units) {
        text += QStringLiteral("\\u%1").arg(unit.unicode(), 4, 16, QLatin1Char('0'));
    }
    return text;
}

} // namespace

QString printable(const QString& text) {
    const QVector<uint> characters = text.toUcs4();
    if (std::all_of(characters.begin(), characters.end(), isPrintable)) {
        return text;
    }
    QString plain;
    for (const uint character : characters) {
        const QString units = QString::fromUcs4(&character, 1);
        plain += isPrintable(character) ? units : escaped(units);
    }
    return plain;
}

} // namespace cli
