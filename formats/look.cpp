// The look format, an XML document with a 3D table, a 1D table or both:
//
//     <look>
//       <shaders>...</shaders>
//       <LUT>
//         <size>"2"</size>
//         <data>"
//           000000000000000000000000
//           00000000000000000000803F
//           ...
//         "</data>
//       </LUT>
//     </look>
//
// A sample is three floats of eight hexadecimal digits, the least significant byte first; samples
// come k fastest. The 1D table stands in a LUT1D element of the same make.

#include "formats/hex_float.h"
#include "formats/tables.h"
#include "formats/text/xml_document.h"
#include "lut/bounded_read.h"
#include "lut/lattice.h"
#include "lut/read_lutfile.h"
#include "lut/trace.h"

#include <QByteArray>
#include <QXmlStreamReader>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

using tintwell::Triple;

namespace {

constexpr std::size_t digitsPerSample = 24;

/// A table while the document is read. It is filled in the end: a later size or text replaces it.
struct HexTable {
    int& size;
    int maxSize;
    int dimensions;
    float* domainMax;
    QString& error;
    std::string digits = {};

    std::size_t samples() const {
        const auto n = static_cast<std::size_t>(size);
        return dimensions == 3 ? n * n * n : n;
    }
};

/// The file's bytes as the toolkit reads a text: without carriage returns.
std::optional<QByteArray> contentOf(const QString& path, QString& error) {
    std::optional<QByteArray> content = tintwell::readBounded(path, error);
    if (content) {
        content->replace(QByteArrayLiteral("\r"), QByteArray());
    }
    return content;
}

int readSize(QXmlStreamReader& xml) {
    QString text = xml.readElementText(QXmlStreamReader::SkipChildElements);
    return text.remove(QLatin1Char('"')).toInt();
}

/// At most \a count digits of an element's text, which may have blanks and quotes between them.
std::string readDigits(QXmlStreamReader& xml, std::size_t count) {
    const QString text = xml.readElementText(QXmlStreamReader::SkipChildElements);
    std::string digits;
    digits.reserve(std::min(count, static_cast<std::size_t>(text.size())));
    for (const QChar c : text) {
        if (digits.size() == count) {
            break;
        }
        if (!c.isSpace() && c != QLatin1Char('"')) {
            digits += c.toLatin1();
        }
    }
    return digits;
}

bool decode(const std::string& digits, std::size_t n, Triple<float>& sample) {
    const char* const text = digits.data() + n * digitsPerSample;
    return hexasciitofloat(sample.r, text) && hexasciitofloat(sample.g, text + 8) &&
           hexasciitofloat(sample.b, text + 16);
}

/// Raises the domain to the largest samples. False where a sample lacks or is no number.
bool raiseDomain(const std::string& digits, std::size_t samples, float* max) {
    if (digits.size() < samples * digitsPerSample) {
        return false;
    }
    Triple<float> sample;
    for (std::size_t n = 0; n < samples; ++n) {
        if (!decode(digits, n, sample)) {
            return false;
        }
        max[0] = std::max(max[0], sample.r);
        max[1] = std::max(max[1], sample.g);
        max[2] = std::max(max[2], sample.b);
    }
    return true;
}

/// Sets the error, with the line that the document is read to.
bool failAt(const QXmlStreamReader& xml, HexTable& table, const QString& what) {
    table.error = QStringLiteral("%1: %2").arg(xml.lineNumber()).arg(what);
    return false;
}

/// Keeps the digits of a `data` element, if there are any. False for those that do not decode.
bool takeData(QXmlStreamReader& xml, HexTable& table) {
    if (table.size > table.maxSize) {
        return failAt(xml, table,
                      QStringLiteral("found a size of %1, expected at most %2")
                          .arg(table.size)
                          .arg(table.maxSize));
    }
    std::string digits = readDigits(xml, table.samples() * digitsPerSample);
    if (digits.empty()) {
        return true;
    }
    if (!raiseDomain(digits, table.samples(), table.domainMax)) {
        std::fill_n(table.domainMax, 3, 1.0F);
        return failAt(xml, table,
                      QStringLiteral("found %1 characters or less, expected the %2 hexadecimal "
                                     "digits of %3 samples")
                          .arg(digits.size())
                          .arg(table.samples() * digitsPerSample)
                          .arg(table.samples()));
    }
    table.digits = std::move(digits);
    return true;
}

/// Reads the children of a table's element.
bool readTable(QXmlStreamReader& xml, HexTable& table, bool probe) {
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("size")) {
            table.size = readSize(xml);
            table.digits.clear();
        } else if (xml.name() == QLatin1String("data") && !probe && table.size > 0) {
            if (!takeData(xml, table)) {
                return false;
            }
        } else {
            xml.skipCurrentElement();
        }
    }
    return true;
}

/// Reads up to the end of the document, or of its well-formed part.
bool readDocument(const QByteArray& content, HexTable& lattice, HexTable& curve, bool probe) {
    QString document = tintwell::decodedXml(content);
    if (tintwell::overburdensXmlReader(document)) {
        lattice.error = QStringLiteral("found a document that would overburden the XML reader");
        return false;
    }
    // The XML reader withholds a text that the file breaks off in until something ends it.
    document += QLatin1String("<!---->");
    QXmlStreamReader xml(document);
    xml.setEntityExpansionLimit(0); // a document's own entities could swell its text beyond measure
    bool inside = false;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::DTD && xml.text().contains(QLatin1Char('['))) {
            // What it declares would burden every element behind it.
            return failAt(xml, lattice,
                          QStringLiteral("found a document type with declarations, expected none"));
        }
        if (token != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == QLatin1String("LUT")) {
            if (!readTable(xml, lattice, probe)) {
                return false;
            }
        } else if (xml.name() == QLatin1String("LUT1D")) {
            if (!readTable(xml, curve, probe)) {
                return false;
            }
        } else if (inside || xml.name() == QLatin1String("shaders") ||
                   xml.name() == QLatin1String("ASC")) {
            xml.skipCurrentElement();
        } else {
            inside = true; // the element that holds all others, whatever its name
        }
    }
    return true;
}

bool fill3D(Read_LUTFile& lut, const std::string& digits) {
    if (digits.empty()) {
        return lut.size3D <= tintwell::MaxEmptySize3D
                   ? lut.allocate3D()
                   : lut.fail(QStringLiteral("found no data for a size of %1").arg(lut.size3D));
    }
    if (!lut.allocate3D()) {
        return false;
    }
    Triple<float> sample;
    std::size_t n = 0;
    return tintwell::visitLattice(lut.size3D, [&](int i, int j, int k) {
        decode(digits, n++, sample);
        tintwell::store3D(lut, i, j, k, sample);
        return true;
    });
}

bool fill1D(Read_LUTFile& lut, const std::string& digits) {
    if (digits.empty()) {
        return lut.size1D <= tintwell::MaxEmptySize1D
                   ? lut.allocate1D()
                   : lut.fail(QStringLiteral("found no data for a length of %1").arg(lut.size1D));
    }
    if (!lut.allocate1D()) {
        return false;
    }
    Triple<float> sample;
    for (int n = 0; n < lut.size1D; ++n) {
        decode(digits, static_cast<std::size_t>(n), sample);
        tintwell::store1D(lut, n, sample);
    }
    return true;
}

} // namespace

bool Read_LUTFile::Read_Look(QString path, bool probe) {
    const std::optional<QByteArray> content = contentOf(path, lastError);
    if (!content) {
        return false;
    }
    qCDebug(formatTrace) << "file:-----" << path;
    applyDefaultOrder(true, false);

    HexTable lattice{size3D, MaxSize3D, 3, domainMax3D, lastError};
    HexTable curve{size1D, MaxSize1D, 1, domainMax1D, lastError};
    if (!readDocument(*content, lattice, curve, probe)) {
        return false;
    }
    const bool filled = probe || ((size3D <= 0 || fill3D(*this, lattice.digits)) &&
                                  (size1D <= 0 || fill1D(*this, curve.digits)));
    resetDomainMax1D();
    resetDomainMax3D();
    return filled && (hasSize() || tintwell::failUnsized(*this, "a LUT element"));
}
