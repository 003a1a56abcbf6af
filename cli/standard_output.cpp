#include "cli/standard_output.h"

#include "cli/command.h"
#include "cli/report.h"

#include <QJsonDocument>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace cli {

void printJson(const QJsonArray& array) {
    const QByteArray text = QJsonDocument(array).toJson();
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout);
}

int finishOutput() {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) {
        return Done;
    }
    report(QStringLiteral("standard output: not written: ") +
           QString::fromLocal8Bit(std::strerror(errno)));
    return Failed;
}

} // namespace cli
