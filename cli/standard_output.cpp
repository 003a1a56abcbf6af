#include "cli/standard_output.h"

#include "cli/command.h"
#include "cli/printable.h"
#include "cli/report.h"
#include "saving/descriptors.h"

#include <QJsonDocument>
#include <QStringList>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include <unistd.h>

namespace cli {

namespace {

void print(const QJsonDocument& document) {
    QStringList lines = QString::fromUtf8(document.toJson()).split(QLatin1Char('\n'));
    std::transform(lines.begin(), lines.end(), lines.begin(), printable);
    const QByteArray text = lines.join(QLatin1Char('\n')).toUtf8();
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout);
}

} // namespace

void printJson(const QJsonArray& array) {
    print(QJsonDocument(array));
}

void printJson(const QJsonObject& object) {
    print(QJsonDocument(object));
}

QJsonObject failureAsJson(const QString& path, const QString& error) {
    return {{QStringLiteral("path"), path}, {QStringLiteral("error"), error}};
}

int finishOutput() {
    errno = 0;
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0 &&
        tintwell::isDelivered(STDOUT_FILENO)) {
        return Done;
    }
    report(QStringLiteral("standard output: not written: ") +
           (errno != 0 ? tintwell::systemError() : QStringLiteral("part of it is missing")));
    return Failed;
}

} // namespace cli
