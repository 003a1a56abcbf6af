// check FILE...: tells what readers had to do to files.

#include "cli/command.h"
#include "cli/input.h"
#include "cli/printable.h"
#include "cli/report.h"
#include "cli/standard_output.h"
#include "lut/words.h"

#include <QJsonArray>
#include <QJsonObject>

#include <cstdio>

namespace {

QJsonObject asJson(const cli::Table& table) {
    return {{QStringLiteral("path"), table.path},
            {QStringLiteral("format"), QLatin1String(table.format->name)},
            {QStringLiteral("remarks"), QJsonArray::fromStringList(table.lut.remarks)}};
}

void print(const cli::Table& table) {
    for (const QString& remark : table.lut.remarks) {
        std::puts(qUtf8Printable(cli::printable(tintwell::inFile(table.path, remark))));
    }
}

} // namespace

int cli::runCheck(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    Input input;
    if (const auto status = beginReading(line, arguments, input)) {
        return *status;
    }
    QJsonArray array;
    bool isClean = true;
    for (const QString& path : line.operands()) {
        Table table;
        const QString problem = readTable(input, path, table);
        isClean = isClean && problem.isEmpty() && table.lut.remarks.isEmpty();
        if (!problem.isEmpty()) {
            reportFile(path, problem);
            array.append(failureAsJson(path, problem));
        } else if (line.isSet("json")) {
            array.append(asJson(table));
        } else {
            print(table);
        }
    }
    if (line.isSet("json")) {
        printJson(array);
    }
    const int printed = finishOutput();
    return isClean ? printed : Failed;
}
