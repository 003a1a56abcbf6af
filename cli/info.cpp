// info FILE...: shows what tables hold, and what may surprise their users.

#include "calc/measure.h"
#include "calc/sizes.h"
#include "cli/command.h"
#include "cli/domain.h"
#include "cli/input.h"
#include "cli/printable.h"
#include "cli/standard_output.h"
#include "cli/words.h"
#include "lut/catalogue.h"
#include "lut/header_lines.h"
#include "lut/words.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <vector>

namespace {

using cli::formatted;
using tintwell::Channels;
using tintwell::Format;
using tintwell::formatted;
using tintwell::Statistics;
using tintwell::TableKind;

/// How far a table would be off between its points at another size.
struct SizeError {
    int size;
    float error;
};

struct TableFacts {
    TableKind kind;
    int size;
    tintwell::StatedDomain domain;
    Statistics samples;
    std::vector<SizeError> errors; ///< of the usual sizes, if they are asked for
};

struct Facts {
    QString path;
    const Format* format = nullptr;
    std::vector<TableFacts> tables;
    tintwell::Orders orders = tintwell::rgbBlueFastest;
    QStringList header;
    QStringList notes;
    QStringList remarks; ///< those of the notes that the reader made
};

/// What is always so in the format, and what the reader had to do.
QStringList notesOn(const Facts& facts, const Read_LUTFile& lut) {
    QStringList notes = {QLatin1String(facts.format->traits.caveat)};
    notes.removeAll(QString());
    if (lut.meshHeader) {
        notes += QStringLiteral("a Mesh line declares integer samples");
    }
    return notes + lut.remarks;
}

TableFacts factsOf(const Read_LUTFile& lut, TableKind kind) {
    return {
        kind, tintwell::sizeOf(lut, kind), statedDomain(lut, kind), statisticsOf(lut, kind), {}};
}

/// Without those that memory does not suffice for.
std::vector<SizeError> sizeErrors(const Read_LUTFile& lut) {
    std::vector<SizeError> errors;
    for (const int size : tintwell::usualSizes) {
        if (const std::optional<float> error = tintwell::errorAtSize(lut, size)) {
            errors.push_back({size, *error});
        }
    }
    return errors;
}

Facts factsOf(const cli::Table& table, bool withSizes) {
    const Read_LUTFile& lut = table.lut;
    Facts facts;
    facts.path = table.path;
    facts.format = table.format;
    facts.orders = {lut.dataOrder, lut.tableOrder};
    if (lut.hasTable3D()) {
        facts.tables.push_back(factsOf(lut, TableKind::ThreeD));
        facts.tables.back().errors = withSizes ? sizeErrors(lut) : std::vector<SizeError>();
    }
    if (lut.hasTable1D()) {
        facts.tables.push_back(factsOf(lut, TableKind::OneD));
    }
    if (!table.format->isImage) {
        facts.header = tintwell::headerLines(table.source.place());
    }
    facts.notes = notesOn(facts, lut);
    facts.remarks = lut.remarks;
    return facts;
}

QString ordersText(const Facts& facts) {
    const bool hasLattice = facts.tables.front().kind == TableKind::ThreeD;
    const QString channels = facts.orders.dataOrder ? QStringLiteral("rgb") : QStringLiteral("bgr");
    return !hasLattice               ? channels
           : facts.orders.tableOrder ? channels + QStringLiteral(",blue-fastest")
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

QString identityText(const Statistics& samples) {
    return samples.isIdentity() ? QStringLiteral("yes")
           : samples.isClose()
               ? QStringLiteral("no")
               : QStringLiteral("no, off by up to %1").arg(formatted(samples.maxDeviation));
}

QString rangeText(const Statistics& samples, std::size_t channel) {
    const float min = samples.min[channel];
    const float max = samples.max[channel];
    return min <= max ? formatted(min) + QStringLiteral(" to ") + formatted(max)
                      : QStringLiteral("no finite numbers");
}

void printTable(const TableFacts& table, const Format& format) {
    printRow("kind", QLatin1String(kindName(table.kind)));
    printRow("size", table.kind == TableKind::ThreeD
                         ? QStringLiteral("%1 x %1 x %1").arg(table.size)
                         : cli::entriesText(table.size));
    if (const char* const label = cli::domainLabel(table.domain, format)) {
        printRow(label, formatted(table.domain));
    }
    for (std::size_t c = 0; c < cli::channelNames.size(); ++c) {
        printRow(cli::channelNames[c], rangeText(table.samples, c));
    }
    printRow("identity", identityText(table.samples));
    const char* label = "sizes";
    for (const SizeError& at : table.errors) {
        printRow(label,
                 QStringLiteral("%1: off by up to %2").arg(at.size).arg(formatted(at.error)));
        label = "";
    }
}

void print(const Facts& facts) {
    const Format& format = *facts.format;
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

QJsonObject asJson(const TableFacts& table, const Format& format) {
    const Statistics& samples = table.samples;
    QJsonObject object = {
        {QStringLiteral("kind"), QLatin1String(kindName(table.kind))},
        {QStringLiteral("size"), table.size},
        {QStringLiteral("min"), cli::jsonNumbers(samples.min)},
        {QStringLiteral("max"), cli::jsonNumbers(samples.max)},
        {QStringLiteral("nonFinite"), static_cast<qint64>(samples.nonFiniteCount)},
        {QStringLiteral("identity"), samples.isIdentity()},
        {QStringLiteral("maxDeviation"), static_cast<double>(samples.maxDeviation)}};
    if (const QLatin1String label(cli::domainLabel(table.domain, format)); !label.isEmpty()) {
        object.insert(label + QStringLiteral("Min"), cli::jsonNumbers(table.domain.min));
        object.insert(label + QStringLiteral("Max"), cli::jsonNumbers(table.domain.max));
    }
    if (!table.errors.empty()) {
        QJsonArray sizes;
        for (const SizeError& at : table.errors) {
            sizes.append(QJsonObject{{QStringLiteral("size"), at.size},
                                     {QStringLiteral("error"), static_cast<double>(at.error)}});
        }
        object.insert(QStringLiteral("sizes"), sizes);
    }
    return object;
}

QJsonObject asJson(const Facts& facts) {
    QJsonArray tables;
    for (const TableFacts& table : facts.tables) {
        tables.append(asJson(table, *facts.format));
    }
    return {{QStringLiteral("path"), facts.path},
            {QStringLiteral("code"), codeOf(*facts.format)},
            {QStringLiteral("format"), QLatin1String(facts.format->name)},
            {QStringLiteral("tables"), tables},
            {QStringLiteral("order"), ordersText(facts)},
            {QStringLiteral("header"), QJsonArray::fromStringList(facts.header)},
            {QStringLiteral("notes"), QJsonArray::fromStringList(facts.notes)},
            {QStringLiteral("remarks"), QJsonArray::fromStringList(facts.remarks)}};
}

} // namespace

int cli::runInfo(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    Input input;
    if (const auto status = beginReading(line, arguments, input)) {
        return *status;
    }
    QJsonArray array;
    int failed = 0;
    for (const QString& path : line.operands()) {
        Table table;
        if (const QString problem = readTable(input, path, table); !problem.isEmpty()) {
            reportFile(path, problem);
            array.append(failureAsJson(path, problem));
            ++failed;
            continue;
        }
        failed += line.isSet("strict") && !table.lut.remarks.isEmpty() ? 1 : 0;
        const Facts facts = factsOf(table, line.isSet("sizes"));
        if (line.isSet("json")) {
            array.append(asJson(facts));
        } else {
            print(facts);
        }
    }
    if (line.isSet("json")) {
        printJson(array);
    }
    const int printed = finishOutput();
    return failed == 0 ? printed : Failed;
}
