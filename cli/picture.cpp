// picture LUT OUT.png: draws a table.

#include "calc/measure.h"
#include "cli/command.h"
#include "cli/domain.h"
#include "cli/images.h"
#include "cli/words.h"
#include "picture/table_picture.h"

#include <QFileInfo>

namespace {

/// "cube, 3D, 33 points per axis, domain 0 to 1"
QString describe(const cli::Table& table) {
    const tintwell::TableKind kind = tintwell::usedKind(table.lut);
    const int size = tintwell::sizeOf(table.lut, kind);
    const tintwell::StatedDomain domain = statedDomain(table.lut, kind);

    QStringList facts = {QLatin1String(table.format->name), QLatin1String(kindName(kind)),
                         cli::sizeText(kind, size)};
    if (const char* const label = cli::domainLabel(domain, *table.format)) {
        facts << QLatin1String(label) + QLatin1Char(' ') + cli::formatted(domain);
    }
    return facts.join(QStringLiteral(", "));
}

} // namespace

int cli::runPicture(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    ImageJob job;
    if (const auto status = beginImageJob(line, arguments, 2, job)) {
        return *status;
    }
    const Table& table = job.table;
    const QString title = QFileInfo(table.path).fileName();
    return doImageWork(job.image.target.path, [&] {
        return saveImage(job.image, tintwell::drawTable(table.lut, title, describe(table)),
                         job.notes);
    });
}
