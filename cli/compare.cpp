// compare FIRST SECOND: tells how far two tables are apart.

#include "calc/compare.h"
#include "cli/command.h"
#include "cli/domain.h"
#include "cli/images.h"
#include "cli/numbers.h"
#include "cli/printable.h"
#include "cli/standard_output.h"
#include "cli/words.h"
#include "lut/words.h"
#include "picture/table_picture.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

using cli::Table;
using tintwell::Channels;
using tintwell::ComparedBy;
using tintwell::Comparison;
using tintwell::formatted;
using tintwell::StatedDomain;
using tintwell::TableKind;

/// The inputs that a file has its points for. Other domains are about samples.
StatedDomain inputDomain(const Table& table) {
    StatedDomain domain = statedDomain(table.lut, tintwell::usedKind(table.lut));
    if (table.format->traits.domain != tintwell::DomainMeaning::Input) {
        domain.max = StatedDomain().max;
    }
    return domain;
}

bool haveSameInputs(const Table& first, const Table& second) {
    const StatedDomain one = inputDomain(first);
    const StatedDomain other = inputDomain(second);
    return one.min == other.min && one.max == other.max;
}

QString wayText(const Comparison& found) {
    const QString points = cli::sizeText(found.kind, found.size);
    return found.by == ComparedBy::Points ? QStringLiteral("point by point, %1, %2")
                                                .arg(QLatin1String(kindName(found.kind)), points)
                                          : QStringLiteral("evaluated in %1, inputs %2")
                                                .arg(points, formatted(found.from, found.to));
}

QString numbers(const Channels& values) {
    return QStringLiteral("%1 %2 %3")
        .arg(formatted(values[0]), formatted(values[1]), formatted(values[2]));
}

QString placeText(const Comparison& found) {
    const auto& [red, green, blue] = found.index;
    const QString place = found.kind == TableKind::ThreeD
                              ? QStringLiteral("point %1 %2 %3").arg(red).arg(green).arg(blue)
                              : QStringLiteral("entry %1").arg(red);
    return QStringLiteral("input %1 (%2)").arg(numbers(found.input), place);
}

void printFigure(const char* name, const QString& value) {
    std::printf("%-9s  %s\n", name, qUtf8Printable(value));
}

void print(const Comparison& found) {
    printFigure("compared", wayText(found));
    printFigure("identical", found.isIdentical ? QStringLiteral("yes") : QStringLiteral("no"));
    if (found.nonFinite > 0) {
        printFigure("infinite", tintwell::counted(found.nonFinite, "difference"));
    }
    printFigure("", QStringLiteral("largest      mean         RMS"));
    for (std::size_t c = 0; c < cli::channelNames.size(); ++c) {
        const Comparison::Channel& channel = found.channels[c];
        printFigure(cli::channelNames[c], QStringLiteral("%1  %2  %3")
                                              .arg(formatted(channel.largest), -11)
                                              .arg(formatted(static_cast<float>(channel.mean)), -11)
                                              .arg(formatted(static_cast<float>(channel.rms))));
    }
    if (found.largest() > 0) {
        printFigure("where", placeText(found));
        printFigure("first", numbers(found.first));
        printFigure("second", numbers(found.second));
    }
}

QJsonObject asJson(const Comparison& found, const Table& first, const Table& second) {
    const auto& [red, green, blue] = found.channels;
    QJsonObject object = {
        {QStringLiteral("first"), first.path},
        {QStringLiteral("second"), second.path},
        {QStringLiteral("compared"),
         QLatin1String(found.by == ComparedBy::Points ? "points" : "evaluated")},
        {QStringLiteral("kind"), QLatin1String(kindName(found.kind))},
        {QStringLiteral("size"), found.size},
        {QStringLiteral("inputMin"), cli::jsonNumbers(found.from)},
        {QStringLiteral("inputMax"), cli::jsonNumbers(found.to)},
        {QStringLiteral("identical"), found.isIdentical},
        {QStringLiteral("largest"),
         cli::jsonNumbers(Channels{red.largest, green.largest, blue.largest})},
        {QStringLiteral("mean"), cli::jsonNumbers(std::array{red.mean, green.mean, blue.mean})},
        {QStringLiteral("rms"), cli::jsonNumbers(std::array{red.rms, green.rms, blue.rms})},
        {QStringLiteral("nonFinite"), static_cast<qint64>(found.nonFinite)}};
    if (found.largest() > 0) {
        object.insert(QStringLiteral("where"),
                      QJsonObject{{QStringLiteral("input"), cli::jsonNumbers(found.input)},
                                  {QStringLiteral("index"), cli::jsonNumbers(found.index)},
                                  {QStringLiteral("first"), cli::jsonNumbers(found.first)},
                                  {QStringLiteral("second"), cli::jsonNumbers(found.second)}});
    }
    return object;
}

int savePicture(cli::ImageJob& job, const Read_LUTFile& differences, const QString& second) {
    const QString title =
        QStringLiteral("%1 and %2")
            .arg(QFileInfo(job.table.path).fileName(), QFileInfo(second).fileName());
    return cli::doImageWork(job.image.target.path, [&] {
        return saveImage(job.image, tintwell::drawDifferences(differences, title), job.notes);
    });
}

/// Status 1, with the reason reported, if the tables are further apart than allowed.
int judge(const Comparison& found, std::optional<float> tolerance, const QString& second) {
    if (!tolerance || found.largest() <= *tolerance) {
        return cli::Done;
    }
    cli::reportFile(second, QStringLiteral("found a difference of up to %1, expected at most %2")
                                .arg(QString::fromLatin1(cli::shortest(found.largest())),
                                     QString::fromLatin1(cli::shortest(*tolerance))));
    return cli::Failed;
}

} // namespace

int cli::runCompare(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    if (const auto status = line.parse(arguments, 2, 2)) {
        return *status;
    }
    const std::optional<Input> input = inputOptions(line);
    std::optional<float> tolerance;
    if (!input || !line.number("tolerance", tolerance)) {
        return Usage;
    }
    ImageJob job;
    const std::optional<QString> picture = line.value("picture");
    if (picture) {
        if (leadsToStandardOutput(*picture)) {
            return line.wrong(
                QStringLiteral("--picture needs a file: standard output has the text"));
        }
        if (const auto status = beginImage(line, *picture, job)) {
            return *status;
        }
    }
    job.notes = Notes(line.isSet("strict"));
    Table second;
    if (!loadOneTable(*input, line.operands().at(0), job.table, job.notes) ||
        !loadOneTable(*input, line.operands().at(1), second, job.notes)) {
        return Failed;
    }
    if (!job.notes.allowWriting()) {
        reportFile(second.path, QStringLiteral("not compared: ") + job.notes.reason());
        return Failed;
    }
    Comparison found = {};
    Read_LUTFile differences(nullptr);
    if (!compareTables(job.table.lut, second.lut, haveSameInputs(job.table, second), found,
                       picture ? &differences : nullptr)) {
        reportFile(*picture, differences.lastError);
        return Failed;
    }
    if (line.isSet("json")) {
        printJson(asJson(found, job.table, second));
    } else {
        print(found);
    }
    const int printed = finishOutput();
    const int drawn = picture ? savePicture(job, differences, second.path) : Done;
    const int judged = judge(found, tolerance, second.path);
    return std::max({printed, drawn, judged});
}
