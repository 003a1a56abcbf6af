#include "formats/text/xml_document.h"

#include <QTextCodec>
#include <QXmlStreamReader>

#include <algorithm>

namespace tintwell {

namespace {

/// Follows the tags of a document, to tell what would burden the XML reader: it compares each
/// attribute of a tag with all others, and remembers every element that is open.
class TagMeter {
public:
    bool isOverburdened() const {
        constexpr int mostAttributes = 64;
        constexpr int mostOpenElements = 256;
        return m_attributes > mostAttributes || m_openElements > mostOpenElements;
    }

    void take(QChar c) {
        if (c == QLatin1Char('<')) { // no value may hold one: it always begins something new
            m_place = Place::Start;
            m_attributes = 0;
            m_quote = QChar();
        } else if (m_place == Place::Start) {
            takeFirst(c);
        } else if (m_place == Place::Tag) {
            takeInTag(c);
        }
        m_before = c;
    }

private:
    enum class Place { Start, Tag, Outside };

    void takeFirst(QChar c) {
        const bool isTag = c != QLatin1Char('!') && c != QLatin1Char('?');
        m_place = isTag ? Place::Tag : Place::Outside;
        if (c == QLatin1Char('/')) {
            closeElement();
        } else if (isTag) {
            ++m_openElements;
        }
    }

    void takeInTag(QChar c) {
        if (!m_quote.isNull()) {
            m_quote = c == m_quote ? QChar() : m_quote;
        } else if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
            m_quote = c;
        } else if (c == QLatin1Char('=')) {
            ++m_attributes;
        } else if (c == QLatin1Char('>')) {
            m_place = Place::Outside;
            if (m_before == QLatin1Char('/')) {
                closeElement();
            }
        }
    }

    void closeElement() { m_openElements = std::max(0, m_openElements - 1); }

    Place m_place = Place::Outside;
    int m_attributes = 0;
    int m_openElements = 0;
    QChar m_quote;
    QChar m_before;
};

} // namespace

QString decodedXml(const QByteArray& content) {
    constexpr int longestDeclaration = 1024;
    QXmlStreamReader declaration(content.left(longestDeclaration));
    declaration.readNext();
    const QByteArray name = declaration.documentEncoding().toString().toLatin1();
    const QTextCodec* const codec =
        name.isEmpty() ? QTextCodec::codecForUtfText(content, QTextCodec::codecForName("UTF-8"))
                       : QTextCodec::codecForName(name);
    return codec != nullptr ? codec->toUnicode(content) : QString();
}

bool overburdensXmlReader(const QString& document) {
    constexpr int mostNamespaces = 64; // it seeks every prefix among them
    TagMeter meter;
    for (const QChar c : document) {
        meter.take(c);
        if (meter.isOverburdened()) {
            return true;
        }
    }
    return document.count(QLatin1String("xmlns")) > mostNamespaces;
}

} // namespace tintwell
