// apply LUT IN... OUT: puts images through a table.

#include "calc/look_up_image.h"
#include "cli/batch.h"
#include "cli/image_thread.h"
#include "cli/images.h"
#include "cli/input.h"

#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace {

using cli::BatchOptions;
using cli::Job;
using cli::Notes;

/// More images at a time would take much memory: each has up to 8 bytes a pixel, twice, and its
/// file.
constexpr int mostUsualJobs = 8;

struct Application {
    cli::Table table;
    QByteArray type; ///< --to; empty: from the extension of each output
    std::optional<int> compression;
    bool overwrite = false;
};

/// The type of a job's output; empty if it is that of the image that is read.
QByteArray typeOf(const Application& application, const Job& job) {
    const bool isNamed = application.type.isEmpty() && !cli::isStandardOutput(job.out);
    return isNamed ? cli::imageTypeOf(job.out) : application.type;
}

bool apply(const Application& application, const Job& job, Notes& notes) {
    if (!notes.allowWriting()) {
        return notes.fail(job.out, QStringLiteral("not written: ") + notes.reason());
    }
    QByteArray type = typeOf(application, job);
    QImage image = cli::loadImage(job.in, type, notes);
    return !image.isNull() &&
           saveImage({{job.out, application.overwrite}, type, application.compression},
                     tintwell::lookUpImage(application.table.lut, std::move(image)), notes);
}

/// Each image goes to a file of its own name, or of the extension of --to.
std::vector<Job> imageJobs(const QStringList& images, const QString& folder,
                           const Application& application) {
    std::vector<Job> jobs = cli::batchJobs(images, folder, [&application](const QString& in) {
        const QFileInfo file(in);
        return application.type.isEmpty() ? file.fileName()
                                          : file.completeBaseName() + QLatin1Char('.') +
                                                QString::fromLatin1(application.type);
    });
    for (Job& job : jobs) {
        if (job.problem.isEmpty()) {
            job.problem = cli::imageTypeProblem(typeOf(application, job), job.out);
        }
    }
    return jobs;
}

/// Reads the table and puts the images through it. If the table cannot be read, all of them fail.
int run(const cli::CommandLine& line, const BatchOptions& options, const cli::Input& input,
        Application& application, const std::vector<Job>& jobs) {
    const QString table = line.operands().first();
    Notes notes(line.isSet("strict"), options.isQuiet);
    loadOneTable(input, table, application.table, notes);
    return runBatch(options, {.jobs = jobs,
                              .notes = notes,
                              .table = table,
                              .crew = cli::onImageThreads,
                              .work = [&application](const Job& job, Notes& told) {
                                  return apply(application, job, told);
                              }});
}

int applyOne(const cli::CommandLine& line, const BatchOptions& options, const cli::Input& input,
             Application& application) {
    const QStringList operands = line.operands();
    if (operands.size() != 3) {
        return line.wrong(operands.size() < 3
                              ? QStringLiteral("found no output, expected LUT IN-IMAGE OUT-IMAGE")
                              : QStringLiteral("several images need --output-directory"));
    }
    const Job job = {operands.at(1), operands.at(2)};
    if (application.type.isEmpty() && !cli::isStandardOutput(job.out)) {
        if (const auto status = checkImageType(line, cli::imageTypeOf(job.out), job.out)) {
            return *status;
        }
    }
    return run(line, options, input, application, {job});
}

} // namespace

int cli::runApply(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    if (const auto status = line.parse(arguments, 2, std::numeric_limits<int>::max())) {
        return *status;
    }
    const std::optional<Input> input = inputOptions(line);
    const std::optional<BatchOptions> options =
        input ? batchOptions(line, std::min(QThread::idealThreadCount(), mostUsualJobs))
              : std::nullopt;
    Application application;
    if (!options || !line.number("compression", 0, 9, application.compression)) {
        return Usage;
    }
    application.overwrite = options->mayReplace();
    application.type = line.value("to").value_or(QString()).toLower().toLatin1();
    if (line.isSet("to")) {
        if (const auto status = checkImageType(line, application.type, QStringLiteral("--to"))) {
            return *status;
        }
    }
    if (!options->folder) {
        return applyOne(line, *options, *input, application);
    }
    const QStringList images = line.operands().mid(1);
    return haveNames(line, images) ? run(line, *options, *input, application,
                                         imageJobs(images, *options->folder, application))
                                   : Usage;
}
