#pragma once

#include <QByteArray>
#include <QString>

namespace tintwell {

/// The text of an XML document, made such that the toolkit's XML reader takes neither long over it
/// nor much memory.
struct XmlDocument {
    /// Without the declarations of its document type.
    QString text;
    /// Whether the text ends before a tag that would burden the reader: one of more than 64
    /// attributes, the 257th element open, or one that makes it more than 64 name spaces in scope.
    bool isCut = false;
};

/// Decodes a document as the toolkit's XML reader would: by its byte order mark or the encoding it
/// declares. Empty for an encoding that nobody knows.
XmlDocument readableXml(const QByteArray& content);

} // namespace tintwell
