// convert IN... OUT: reads tables and writes them in another format, size or order.

#include "cli/domain.h"
#include "cli/input.h"
#include "cli/output.h"
#include "cli/report.h"
#include "lut/words.h"

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

using cli::Input;
using cli::Output;
using tintwell::Format;

struct Job {
    QString in;
    QString out;
};

struct Conversion {
    Input input;
    Output output;
    bool strict = false;
    const Format* to = nullptr;
};

bool convert(const Conversion& conversion, const Job& job) {
    cli::Table table;
    cli::Notes notes(conversion.strict);
    if (!cli::loadTable(conversion.input, job.in, table, notes)) {
        return false;
    }
    noteLostDomain(table, conversion.to->kind, job.out, notes);
    noteLostTitle(table, job.out, notes);
    return cli::writeTable(conversion.output, *conversion.to, job.in, job.out, table.lut, notes);
}

/// The output paths of a batch. Inputs whose output would overwrite that of another are reported as
/// errors and left out.
std::vector<Job> batchJobs(const QStringList& inputs, const QString& folder, const Format& to) {
    const QString extension = extensionsOf(to).first();
    std::vector<Job> jobs;
    QSet<QString> taken;
    for (const QString& in : inputs) {
        const QString name = QFileInfo(in).completeBaseName() + QLatin1Char('.') + extension;
        if (taken.contains(name)) {
            cli::reportFile(in, QStringLiteral("another input is already written to %1").arg(name));
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

    /// Takes jobs until none are left.
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

/// Runs every job, \a threads at a time or as many as can be started. Returns the number that
/// succeeded.
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
        // No more threads can be started: the running ones do all the work.
    }
    batch.work();
    for (std::thread& helper : helpers) {
        helper.join();
    }
    cli::endProgress();
    return batch.done();
}

int convertBatch(const cli::CommandLine& line, Conversion conversion, const QString& folder,
                 int threads) {
    if (conversion.output.format == nullptr) {
        return line.wrong(QStringLiteral("--output-directory needs --to"));
    }
    conversion.to = cli::targetFormat(line, conversion.output, QString());
    if (conversion.to == nullptr) {
        return cli::Usage;
    }
    const QStringList inputs = line.operands();
    if (std::any_of(inputs.begin(), inputs.end(), cli::isStandardInput)) {
        return line.wrong(
            QStringLiteral("standard input has no name for its output, expected IN OUT"));
    }
    if (!QDir().mkpath(folder)) {
        cli::reportFile(folder, QStringLiteral("the folder cannot be created"));
        return cli::Failed;
    }
    const std::vector<Job> jobs = batchJobs(inputs, folder, *conversion.to);
    const int failed = inputs.size() - runAll(conversion, jobs, threads);
    if (failed > 0) {
        cli::report(QStringLiteral("%1 of %2 failed")
                        .arg(failed)
                        .arg(tintwell::counted(inputs.size(), "file", "files")));
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
    QString problem;
    conversion.input.format = formatOfInput(conversion.input, in, problem);
    if (conversion.input.format == nullptr) {
        cli::reportFile(in, problem);
        return cli::Failed;
    }
    conversion.to = cli::targetFormat(line, conversion.output, out, conversion.input.format);
    if (conversion.to == nullptr) {
        return cli::Usage;
    }
    return convert(conversion, {in, out}) ? cli::Done : cli::Failed;
}

} // namespace

int cli::runConvert(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    if (const auto status = line.parse(arguments, 1, std::numeric_limits<int>::max())) {
        return *status;
    }
    const std::optional<Input> input = inputOptions(line);
    const std::optional<Output> output = input ? outputOptions(line) : std::nullopt;
    std::optional<int> threads = QThread::idealThreadCount();
    if (!output || !line.number("jobs", 1, 256, threads)) {
        return Usage;
    }
    const Conversion conversion = {*input, *output, line.isSet("strict")};
    const std::optional<QString> folder = line.value("output-directory");
    return folder ? convertBatch(line, conversion, *folder, *threads)
                  : convertOne(line, conversion);
}
