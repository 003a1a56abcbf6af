#pragma once

#include "formats/text/line_source.h"
#include "formats/text/triple.h"
#include "lut/read_lutfile.h"

#include <QString>

#include <string_view>

namespace tintwell {

/// Lines of one kind that are worth a remark: the first of them, and how many there are.
class OddLines {
public:
    /// Adds the line read last.
    void add(const LineSource& lines);
    /// The same for \a line, the line read last, unless it is empty or a comment.
    void addUnlessComment(std::string_view line, const LineSource& lines);
    int count() const { return m_count; }
    /// Adds the remark "LINE: found "TEXT", what", with the number of lines if there are several.
    /// Does nothing without a line.
    void tell(Read_LUTFile& lut, const QString& what) const;

private:
    int m_count = 0;
    int m_number = 0; ///< of the first line
    QString m_text;   ///< of the first line
};

/// Decides which lines of a body are samples, and collects those that are worth a remark.
class BodyLines {
public:
    /// A sample of the file \a lines has \a numbers numbers a line.
    BodyLines(const LineSource& lines, int numbers) : m_lines(lines), m_numbers(numbers) {}

    /// Whether the line read last, which turned out to be this, is a sample.
    bool isSample(SampleLine line) { return line == SampleLine::Whole || isOddSample(line); }
    /// Takes the line read last, which comes after the last sample of the table.
    void addSurplus(SampleLine line);
    /// Adds the remarks on the lines so far.
    void tell(Read_LUTFile& lut) const;
    /// The same, the line read last being a sample, and typical for all of them.
    void tellWithLast(Read_LUTFile& lut) const;

private:
    bool isOddSample(SampleLine line);

    const LineSource& m_lines;
    int m_numbers;
    OddLines m_unknown;
    OddLines m_incomplete;
    OddLines m_surplus;
};

/// Adds the remark "LINE: found "TEXT", what" on the line read last, unless an earlier line has the
/// same.
void remarkOnLine(Read_LUTFile& lut, const LineSource& lines, const QString& what);

} // namespace tintwell
