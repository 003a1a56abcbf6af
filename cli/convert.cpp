// convert IN... OUT: reads tables and writes them in another format, size or order.

#include "cli/output.h"
#include "cli/range.h"
#include "cli/report.h"
#include "lut/catalogue.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QSet>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <exception>
#include <limits>
#include <mutex>
#include <new>
#include <optional>
#include <thread>
#include <vector>

namespace {

using cli::Orders;
using cli::Output;

struct Job {
    QString in;
    QString out;
};

struct Conversion {
    std::optional<int> from; ///< --from; else each input tells
    int to = 0;
    Orders inOrders; ///< --in-order
    Output output;
};

bool convert(const Conversion& conversion, const Job& job) {
    const auto from = conversion.from ? conversion.from : cli::formatOfInput(job.in);
    Read_LUTFile lut(nullptr);
    if (!from || !cli::readLut(job.in, *from, conversion.inOrders, lut)) {
        return false;
    }
    cli::noteRange(job.in, *from, lut);
    return cli::writeTable(conversion.output, conversion.to, job.in, job.out, lut);
}

/// Where the files of a batch go. Leaves out, with the error reported, those that would take the
/// place of another.
std::vector<Job> batchJobs(const QStringList& inputs, const QString& folder, int formatCode) {
    const QString extension = cli::extensionsOf(formatCode).first();
    std::vector<Job> jobs;
    QSet<QString> taken;
    for (const QString& in : inputs) {
        const QString name = QFileInfo(in).completeBaseName() + QLatin1Char('.') + extension;
        if (taken.contains(name)) {
            cli::reportFile(in, QStringLiteral("another input becomes %1 already").arg(name));
            continue;
        }
        taken.insert(name);
        jobs.push_back({in, QDir(folder).filePath(name)});
    }
    return jobs;
}

/// The jobs of a batch, shared by all threads that call work().
class Batch {
public:
    Batch(const Conversion& conversion, const std::vector<Job>& jobs)
        : m_conversion(conversion), m_jobs(jobs) {
        m_timer.start();
    }

    int done() const { return m_done; }

    /// Takes jobs until none is left.
    void work() noexcept {
        for (std::size_t n = m_next++; n < m_jobs.size(); n = m_next++) {
            const int converted = run(m_jobs[n]) ? 1 : 0;
            const std::lock_guard<std::mutex> lock(m_counting);
            ++m_ended;
            m_done += converted;
            showProgress();
        }
    }

private:
    bool run(const Job& job) noexcept try {
        return convert(m_conversion, job);
    } catch (const std::bad_alloc&) {
        cli::reportNoMemory(job.in);
        return false;
    }

    void showProgress() const {
        constexpr qint64 patience = 1000; // in milliseconds
        if (m_timer.elapsed() > patience) {
            cli::showProgress(m_ended, static_cast<int>(m_jobs.size()));
        }
    }

    const Conversion& m_conversion;
    const std::vector<Job>& m_jobs;
    QElapsedTimer m_timer;
    std::atomic<std::size_t> m_next = 0;
    std::mutex m_counting;
    int m_ended = 0;
    int m_done = 0;
};

/// Runs every job, \a threads at a time or as many as can be started. Returns how many succeeded.
int runAll(const Conversion& conversion, const std::vector<Job>& jobs, int threads) {
    Batch batch(conversion, jobs);
    std::vector<std::thread> helpers;
    try {
        const std::size_t count = std::min(static_cast<std::size_t>(threads), jobs.size());
        helpers.reserve(count);
        while (helpers.size() + 1 < count) {
            helpers.emplace_back([&batch] { batch.work(); });
        }
    } catch (const std::exception&) {
        // No more threads can be started: those that run do all the work.
    }
    batch.work();
    for (std::thread& helper : helpers) {
        helper.join();
    }
    cli::endProgress();
    return batch.done();
}

int convertBatch(const cli::CommandLine& line, Conversion conversion, int threads) {
    if (conversion.output.formatName.isEmpty()) {
        return line.wrong(QStringLiteral("--output-directory needs --to"));
    }
    const auto to = cli::targetFormat(line, conversion.output, QString());
    if (!to) {
        return cli::Usage;
    }
    conversion.to = *to;
    const QString folder = line.value("output-directory");
    if (!QDir().mkpath(folder)) {
        cli::reportFile(folder, QStringLiteral("the folder cannot be made"));
        return cli::Failed;
    }
    const QStringList inputs = line.operands();
    const std::vector<Job> jobs = batchJobs(inputs, folder, conversion.to);
    const int failed = inputs.size() - runAll(conversion, jobs, threads);
    if (failed > 0) {
        cli::report(QStringLiteral("%1 of %2 files failed").arg(failed).arg(inputs.size()));
    }
    return failed == 0 ? cli::Done : cli::Failed;
}

int convertOne(const cli::CommandLine& line, Conversion conversion) {
    const QStringList operands = line.operands();
    if (operands.size() != 2) {
        return line.wrong(operands.size() < 2
                              ? QStringLiteral("found no output, expected IN OUT")
                              : QStringLiteral("several inputs need --output-directory"));
    }
    const QString& in = operands.first();
    const QString& out = operands.last();
    if (!conversion.from) {
        conversion.from = cli::formatOfInput(in);
    }
    if (!conversion.from) {
        return cli::Failed;
    }
    const auto to = cli::targetFormat(line, conversion.output, out, conversion.from);
    if (!to) {
        return cli::Usage;
    }
    conversion.to = *to;
    return convert(conversion, {in, out}) ? cli::Done : cli::Failed;
}

} // namespace

int cli::runConvert(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    line.addOption("from", fromHelp, "FORMAT");
    line.addOption("in-order", "Orders of the input, in the words of --out-order.", "ORDER");
    addOutputOptions(line);
    line.addOption("output-directory",
                   "Write every operand into DIR, under its own name with the extension of --to.",
                   "DIR");
    line.addOption("jobs", "Convert so many files of a batch at a time; else one a processor.",
                   "N");
    if (const auto status = line.parse(arguments, 1, std::numeric_limits<int>::max())) {
        return *status;
    }
    const auto output = outputOptions(line);
    const auto inOrders = output ? ordersOption(line, "in-order") : std::nullopt;
    const auto threads = line.number("jobs", 1, 256, QThread::idealThreadCount());
    if (!inOrders || !threads || !fromIsKnown(line)) {
        return Usage;
    }
    Conversion conversion;
    conversion.inOrders = *inOrders;
    conversion.output = *output;
    if (line.isSet("from")) {
        conversion.from = formatByName(line.value("from"));
    }
    return line.isSet("output-directory") ? convertBatch(line, conversion, *threads)
                                          : convertOne(line, conversion);
}
