// formats: the catalogue as a table.

#include "cli/command.h"
#include "cli/files.h"
#include "cli/standard_output.h"
#include "lut/catalogue.h"

#include <QJsonArray>
#include <QJsonObject>

#include <cstdio>

namespace {

using tintwell::Format;
using tintwell::formatCount;
using tintwell::kindName;

void printTable() {
    std::puts("CODE  NAME       KIND  READS  WRITES  EXTENSIONS                 LABEL");
    for (int code = 0; code < formatCount; ++code) {
        const Format& format = *tintwell::formatOf(code);
        std::printf("%4d  %-9s  %-4s  %-5s  %-6s  %-25s  %s\n", code, format.name,
                    kindName(format.kind), "yes", format.write != nullptr ? "yes" : "no",
                    format.extensions, format.label);
    }
}

QJsonArray asJson() {
    QJsonArray formats;
    for (int code = 0; code < formatCount; ++code) {
        const Format& format = *tintwell::formatOf(code);
        formats.append(QJsonObject{
            {QStringLiteral("code"), code},
            {QStringLiteral("name"), QLatin1String(format.name)},
            {QStringLiteral("label"), QString::fromUtf8(format.label)},
            {QStringLiteral("kind"), QLatin1String(kindName(format.kind))},
            {QStringLiteral("reads"), true},
            {QStringLiteral("writes"), format.write != nullptr},
            {QStringLiteral("extensions"), QJsonArray::fromStringList(cli::extensionsOf(code))},
            {QStringLiteral("remark"), QLatin1String(format.remark)}});
    }
    return formats;
}

} // namespace

int cli::runFormats(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    line.addOption("json", "Print JSON.");
    if (const auto status = line.parse(arguments, 0, 0)) {
        return *status;
    }
    if (line.isSet("json")) {
        printJson(asJson());
    } else {
        printTable();
    }
    return finishOutput();
}
