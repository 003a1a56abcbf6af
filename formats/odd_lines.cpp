#include "formats/odd_lines.h"

#include "formats/failures.h"
#include "formats/text/scan.h"
#include "formats/text/words.h"
#include "lut/words.h"

#include <string_view>

namespace tintwell {

void OddLines::add(const LineSource& lines) {
    if (m_count++ == 0) {
        m_number = lines.lineNumber();
        m_text = quotedLine(lines);
    }
}

void OddLines::addUnlessComment(std::string_view line, const LineSource& lines) {
    if (!isBlankOrComment(line)) {
        add(lines);
    }
}

void OddLines::tell(Read_LUTFile& lut, const QString& what) const {
    if (m_count == 0) {
        return;
    }
    QString remark =
        QStringLiteral("%1: found %2, %3").arg(QString::number(m_number), m_text, what);
    if (m_count > 1) {
        remark += QStringLiteral(" (%1 such lines)").arg(m_count);
    }
    lut.remarks += remark;
}

bool BodyLines::isOddSample(SampleLine line) {
    if (line == SampleLine::Partial) {
        m_incomplete.add(m_lines);
    } else if (line == SampleLine::None) {
        m_unknown.addUnlessComment(m_lines.current(), m_lines);
    }
    return line == SampleLine::Partial;
}

void BodyLines::addSurplus(SampleLine line) {
    if (line == SampleLine::Whole || line == SampleLine::Partial) {
        m_surplus.add(m_lines);
    } else {
        isOddSample(line);
    }
}

void BodyLines::tell(Read_LUTFile& lut) const {
    m_unknown.tell(lut, QStringLiteral("which is neither a sample nor a keyword"));
    m_incomplete.tell(lut, QStringLiteral("expected %1: the rest is that of the sample before")
                               .arg(counted(m_numbers, "number")));
    m_surplus.tell(lut, QStringLiteral("which is not read: the table is full"));
}

void BodyLines::tellWithLast(Read_LUTFile& lut) const {
    tell(lut);
    const std::string_view last = m_lines.current();
    if (isBlankOrComment(last)) {
        return;
    }
    if (contains(last, ",")) {
        remarkOnLine(lut, m_lines, QStringLiteral("which is read up to the comma"));
        return;
    }
    WordReader words(last);
    for (int n = 0; n < m_numbers; ++n) {
        words.next();
    }
    double extra = 0;
    if (scan(words.next(), extra) > 0) {
        remarkOnLine(lut, m_lines,
                     QStringLiteral("expected %1: the others are not read")
                         .arg(counted(m_numbers, "number")));
    }
}

void remarkOnLine(Read_LUTFile& lut, const LineSource& lines, const QString& what) {
    if (isTold(lut, QStringLiteral("\", ") + what)) {
        return;
    }
    OddLines line;
    line.add(lines);
    line.tell(lut, what);
}

} // namespace tintwell
