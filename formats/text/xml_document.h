#pragma once

#include <QByteArray>
#include <QString>

namespace tintwell {

/// The text of an XML document, prepared so that Qt's XML reader needs little time and memory.
struct XmlDocument {
    /// The text without its document type declarations.
    QString text;
    /// Whether the text was cut before a tag that is too costly to read: one with more than 64
    /// attributes, the 257th open element, or one that brings more than 64 name spaces into scope.
    bool isCut = false;
};

/// Decodes a document as Qt's XML reader would: by its byte order mark or its declared encoding.
/// Empty if the encoding is unknown.
XmlDocument readableXml(const QByteArray& content);

} // namespace tintwell
