// The emitters against Qt's own printing, for floats with any bits.

#include "harness.h"

#include "formats/text/emit.h"
#include "formats/text/text_file.h"
#include "lut/write_lutfile.h"

#include <QTextStream>

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

constexpr char separator[] = ", ";

struct Cell {
    float values[3] = {};

    Cell inOrder(bool rgb) const { return rgb ? *this : Cell{{values[2], values[1], values[0]}}; }
};

QByteArray printedByQt(float value, QTextStream::RealNumberNotation notation) {
    QByteArray text;
    QTextStream stream(&text);
    stream.setRealNumberNotation(notation);
    stream << value << Qt::flush;
    return text;
}

void comparePrinters(float value) {
    char text[tintwell::MaxNumberText];
    const auto printed = [&text](const char* end) {
        return QByteArray(text, static_cast<int>(end - text));
    };
    fuzz::require(printed(tintwell::printFixed(text, value)) ==
                      printedByQt(value, QTextStream::FixedNotation),
                  "fixed notation");
    fuzz::require(printed(tintwell::printSmart(text, value)) ==
                      printedByQt(value, QTextStream::SmartNotation),
                  "smart notation");
}

/// The layout of an entry, printed by Qt.
void printCell(QTextStream& out, const Cell& cell, long scale, bool inColumns) {
    const bool real = scale < 2;
    int printed = 0;
    for (const float value : cell.values) {
        if (!real) {
            out << static_cast<qlonglong>(tintwell::scaledInteger(value, scale)) << separator;
            continue;
        }
        if (inColumns) {
            out.setFieldWidth(8);
        }
        out << value;
        out.setFieldWidth(0);
        if (!inColumns || ++printed < 3) {
            out << separator;
        }
    }
}

struct Streams {
    QByteArray text;
    QTextStream stream{&text};

    void setUp(int notation, int precision) {
        stream.setRealNumberNotation(static_cast<QTextStream::RealNumberNotation>(notation));
        stream.setRealNumberPrecision(precision);
    }
    const QByteArray& flushed() {
        stream.flush();
        return text;
    }
};

void compareStreams(const Cell& cell, bool rgb, long scale, int notation, int precision) {
    Streams found;
    Streams expected;
    found.setUp(notation, precision);
    expected.setUp(notation, precision);

    float* row = const_cast<float*>(cell.values);
    float** plane = &row;
    float*** lattice = &plane;
    Write_LUTFile writer(nullptr);
    writer.dataOrder = rgb;
    const QString sep = QLatin1String(separator);
    writer.White1D(&row, found.stream, 0, scale, sep);
    printCell(expected.stream, cell.inOrder(rgb), scale, false);
    writer.White3D(&lattice, found.stream, 0, 0, 0, scale, sep);
    expected.stream.setRealNumberNotation(QTextStream::FixedNotation);
    printCell(expected.stream, cell.inOrder(rgb), scale, true);
    fuzz::require(found.flushed() == expected.flushed(), "emitters print as Qt does");
}

void compareFile(const std::vector<Cell>& cells, bool rgb, long scale) {
    const fuzz::MemoryFile file;
    {
        QString error;
        tintwell::TextFile out(file.path(), error);
        for (const Cell& cell : cells) {
            tintwell::emitCell1D(out, cell.values, rgb, scale, separator);
            tintwell::emitCell3D(out, cell.values, rgb, scale, separator);
        }
    }
    Streams expected;
    for (const Cell& cell : cells) {
        expected.stream.setRealNumberNotation(QTextStream::SmartNotation);
        printCell(expected.stream, cell.inOrder(rgb), scale, false);
        expected.stream.setRealNumberNotation(QTextStream::FixedNotation);
        printCell(expected.stream, cell.inOrder(rgb), scale, true);
    }
    fuzz::require(file.content() == expected.flushed(), "files print as Qt does");
}

} // namespace

void fuzz::run(std::string_view input) {
    constexpr long scales[] = {1, -5, 0, 2, 255, 1023, 65535, 1L << 31, 1L << 62};
    Choices choices(input);
    const bool rgb = choices.oneOf(2) == 0;
    const long scale = scales[choices.oneOf(9)];
    const int notation = choices.oneOf(3);
    const int precision = choices.oneOf(12);
    const std::string_view bytes = choices.rest();
    std::vector<Cell> cells;
    for (std::size_t at = 0; at < bytes.size(); at += sizeof(Cell)) {
        Cell cell;
        std::memcpy(cell.values, &bytes[at], std::min(sizeof cell, bytes.size() - at));
        for (const float value : cell.values) {
            comparePrinters(value);
        }
        compareStreams(cell, rgb, scale, notation, precision);
        cells.push_back(cell);
    }
    compareFile(cells, rgb, scale);
}
