#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>

namespace tintwell {

/// Why some pixels of an image would be wrong or missing without the toolkit's decoder telling;
/// empty if there is no such reason. \a type is the catalogue's name for the content's type, \a
/// size what the decoder found. Anything else that is broken is left to the decoder.
QString problemOfPixels(const QByteArray& content, const QByteArray& type, const QSize& size);

} // namespace tintwell
