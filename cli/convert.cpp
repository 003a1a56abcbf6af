// convert IN... OUT: reads tables and writes them in another format, size or order.

#include "cli/batch.h"
#include "cli/domain.h"
#include "cli/input.h"
#include "cli/output.h"
#include "cli/report.h"

#include <QFileInfo>
#include <QThread>

#include <limits>
#include <optional>

namespace {

using cli::Input;
using cli::Job;
using cli::Notes;
using cli::Output;
using tintwell::Format;

struct Conversion {
    Input input;
    Output output;
    Notes notes{false};
    const Format* to = nullptr;
};

bool convert(const Conversion& conversion, const Job& job, Notes& notes) {
    cli::Table table;
    if (!cli::loadTable(conversion.input, job.in, table, notes)) {
        return false;
    }
    noteLostDomain(table, conversion.to->kind, job.out, notes);
    noteLostTitle(table, job.out, notes);
    return cli::writeTable(conversion.output, *conversion.to, job.in, job.out, table.lut, notes);
}

int run(const cli::BatchOptions& options, const Conversion& conversion,
        const std::vector<Job>& jobs) {
    return runBatch(options, {.jobs = jobs,
                              .notes = conversion.notes,
                              .work = [&conversion](const Job& job, Notes& notes) {
                                  return convert(conversion, job, notes);
                              }});
}

int convertBatch(const cli::CommandLine& line, const cli::BatchOptions& options,
                 Conversion conversion) {
    if (conversion.output.format == nullptr) {
        return line.wrong(QStringLiteral("--output-directory needs --to"));
    }
    conversion.to = cli::targetFormat(line, conversion.output, QString());
    if (conversion.to == nullptr) {
        return cli::Usage;
    }
    const QStringList inputs = line.operands();
    if (!cli::haveNames(line, inputs)) {
        return cli::Usage;
    }
    const QString extension = extensionsOf(*conversion.to).first();
    return run(options, conversion,
               cli::batchJobs(inputs, *options.folder, [&extension](const QString& in) {
                   return QFileInfo(in).completeBaseName() + QLatin1Char('.') + extension;
               }));
}

int convertOne(const cli::CommandLine& line, const cli::BatchOptions& options,
               Conversion conversion) {
    const QStringList operands = line.operands();
    if (operands.size() != 2) {
        return line.wrong(operands.size() < 2
                              ? QStringLiteral("found no output, expected IN OUT")
                              : QStringLiteral("several inputs need --output-directory"));
    }
    Job job = {operands.first(), operands.last()};
    conversion.input.format = formatOfInput(conversion.input, job.in, job.problem);
    if (conversion.input.format != nullptr) {
        conversion.to =
            cli::targetFormat(line, conversion.output, job.out, conversion.input.format);
        if (conversion.to == nullptr) {
            return cli::Usage;
        }
    }
    return run(options, conversion, {job});
}

} // namespace

int cli::runConvert(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    if (const auto status = line.parse(arguments, 1, std::numeric_limits<int>::max())) {
        return *status;
    }
    const std::optional<Input> input = inputOptions(line);
    std::optional<Output> output = input ? outputOptions(line) : std::nullopt;
    const std::optional<BatchOptions> options =
        output ? batchOptions(line, QThread::idealThreadCount()) : std::nullopt;
    if (!options) {
        return Usage;
    }
    output->overwrite = options->mayReplace();
    const Conversion conversion = {*input, *output, Notes(line.isSet("strict"), options->isQuiet)};
    return options->folder ? convertBatch(line, *options, conversion)
                           : convertOne(line, *options, conversion);
}
