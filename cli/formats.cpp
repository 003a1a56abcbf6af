// formats: the catalogue as a table.

#include "cli/command.h"
#include "cli/standard_output.h"
#include "lut/catalogue.h"

#include <QJsonArray>
#include <QJsonObject>

#include <cstdio>

namespace {

using tintwell::catalogue;
using tintwell::Format;

void printTable() {
    std::puts("CODE  NAME       KIND  READS  WRITES  EXTENSIONS                 LABEL");
    for (const Format& format : catalogue) {
        std::printf("%4d  %-9s  %-4s  %-5s  %-6s  %-25s  %s\n", codeOf(format), format.name,
                    kindName(format.kind), "yes", format.write != nullptr ? "yes" : "no",
                    format.extensions, format.label);
    }
}

QJsonArray catalogueAsJson() {
    QJsonArray formats;
    for (const Format& format : catalogue) {
        formats.append(QJsonObject{
            {QStringLiteral("code"), codeOf(format)},
            {QStringLiteral("name"), QLatin1String(format.name)},
            {QStringLiteral("label"), QString::fromUtf8(format.label)},
            {QStringLiteral("kind"), QLatin1String(kindName(format.kind))},
            {QStringLiteral("reads"), true},
            {QStringLiteral("writes"), format.write != nullptr},
            {QStringLiteral("extensions"), QJsonArray::fromStringList(extensionsOf(format))},
            {QStringLiteral("caveat"), QLatin1String(format.traits.caveat)}});
    }
    return formats;
}

} // namespace

int cli::runFormats(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    if (const auto status = line.parse(arguments, 0, 0)) {
        return *status;
    }
    if (line.isSet("json")) {
        printJson(catalogueAsJson());
    } else {
        printTable();
    }
    return finishOutput();
}
