#include "formats/text/xml_document.h"

#include <QLatin1String>
#include <QTextCodec>
#include <QXmlStreamReader>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tintwell {

namespace {

/// Walks through the markup of a document as the XML reader will. The two can disagree only if the
/// document is malformed, and there the XML reader stops.
class MarkupWalk {
public:
    explicit MarkupWalk(QString& document) : m_document(document) {}

    /// Blanks document type declarations: the reader compares declared attributes with each other
    /// and visits them at every tag, and entities could expand without limit. Returns the position
    /// of the first tag that is too costly for the reader; the end if there is none.
    int findBurden() {
        int at = 0;
        while ((at = m_document.indexOf(QLatin1Char('<'), at)) >= 0) {
            const int start = at;
            if (begins("<!--", at) || begins("<?", at)) {
                at = afterUnit(at);
            } else if (begins("<![CDATA[", at)) {
                at = after("]]>", at);
            } else if (begins("<!", at)) {
                at = blankDeclarations(at);
            } else if (begins("</", at)) {
                closeElement();
                ++at;
            } else if (at = readTag(at); m_isOverburdened) {
                return start;
            }
        }
        return m_document.size();
    }

private:
    bool begins(const char* word, int at) const {
        const QLatin1String wanted(word);
        return m_document.midRef(at, wanted.size()) == wanted;
    }

    int after(const char* word, int at) const {
        const QLatin1String wanted(word);
        const int found = m_document.indexOf(wanted, at);
        return found < 0 ? m_document.size() : found + wanted.size();
    }

    /// The position after the unit at \a at: a quoted text, a comment, a processing instruction or
    /// a single character.
    int afterUnit(int at) const {
        if (begins("\"", at)) {
            return after("\"", at + 1);
        }
        if (begins("'", at)) {
            return after("'", at + 1);
        }
        if (begins("<!--", at)) {
            return after("-->", at + 4);
        }
        return begins("<?", at) ? after("?>", at + 2) : at + 1;
    }

    /// The position of the first of the \a wanted characters from \a at on that is outside such
    /// units.
    int find(const char* wanted, int at) const {
        const QLatin1String characters(wanted);
        while (at < m_document.size() && !characters.contains(m_document.at(at))) {
            at = afterUnit(at);
        }
        return at;
    }

    /// Line feeds are kept, so that line numbers do not change.
    int blankDeclarations(int documentType) {
        const int open = find("[>", documentType + 2);
        if (!begins("[", open)) {
            return open;
        }
        const int close = find("]", open + 1);
        const int end = std::min(close + 1, m_document.size());
        QChar* const text = m_document.data();
        std::replace_if(
            text + open, text + end, [](QChar c) { return c != QLatin1Char('\n'); },
            QLatin1Char(' '));
        return end;
    }

    int readTag(int start) {
        // The XML reader keeps a stack of open elements, compares each attribute of a tag with all
        // others, and searches all name spaces for every prefix.
        constexpr std::size_t mostElements = 256;
        constexpr int mostAttributes = 64;
        constexpr int mostNamespaces = 64;
        const char* const places = "=x>";
        int attributes = 0;
        int namespaces = m_namespaces.empty() ? 0 : m_namespaces.back();
        int at = find(places, start + 1);
        for (; at < m_document.size() && !begins(">", at); at = find(places, at + 1)) {
            attributes += begins("=", at) ? 1 : 0;
            namespaces += begins("xmlns", at) ? 1 : 0;
        }
        m_namespaces.push_back(namespaces);
        m_isOverburdened = attributes > mostAttributes || namespaces > mostNamespaces ||
                           m_namespaces.size() > mostElements;
        if (begins("/>", at - 1)) {
            closeElement();
        }
        return at;
    }

    void closeElement() {
        if (!m_namespaces.empty()) {
            m_namespaces.pop_back();
        }
    }

    QString& m_document;
    std::vector<int> m_namespaces; ///< number in scope, for each open element
    bool m_isOverburdened = false;
};

QString decoded(const QByteArray& content) {
    constexpr int longestDeclaration = 1024;
    QXmlStreamReader declaration(content.left(longestDeclaration));
    declaration.readNext();
    const QByteArray name = declaration.documentEncoding().toString().toLatin1();
    const QTextCodec* const codec =
        name.isEmpty() ? QTextCodec::codecForUtfText(content, QTextCodec::codecForName("UTF-8"))
                       : QTextCodec::codecForName(name);
    return codec != nullptr ? codec->toUnicode(content) : QString();
}

} // namespace

XmlDocument readableXml(const QByteArray& content) {
    XmlDocument document{decoded(content)};
    const int burden = MarkupWalk(document.text).findBurden();
    document.isCut = burden < document.text.size();
    document.text.truncate(burden);
    return document;
}

} // namespace tintwell
