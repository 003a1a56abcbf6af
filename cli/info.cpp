// info FILE...: what tables hold, and what may surprise in them.

#include "cli/command.h"
#include "cli/files.h"
#include "cli/report.h"
#include "cli/standard_output.h"
#include "formats/text/line_source.h"
#include "lut/catalogue.h"
#include "lut/lattice.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>
#include <string_view>
#include <vector>

namespace {

using Channels = std::array<float, 3>;

constexpr std::array<const char*, 3> channelNames = {"red", "green", "blue"};

/// What the samples of a table come to.
struct Samples {
    Channels least;
    Channels most;
    float departure = 0; ///< the largest from the identity

    Samples() {
        least.fill(std::numeric_limits<float>::infinity());
        most.fill(-std::numeric_limits<float>::infinity());
    }

    void take(const float* cell, const Channels& identity) {
        for (std::size_t c = 0; c < 3; ++c) {
            least[c] = std::fmin(least[c], cell[c]);
            most[c] = std::fmax(most[c], cell[c]);
            // Not a number departs from everything.
            const float distance = std::fabs(cell[c] - identity[c]);
            departure = distance <= departure ? departure : distance;
        }
    }
    bool isIdentity() const { return departure <= 1e-5F; }
};

struct TableFacts {
    const char* kind;
    int size = 0;
    Channels domainMin = {};
    Channels domainMax = {};
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

Channels triple(const float* values) {
    return {values[0], values[1], values[2]};
}

float place(int n, int size) {
    return size > 1 ? static_cast<float>(n) / static_cast<float>(size - 1) : 0.0F;
}

Samples samplesOf3D(const Read_LUTFile& lut) {
    Samples samples;
    const int n = lut.size3D;
    tintwell::visitLattice(n, [&](int i, int j, int k) {
        samples.take(lut.data3D[i][j][k], {place(i, n), place(j, n), place(k, n)});
        return true;
    });
    return samples;
}

Samples samplesOf1D(const Read_LUTFile& lut) {
    Samples samples;
    for (int n = 0; n < lut.size1D; ++n) {
        const float t = place(n, lut.size1D);
        samples.take(lut.data1D[n], {t, t, t});
    }
    return samples;
}

bool isUnit(const TableFacts& table) {
    return table.domainMin == Channels{0, 0, 0} && table.domainMax == Channels{1, 1, 1};
}

/// Neither part of an image nor of an XML document.
bool isPlain(const QString& text) {
    return !text.startsWith(QLatin1Char('<')) && std::all_of(text.begin(), text.end(), [](QChar c) {
        return c == QLatin1Char('\t') || (c.isPrint() && c != QChar(QChar::ReplacementCharacter));
    });
}

/// Lines of samples have no letters but those of numbers.
bool hasWords(const QString& text) {
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c.isLetter() && c.toLower() != QLatin1Char('e'); });
}

/// The lines of a text file before its samples: titles, comments, keywords.
QStringList headerOf(const QString& path) {
    constexpr int enough = 12;
    constexpr int longest = 100;
    QStringList header;
    tintwell::LineSource lines(path);
    while (lines.isOpen() && !lines.atEnd() && header.size() < enough) {
        const std::string_view line = lines.next();
        const QString words =
            QString::fromUtf8(line.data(), static_cast<int>(line.size())).left(longest);
        if (hasWords(words) && isPlain(words)) {
            header += words;
        } else if (!words.isEmpty() && !words.startsWith(QLatin1Char('#'))) {
            break;
        }
    }
    return header;
}

QStringList notesOn(const Facts& facts, const Read_LUTFile& lut) {
    QStringList notes;
    if (const QString remark = QLatin1String(tintwell::formatOf(facts.code)->remark);
        !remark.isEmpty()) {
        notes += remark;
    }
    if (!std::all_of(facts.tables.begin(), facts.tables.end(), isUnit)) {
        notes += QStringLiteral("samples are clamped to the domain and divided by its width; its "
                                "start is not subtracted");
    }
    if (lut.meshHeader) {
        notes += QStringLiteral("a Mesh line declares integer samples");
    }
    if (lut.gamma != 1.0) {
        notes += QStringLiteral("a gamma of %1 is stated, and not applied").arg(lut.gamma);
    }
    if (lut.size1D > 0 && lut.dataOrder != lut.tableOrder) {
        notes += QStringLiteral("the library's default order swaps red and blue of these curves; "
                                "here they stand as in the file");
    }
    return notes;
}

/// Reports what is wrong with a file that cannot be told of.
std::optional<Facts> factsOf(const QString& path, const QString& formatName) {
    const auto code = cli::formatOfInput(path, formatName);
    if (!code) {
        return std::nullopt;
    }
    // A full read forgets the domain of the file.
    LUTFILE_ST st;
    st.path = path;
    st.formatCode = *code;
    Read_LUTFile probed(nullptr);
    probed.ReadFile(st, true);
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
        facts.tables.push_back({"3D", lut.size3D, triple(probed.domainMin3D),
                                triple(probed.domainMax3D), samplesOf3D(lut)});
    }
    if (lut.size1D > 0) {
        facts.tables.push_back({"1D", lut.size1D, triple(probed.domainMin1D),
                                triple(probed.domainMax1D), samplesOf1D(lut)});
    }
    facts.header = headerOf(path);
    facts.notes = notesOn(facts, lut);
    return facts;
}

QString number(float value) {
    return QString::number(static_cast<double>(value), 'g', 6);
}

QString text(const Channels& values) {
    const bool same = values[0] == values[1] && values[1] == values[2];
    return same ? number(values[0])
                : QStringLiteral("%1 %2 %3")
                      .arg(number(values[0]), number(values[1]), number(values[2]));
}

QString ordersText(const Facts& facts) {
    const bool hasLattice = qstrcmp(facts.tables.front().kind, "3D") == 0;
    const QString channels = facts.rgb ? QStringLiteral("rgb") : QStringLiteral("bgr");
    return !hasLattice         ? channels
           : facts.blueFastest ? channels + QStringLiteral(",blue-fastest")
                               : channels + QStringLiteral(",red-fastest");
}

void printRow(const char* name, const QString& value) {
    std::printf("  %-9s %s\n", name, qUtf8Printable(value));
}

void printRows(const char* name, const QStringList& values) {
    for (const QString& value : values) {
        printRow(name, value);
        name = "";
    }
}

void printTable(const TableFacts& table) {
    const bool is3D = qstrcmp(table.kind, "3D") == 0;
    printRow("kind", QLatin1String(table.kind));
    printRow("size", is3D ? QStringLiteral("%1 x %1 x %1").arg(table.size)
                          : QStringLiteral("%1 entries").arg(table.size));
    printRow("domain", text(table.domainMin) + QStringLiteral(" to ") + text(table.domainMax));
    for (std::size_t c = 0; c < channelNames.size(); ++c) {
        printRow(channelNames[c], number(table.samples.least[c]) + QStringLiteral(" to ") +
                                      number(table.samples.most[c]));
    }
    printRow("identity",
             table.samples.isIdentity()
                 ? QStringLiteral("yes")
                 : QStringLiteral("no, off by up to %1").arg(number(table.samples.departure)));
}

void print(const Facts& facts) {
    const tintwell::Format& format = *tintwell::formatOf(facts.code);
    std::printf("%s\n", qUtf8Printable(facts.path));
    printRow("format", QStringLiteral("%1 (%2)").arg(QLatin1String(format.name),
                                                     QString::fromUtf8(format.label)));
    for (const TableFacts& table : facts.tables) {
        printTable(table);
    }
    printRow("order", ordersText(facts));
    printRows("header", facts.header);
    printRows("note", facts.notes);
}

QJsonArray asJson(const Channels& values) {
    return {static_cast<double>(values[0]), static_cast<double>(values[1]),
            static_cast<double>(values[2])};
}

QJsonObject asJson(const TableFacts& table) {
    return {{QStringLiteral("kind"), QLatin1String(table.kind)},
            {QStringLiteral("size"), table.size},
            {QStringLiteral("domainMin"), asJson(table.domainMin)},
            {QStringLiteral("domainMax"), asJson(table.domainMax)},
            {QStringLiteral("least"), asJson(table.samples.least)},
            {QStringLiteral("most"), asJson(table.samples.most)},
            {QStringLiteral("identity"), table.samples.isIdentity()},
            {QStringLiteral("departure"), static_cast<double>(table.samples.departure)}};
}

QJsonObject asJson(const Facts& facts) {
    QJsonArray tables;
    for (const TableFacts& table : facts.tables) {
        tables.append(asJson(table));
    }
    return {{QStringLiteral("path"), facts.path},
            {QStringLiteral("code"), facts.code},
            {QStringLiteral("format"), QLatin1String(tintwell::formatOf(facts.code)->name)},
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
