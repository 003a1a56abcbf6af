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
// are k fastest. The 1D table is in a LUT1D element of the same form.

#include "formats/failures.h"
#include "formats/fill_table.h"
#include "formats/hex_float.h"
#include "formats/text/xml_document.h"
#include "lut/bounded_read.h"
#include "lut/format_code.h"
#include "lut/lattice.h"
#include "lut/read_lutfile.h"
#include "lut/table_kind.h"
#include "lut/trace.h"
#include "lut/words.h"

#include <QByteArray>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

using tintwell::remarkOnce;
using tintwell::Triple;

namespace {

constexpr std::size_t digitsPerSample = 24;

/// What a document says about a table. The table is filled at the end, because a later size or text
/// replaces this.
struct HexTable {
    int maxSize;
    int dimensions;
    float* domainMax;
    Read_LUTFile& lut;
    std::optional<int> size = {};
    std::string digits = {};

    std::size_t samples() const {
        const auto n = static_cast<std::size_t>(*size);
        return dimensions == 3 ? n * n * n : n;
    }
};

/// The bytes of the file without carriage returns, as Qt reads a text file.
std::optional<QByteArray> contentOf(const QString& path, QString& error) {
    std::optional<QByteArray> content = tintwell::readBounded(path, error);
    if (content) {
        content->replace(QByteArrayLiteral("\r"), QByteArray());
    }
    return content;
}

/// The text of an element, without that of its children. None if the document ends before the
/// element does, is malformed, or refers to an undeclared entity.
std::optional<QString> readText(QXmlStreamReader& xml) {
    QString text;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::Characters:
            text += xml.text();
            break;
        case QXmlStreamReader::StartElement:
            xml.skipCurrentElement();
            break;
        case QXmlStreamReader::EntityReference:
            xml.raiseError(QStringLiteral("Entity '%1' not declared.").arg(xml.name()));
            break;
        case QXmlStreamReader::EndElement:
            return text;
        default:
            break;
        }
    }
    return std::nullopt;
}

/// At most \a count digits of a text, which may contain blanks and quotes between them.
/// \a hasMore is set if more follow.
std::string digitsOf(const QString& text, std::size_t count, bool& hasMore) {
    std::string digits;
    digits.reserve(std::min(count, static_cast<std::size_t>(text.size())));
    for (const QChar c : text) {
        if (c.isSpace() || c == QLatin1Char('"')) {
            continue;
        }
        if (digits.size() == count) {
            hasMore = true;
            break;
        }
        digits += c.toLatin1();
    }
    return digits;
}

bool decode(const std::string& digits, std::size_t n, Triple<float>& sample) {
    const char* const text = digits.data() + n * digitsPerSample;
    return hexasciitofloat(sample.r, text) && hexasciitofloat(sample.g, text + 8) &&
           hexasciitofloat(sample.b, text + 16);
}

/// Raises the domain to the largest samples. False if a sample is missing or is not a number.
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

QString atLine(const QXmlStreamReader& xml, const QString& what) {
    return QStringLiteral("%1: %2").arg(xml.lineNumber()).arg(what);
}

/// Sets the error, with the number of the current line of the document.
bool failAt(const QXmlStreamReader& xml, HexTable& table, const QString& what) {
    return table.lut.fail(atLine(xml, what));
}

void parseSize(QXmlStreamReader& xml, HexTable& table) {
    if (std::optional<QString> text = readText(xml)) {
        if (!table.digits.empty()) {
            remarkOnce(table.lut, xml.lineNumber(),
                       QStringLiteral("found another table of the same kind, which replaces the "
                                      "one before"));
        }
        table.size = text->remove(QLatin1Char('"')).toInt();
        table.digits.clear();
        if (*table.size < 1) {
            remarkOnce(table.lut, xml.lineNumber(),
                       QStringLiteral("found no whole number from 1 on as a size: the table is "
                                      "ignored"));
        }
    }
}

/// Keeps the digits of a `data` element, if there are any. False if they do not decode.
bool parseData(QXmlStreamReader& xml, HexTable& table) {
    if (*table.size > table.maxSize) {
        return failAt(xml, table,
                      QStringLiteral("found a size of %1, expected at most %2")
                          .arg(*table.size)
                          .arg(table.maxSize));
    }
    const std::optional<QString> text = readText(xml);
    if (!text) {
        if (table.digits.empty()) { // no digits mean no table, not a table of zeros
            table.size.reset();
        }
        return true;
    }
    bool hasMore = false;
    std::string digits = digitsOf(*text, table.samples() * digitsPerSample, hasMore);
    if (digits.empty()) {
        return true;
    }
    if (!raiseDomain(digits, table.samples(), table.domainMax)) {
        std::fill_n(table.domainMax, 3, 1.0F);
        return failAt(xml, table,
                      QStringLiteral("found %1 characters or fewer, expected the %2 hexadecimal "
                                     "digits of %3 samples")
                          .arg(digits.size())
                          .arg(table.samples() * digitsPerSample)
                          .arg(table.samples()));
    }
    if (hasMore) {
        const auto samples = static_cast<std::int64_t>(table.samples());
        remarkOnce(table.lut, xml.lineNumber(),
                   QStringLiteral("found more than %1; the rest is not read")
                       .arg(tintwell::counted(samples, "sample")));
    }
    table.digits = std::move(digits);
    return true;
}

/// Reads the child elements of a table's element.
bool readTable(QXmlStreamReader& xml, HexTable& table, bool probe) {
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("size")) {
            parseSize(xml, table);
        } else if (xml.name() == QLatin1String("data") && !probe && table.size > 0) {
            if (!parseData(xml, table)) {
                return false;
            }
        } else {
            xml.skipCurrentElement();
        }
    }
    return true;
}

/// Skips an element that is not applied, and tells of it unless it is empty.
void skipCorrection(QXmlStreamReader& xml, Read_LUTFile& lut) {
    const QString what =
        QStringLiteral("found corrections in %1, which are ignored").arg(xml.name());
    const qint64 line = xml.lineNumber();
    bool isEmpty = true;
    for (int depth = 1; depth > 0 && !xml.atEnd();) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        depth += token == QXmlStreamReader::StartElement ? 1 : 0;
        depth -= token == QXmlStreamReader::EndElement ? 1 : 0;
        isEmpty = isEmpty && token != QXmlStreamReader::StartElement &&
                  (token != QXmlStreamReader::Characters || xml.isWhitespace());
    }
    if (!isEmpty) {
        remarkOnce(lut, line, what);
    }
}

/// Reads up to the end of the document, or of its well-formed part. Tables may be at any depth, but
/// not inside shaders or colour corrections.
bool readTables(QXmlStreamReader& xml, HexTable& lattice, HexTable& curve, bool probe) {
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        const QStringRef name = xml.name();
        if (name == QLatin1String("LUT") || name == QLatin1String("LUT1D")) {
            if (!readTable(xml, name == QLatin1String("LUT") ? lattice : curve, probe)) {
                return false;
            }
        } else if (name == QLatin1String("shaders") || name == QLatin1String("ASC")) {
            skipCorrection(xml, lattice.lut);
        }
    }
    return true;
}

bool readDocument(const QByteArray& content, HexTable& lattice, HexTable& curve, bool probe) {
    const tintwell::XmlDocument document = tintwell::readableXml(content);
    QXmlStreamReader xml(document.text);
    if (!readTables(xml, lattice, curve, probe)) {
        return false;
    }
    if (document.isCut && xml.error() == QXmlStreamReader::PrematureEndOfDocumentError) {
        return failAt(xml, lattice,
                      QStringLiteral("found a tag that is too costly for the XML reader"));
    }
    if (xml.hasError()) { // not an error in itself: what was read before it counts
        failAt(xml, lattice, xml.errorString());
    }
    return true;
}

/// Without digits a table is all zeros, which is accepted only if it is small.
bool mayBeEmpty(Read_LUTFile& lut, const HexTable& table, int largest) {
    if (*table.size > largest) {
        return lut.fail(QStringLiteral("found no data for a size of %1").arg(*table.size));
    }
    lut.remarkUnfilled(QStringLiteral("no data for a size of %1").arg(*table.size));
    return true;
}

/// Tells which channels of a table have samples above 1.
void remarkOnScale(Read_LUTFile& lut, tintwell::TableKind kind, const float* max) {
    const std::array<float, 3> scale = {max[0], max[1], max[2]};
    if (scale != std::array<float, 3>{1, 1, 1}) {
        lut.remarks +=
            QStringLiteral("channels of the %1 table with samples above 1 are divided by their "
                           "largest: red, green, blue by %2, %3, %4")
                .arg(QLatin1String(kindName(kind)), tintwell::formatted(scale[0]),
                     tintwell::formatted(scale[1]), tintwell::formatted(scale[2]));
    }
}

bool fill3D(Read_LUTFile& lut, const HexTable& table) {
    if (table.digits.empty()) {
        return mayBeEmpty(lut, table, tintwell::MaxEmptySize3D) && lut.allocate3D();
    }
    if (!lut.allocate3D()) {
        return false;
    }
    Triple<float> sample;
    std::size_t n = 0;
    return tintwell::visitLattice(lut.size3D, [&](int i, int j, int k) {
        decode(table.digits, n++, sample);
        tintwell::store3D(lut, i, j, k, sample);
        return true;
    });
}

bool fill1D(Read_LUTFile& lut, const HexTable& table) {
    if (table.digits.empty()) {
        return mayBeEmpty(lut, table, tintwell::MaxEmptySize1D) && lut.allocate1D();
    }
    if (!lut.allocate1D()) {
        return false;
    }
    Triple<float> sample;
    for (int n = 0; n < lut.size1D; ++n) {
        decode(table.digits, static_cast<std::size_t>(n), sample);
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
    applyDefaultOrders(tintwell::FormatCode::Look);

    HexTable lattice{MaxSize3D, 3, domainMax3D, *this};
    HexTable curve{MaxSize1D, 1, domainMax1D, *this};
    const bool isRead = readDocument(*content, lattice, curve, probe);
    if (lattice.size) {
        setSize3D(*lattice.size);
    }
    if (curve.size) {
        setSize1D(*curve.size);
    }
    if (!isRead) {
        return false;
    }
    const bool filled = probe || ((lattice.size.value_or(0) <= 0 || fill3D(*this, lattice)) &&
                                  (curve.size.value_or(0) <= 0 || fill1D(*this, curve)));
    remarkOnScale(*this, tintwell::TableKind::ThreeD, domainMax3D);
    remarkOnScale(*this, tintwell::TableKind::OneD, domainMax1D);
    resetDomainMax1D();
    resetDomainMax3D();
    if (!filled) {
        return false;
    }
    if (hasSize()) {
        return tintwell::acceptWithRemark(*this);
    }
    return !lastError.isEmpty() ? false : tintwell::failUnsized(*this, "a LUT element");
}
