// info FILE...: what tables hold, and what may surprise in them.

#include "calc/lattice_axis.h"
#include "cli/command.h"
#include "cli/files.h"
#include "cli/printable.h"
#include "cli/range.h"
#include "cli/report.h"
#include "cli/shape.h"
#include "cli/standard_output.h"
#include "lut/bounded_read.h"
#include "lut/catalogue.h"
#include "lut/lattice.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTextStream>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>
#include <vector>

namespace {

using cli::Channels;
using tintwell::TableKind;
using tintwell::unitPosition;

constexpr std::array<const char*, 3> channelNames = {"red", "green", "blue"};

/// What the samples of a table come to.
struct Samples {
    Channels least;
    Channels most;
    float departure = 0; ///< the largest from the identity
    int notFinite = 0;   ///< numbers, which count for nothing else

    Samples() {
        least.fill(std::numeric_limits<float>::infinity());
        most.fill(-std::numeric_limits<float>::infinity());
    }

    void take(const float* cell, const Channels& identity) {
        for (std::size_t c = 0; c < 3; ++c) {
            if (!std::isfinite(cell[c])) {
                ++notFinite;
                continue;
            }
            least[c] = std::min(least[c], cell[c]);
            most[c] = std::max(most[c], cell[c]);
            departure = std::max(departure, std::fabs(cell[c] - identity[c]));
        }
    }
    bool isClose() const { return departure <= 1e-5F; }
    bool isIdentity() const { return isClose() && notFinite == 0; }
};

struct TableFacts {
    TableKind kind;
    int size;
    cli::StatedRange range;
    Samples samples;
};

struct Facts {
    QString path;
    int code = 0;
    std::vector<TableFacts> tables;
    bool rgb = true;
    bool blueFastest = true;
    QStringList header;
    QStringList notes;
};

Samples samplesOf3D(const Read_LUTFile& lut) {
    Samples samples;
    const int n = lut.size3D;
    tintwell::visitLattice(n, [&](int i, int j, int k) {
        samples.take(lut.data3D[i][j][k],
                     {unitPosition(i, n), unitPosition(j, n), unitPosition(k, n)});
        return true;
    });
    return samples;
}

Samples samplesOf1D(const Read_LUTFile& lut) {
    Samples samples;
    for (int n = 0; n < lut.size1D; ++n) {
        const float t = unitPosition(n, lut.size1D);
        samples.take(lut.data1D[n], {t, t, t});
    }
    return samples;
}

/// No part of an XML document. Bytes of another encoding than UTF-8 do no harm.
bool isPlain(const QString& text) {
    return !text.startsWith(QLatin1Char('<')) && std::all_of(text.begin(), text.end(), [](QChar c) {
        return c == QLatin1Char('\t') || c.isPrint();
    });
}

bool isImage(int code) {
    return cli::extensionsOf(code).contains(QStringLiteral("png"));
}

bool isWord(const QString& text) {
    bool isNumber = false; // "nan" and "1e-5" are
    static_cast<void>(text.toDouble(&isNumber));
    return !isNumber && std::any_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); });
}

/// Lines of samples have none.
bool hasWords(const QString& text) {
    static const QRegularExpression gapsAndSigns(QStringLiteral("(?:^|[\\s,]+)[-+]?"));
    const QStringList parts = text.split(gapsAndSigns, Qt::SkipEmptyParts);
    return std::any_of(parts.begin(), parts.end(), isWord);
}

/// The lines of a text file before its samples: titles, comments, keywords. Only the front of the
/// file is looked at.
QStringList headerOf(const QString& path) {
    constexpr int longestHead = 1 << 14;
    constexpr int enough = 12;
    constexpr int longest = 100;
    QString error;
    QByteArray head = tintwell::readHead(path, longestHead, error).value_or(QByteArray());
    if (head.size() == longestHead) {
        head.truncate(head.lastIndexOf('\n')); // which may have cut a line
    }
    QTextStream lines(head.replace("\r", ""));
    lines.setCodec("UTF-8");
    QStringList header;
    while (!lines.atEnd() && header.size() < enough) {
        const QString line = lines.readLine().trimmed().left(longest);
        if (hasWords(line) && isPlain(line)) {
            header += line;
        } else if (!line.isEmpty() && !line.startsWith(QLatin1Char('#'))) {
            break;
        }
    }
    return header;
}

QStringList notesOn(const Facts& facts, const Read_LUTFile& lut) {
    const tintwell::Format& format = *tintwell::formatOf(facts.code);
    QStringList notes = {QLatin1String(format.remark)};
    for (const TableFacts& table : facts.tables) {
        notes += remarkOn(table.range, format);
        if (table.samples.notFinite > 0) {
            notes += QStringLiteral("%1 numbers are not finite").arg(table.samples.notFinite);
        }
    }
    notes.removeAll(QString());
    notes.removeDuplicates();
    if (lut.meshHeader) {
        notes += QStringLiteral("a Mesh line declares integer samples");
    }
    if (lut.gamma != 1.0) {
        notes += QStringLiteral("a gamma of %1 is stated, and not applied").arg(lut.gamma);
    }
    return notes;
}

/// Reports what is wrong with a file that cannot be told of.
std::optional<Facts> factsOf(const QString& path, const QString& formatName) {
    const auto code = cli::formatOfInput(path, formatName);
    if (!code) {
        return std::nullopt;
    }
    Read_LUTFile lut(nullptr);
    if (!cli::readLut(path, *code, cli::Orders(), lut)) {
        return std::nullopt;
    }

    Facts facts;
    facts.path = path;
    facts.code = *code;
    facts.rgb = lut.dataOrder;
    facts.blueFastest = lut.tableOrder;
    if (lut.size3D > 0) {
        facts.tables.push_back({TableKind::ThreeD, lut.size3D, cli::rangeOf(lut, TableKind::ThreeD),
                                samplesOf3D(lut)});
    }
    if (lut.size1D > 0) {
        facts.tables.push_back(
            {TableKind::OneD, lut.size1D, cli::rangeOf(lut, TableKind::OneD), samplesOf1D(lut)});
    }
    if (!isImage(*code)) {
        facts.header = headerOf(path);
    }
    facts.notes = notesOn(facts, lut);
    return facts;
}

QString ordersText(const Facts& facts) {
    const bool hasLattice = facts.tables.front().kind == TableKind::ThreeD;
    const QString channels = facts.rgb ? QStringLiteral("rgb") : QStringLiteral("bgr");
    return !hasLattice         ? channels
           : facts.blueFastest ? channels + QStringLiteral(",blue-fastest")
                               : channels + QStringLiteral(",red-fastest");
}

void printRow(const char* name, const QString& value) {
    std::printf("  %-9s %s\n", name, qUtf8Printable(cli::printable(value)));
}

void printRows(const char* name, const QStringList& values) {
    for (const QString& value : values) {
        printRow(name, value);
        name = "";
    }
}

QString identityText(const Samples& samples) {
    return samples.isIdentity() ? QStringLiteral("yes")
           : samples.isClose()
               ? QStringLiteral("no")
               : QStringLiteral("no, off by up to %1").arg(cli::text(samples.departure));
}

QString rangeText(const Samples& samples, std::size_t channel) {
    const float least = samples.least[channel];
    const float most = samples.most[channel];
    return least <= most ? cli::text(least) + QStringLiteral(" to ") + cli::text(most)
                         : QStringLiteral("no finite numbers");
}

void printTable(const TableFacts& table, const tintwell::Format& format) {
    printRow("kind", QLatin1String(kindName(table.kind)));
    printRow("size", table.kind == TableKind::ThreeD
                         ? QStringLiteral("%1 x %1 x %1").arg(table.size)
                         : cli::entriesText(table.size));
    if (const char* const name = nameOf(table.range, format)) {
        printRow(name, text(table.range));
    }
    for (std::size_t c = 0; c < channelNames.size(); ++c) {
        printRow(channelNames[c], rangeText(table.samples, c));
    }
    printRow("identity", identityText(table.samples));
}

void print(const Facts& facts) {
    const tintwell::Format& format = *tintwell::formatOf(facts.code);
    std::printf("%s\n", qUtf8Printable(cli::printable(facts.path)));
    printRow("format", QStringLiteral("%1 (%2)").arg(QLatin1String(format.name),
                                                     QString::fromUtf8(format.label)));
    for (const TableFacts& table : facts.tables) {
        printTable(table, format);
    }
    printRow("order", ordersText(facts));
    printRows("header", facts.header);
    printRows("note", facts.notes);
}

QJsonArray asJson(const Channels& values) {
    return {static_cast<double>(values[0]), static_cast<double>(values[1]),
            static_cast<double>(values[2])};
}

QJsonObject asJson(const TableFacts& table, const tintwell::Format& format) {
    QJsonObject object = {
        {QStringLiteral("kind"), QLatin1String(kindName(table.kind))},
        {QStringLiteral("size"), table.size},
        {QStringLiteral("least"), asJson(table.samples.least)},
        {QStringLiteral("most"), asJson(table.samples.most)},
        {QStringLiteral("notFinite"), table.samples.notFinite},
        {QStringLiteral("identity"), table.samples.isIdentity()},
        {QStringLiteral("departure"), static_cast<double>(table.samples.departure)}};
    if (const QLatin1String name(nameOf(table.range, format)); !name.isEmpty()) {
        object.insert(name + QStringLiteral("Min"), asJson(table.range.min));
        object.insert(name + QStringLiteral("Max"), asJson(table.range.max));
    }
    return object;
}

QJsonObject asJson(const Facts& facts) {
    const tintwell::Format& format = *tintwell::formatOf(facts.code);
    QJsonArray tables;
    for (const TableFacts& table : facts.tables) {
        tables.append(asJson(table, format));
    }
    return {{QStringLiteral("path"), facts.path},
            {QStringLiteral("code"), facts.code},
            {QStringLiteral("format"), QLatin1String(format.name)},
            {QStringLiteral("tables"), tables},
            {QStringLiteral("order"), ordersText(facts)},
            {QStringLiteral("header"), QJsonArray::fromStringList(facts.header)},
            {QStringLiteral("notes"), QJsonArray::fromStringList(facts.notes)}};
}

} // namespace

int cli::runInfo(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    line.addOption("from", fromHelp, "FORMAT");
    line.addOption("json", "Print JSON.");
    if (const auto status = line.parse(arguments, 1, std::numeric_limits<int>::max())) {
        return *status;
    }
    if (!fromIsKnown(line)) {
        return Usage;
    }
    QJsonArray array;
    int failed = 0;
    for (const QString& path : line.operands()) {
        const std::optional<Facts> facts = factsOf(path, line.value("from"));
        if (!facts) {
            ++failed;
        } else if (line.isSet("json")) {
            array.append(asJson(*facts));
        } else {
            print(*facts);
        }
    }
    if (line.isSet("json")) {
        printJson(array);
    }
    const int printed = finishOutput();
    return failed == 0 ? printed : Failed;
}
