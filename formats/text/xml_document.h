#pragma once

#include <QByteArray>
#include <QString>

namespace tintwell {

/// An XML document's text, decoded as the toolkit's XML reader would: by its byte order mark or the
/// encoding it declares. Empty for an encoding that nobody knows.
QString decodedXml(const QByteArray& content);

/// Whether the toolkit's XML reader would take long over a document, or much memory: for tags of
/// more than 64 attributes, elements nested more than 256 deep, or more than 64 name spaces.
bool overburdensXmlReader(const QString& document);

} // namespace tintwell
