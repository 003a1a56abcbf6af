#include "cli/batch.h"

#include "cli/image_thread.h"
#include "cli/printable.h"
#include "cli/source.h"
#include "cli/standard_output.h"
#include "cli/target.h"
#include "cli/words.h"
#include "lut/words.h"
#include "saving/descriptors.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QSet>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <exception>
#include <mutex>
#include <new>
#include <set>
#include <thread>
#include <tuple>

#include <unistd.h>

namespace cli {

namespace {

enum class JobStatus { Failed, Converted, Planned, Skipped };

/// What became of a job.
struct JobResult {
    JobStatus status = JobStatus::Failed;
    QString error = {};
    QStringList notes = {};
};

const char* word(JobStatus status) {
    switch (status) {
    case JobStatus::Converted:
        return "converted";
    case JobStatus::Planned:
        return "planned";
    case JobStatus::Skipped:
        return "skipped";
    case JobStatus::Failed:
        break;
    }
    return "failed";
}

/// Whether a target is older than a source, if there is one to be made from. Where that cannot be
/// told it is: the job finds out.
bool isOlder(const QString& target, const QString& source) {
    if (source.isEmpty()) {
        return false;
    }
    const std::optional<timespec> made = timeOfTarget(target);
    const std::optional<timespec> changed = timeOf(source);
    return !made || !changed ||
           std::tie(made->tv_sec, made->tv_nsec) < std::tie(changed->tv_sec, changed->tv_nsec);
}

/// The jobs of a batch, shared by all threads that call work().
class Progress {
public:
    Progress(const BatchOptions& options, const Batch& batch)
        : m_options(options), m_batch(batch), m_results(batch.jobs.size()) {
        m_timer.start();
        for (const Job& job : batch.jobs) {
            if (const std::optional<FileId> id = idOf(job.in)) {
                m_inputs.insert(*id);
            }
        }
    }

    const std::vector<JobResult>& results() const { return m_results; }

    /// Takes jobs until none are left.
    void work() noexcept {
        for (std::size_t n = m_next++; n < m_batch.jobs.size(); n = m_next++) {
            run(m_batch.jobs[n], m_results[n]);
            const std::lock_guard<std::mutex> lock(m_counting);
            ++m_ended;
            show();
        }
    }

    /// Reports all jobs that no thread has taken as failed.
    void failRest(const QString& what) {
        for (std::size_t n = m_next; n < m_batch.jobs.size(); ++n) {
            Notes notes(false);
            notes.fail(m_batch.jobs[n].in, what);
            m_results[n].error = notes.failure();
        }
    }

private:
    void run(const Job& job, JobResult& result) const noexcept try {
        Notes notes = m_batch.notes;
        result.status = statusOf(job, notes);
        result.error = notes.failure();
        result.notes = notes.texts();
    } catch (const std::bad_alloc&) {
        reportNoMemory(job.in); // the result says failed
    }

    JobStatus statusOf(const Job& job, Notes& notes) const {
        if (!notes.failure().isEmpty()) {
            return JobStatus::Failed;
        }
        if (!job.problem.isEmpty()) {
            notes.fail(job.in, job.problem);
            return JobStatus::Failed;
        }
        if (isSkipped(job)) {
            return JobStatus::Skipped;
        }
        if (m_options.mayReplace() && wouldLose(job)) {
            notes.fail(job.out, QStringLiteral("not written: it is an input"));
            return JobStatus::Failed;
        }
        if (m_options.isDryRun) {
            return plan(job, notes) ? JobStatus::Planned : JobStatus::Failed;
        }
        return m_batch.work(job, notes) ? JobStatus::Converted : JobStatus::Failed;
    }

    bool isSkipped(const Job& job) const {
        switch (m_options.existing) {
        case Existing::Skip:
            return timeOfTarget(job.out).has_value();
        case Existing::Update:
            return !isOlder(job.out, job.in) && !isOlder(job.out, m_batch.table);
        case Existing::Fail:
        case Existing::Replace:
            break;
        }
        return false;
    }

    /// Whether the output is an input that nobody has asked to replace: its own may be, by --force.
    bool wouldLose(const Job& job) const {
        const std::optional<FileId> out = idOf(job.out);
        if (!out) {
            return false;
        }
        const bool isOwn = out == idOf(job.in);
        return isOwn ? m_options.existing == Existing::Update
                     : m_inputs.count(*out) > 0 || out == idOf(m_batch.table);
    }

    bool plan(const Job& job, Notes& notes) const {
        if (QFileInfo(job.in).isDir()) {
            return notes.fail(job.in, isFolder());
        }
        if (!isStandardInput(job.in) && access(QFile::encodeName(job.in), R_OK) != 0) {
            return notes.fail(job.in, tintwell::systemError());
        }
        const QString obstacle = obstacleTo({job.out, m_options.mayReplace()});
        return obstacle.isEmpty() || notes.fail(job.out, obstacle);
    }

    void show() const {
        constexpr qint64 patience = 1000; // in milliseconds
        if (!m_options.isQuiet && m_timer.elapsed() > patience) {
            showProgress(m_ended, static_cast<int>(m_batch.jobs.size()));
        }
    }

    const BatchOptions& m_options;
    const Batch& m_batch;
    std::vector<JobResult> m_results;
    std::set<FileId> m_inputs;
    QElapsedTimer m_timer;
    std::atomic<std::size_t> m_next = 0;
    std::mutex m_counting;
    int m_ended = 0;
};

std::vector<JobResult> runAll(const BatchOptions& options, const Batch& batch) {
    Progress progress(options, batch);
    const auto count = static_cast<int>(batch.jobs.size());
    if (!batch.crew(std::min(options.jobs, count), [&progress] { progress.work(); })) {
        progress.failRest(noImageThread());
    }
    endProgress();
    return progress.results();
}

QJsonObject resultAsJson(const Job& job, const JobResult& result) {
    QJsonObject object = {{QStringLiteral("path"), job.in},
                          {QStringLiteral("output"), job.out},
                          {QStringLiteral("status"), QLatin1String(word(result.status))},
                          {QStringLiteral("notes"), QJsonArray::fromStringList(result.notes)}};
    if (result.status == JobStatus::Failed) {
        object.insert(QStringLiteral("error"),
                      result.error.isEmpty() ? QStringLiteral("out of memory") : result.error);
    }
    return object;
}

int printResults(const Batch& batch, const std::vector<JobResult>& results) {
    QJsonArray array;
    for (std::size_t n = 0; n < results.size(); ++n) {
        array.append(resultAsJson(batch.jobs[n], results[n]));
    }
    printJson(array);
    return finishOutput();
}

int printPlan(const Batch& batch, const std::vector<JobResult>& results) {
    for (std::size_t n = 0; n < results.size(); ++n) {
        const Job& job = batch.jobs[n];
        const JobStatus status = results[n].status;
        if (status != JobStatus::Failed) {
            const QString what = status == JobStatus::Skipped
                                     ? QStringLiteral("would be skipped: %1 exists already")
                                     : QStringLiteral("would be written to %1");
            std::puts(qUtf8Printable(printable(tintwell::inFile(job.in, what.arg(job.out)))));
        }
    }
    return finishOutput();
}

int countOf(const std::vector<JobResult>& results, JobStatus status) {
    return static_cast<int>(
        std::count_if(results.begin(), results.end(),
                      [status](const JobResult& result) { return result.status == status; }));
}

/// "2 of 5 files failed"
void summarize(const std::vector<JobResult>& results, JobStatus status) {
    if (const int count = countOf(results, status); count > 0) {
        report(QStringLiteral("%1 of %2 %3")
                   .arg(count)
                   .arg(tintwell::counted(static_cast<int>(results.size()), "file"),
                        QLatin1String(word(status))));
    }
}

/// Makes the folder of a batch, or only looks whether it may be there. Returns what is wrong.
QString folderProblem(const QString& path, bool isDryRun) {
    if (!isDryRun) {
        return QDir().mkpath(path) ? QString() : QStringLiteral("the folder cannot be created");
    }
    const QFileInfo folder(path);
    return folder.exists() && !(folder.isDir() && folder.isWritable())
               ? QStringLiteral("is not a folder that can be written to")
               : QString();
}

} // namespace

std::optional<BatchOptions> batchOptions(const CommandLine& line, int jobs) {
    constexpr std::array<std::array<const char*, 2>, 3> exclusive = {
        {{"skip-existing", "force"}, {"update", "force"}, {"skip-existing", "update"}}};
    for (const auto& [one, other] : exclusive) {
        if (line.isSet(one) && line.isSet(other)) {
            line.wrong(QStringLiteral("--%1 and --%2 exclude each other")
                           .arg(QLatin1String(one), QLatin1String(other)));
            return std::nullopt;
        }
    }
    BatchOptions options;
    options.folder = line.value("output-directory");
    options.existing = line.isSet("force")           ? Existing::Replace
                       : line.isSet("skip-existing") ? Existing::Skip
                       : line.isSet("update")        ? Existing::Update
                                                     : Existing::Fail;
    options.isDryRun = line.isSet("dry-run");
    options.isQuiet = line.isSet("quiet");
    options.printsJson = line.isSet("json");
    if (options.printsJson && !options.folder && leadsToStandardOutput(line.operands().last())) {
        line.wrong(QStringLiteral("--json and an output to standard output exclude each other"));
        return std::nullopt;
    }
    std::optional<int> asked = jobs;
    if (!line.number("jobs", 1, 256, asked)) {
        return std::nullopt;
    }
    options.jobs = *asked;
    return options;
}

bool haveNames(const CommandLine& line, const QStringList& inputs) {
    if (std::none_of(inputs.begin(), inputs.end(), isStandardInput)) {
        return true;
    }
    line.wrong(QStringLiteral("standard input has no name for its output, expected %1")
                   .arg(QLatin1String(line.command().operands)));
    return false;
}

std::vector<Job> batchJobs(const QStringList& inputs, const QString& folder,
                           const std::function<QString(const QString& in)>& nameOf) {
    std::vector<Job> jobs;
    QSet<QString> taken;
    for (const QString& in : inputs) {
        const QString name = nameOf(in);
        Job job = {in, QDir(folder).filePath(name)};
        if (taken.contains(name)) {
            job.problem = QStringLiteral("another input is already written to %1").arg(name);
        }
        taken.insert(name);
        jobs.push_back(job);
    }
    return jobs;
}

bool onAnyThreads(int most, const std::function<void()>& work) {
    std::vector<std::thread> helpers;
    try {
        helpers.reserve(static_cast<std::size_t>(most));
        while (static_cast<int>(helpers.size()) + 1 < most) {
            helpers.emplace_back(work);
        }
    } catch (const std::exception&) {
        // No more threads can be started: the running ones do all the work.
    }
    work();
    for (std::thread& helper : helpers) {
        helper.join();
    }
    return true;
}

int runBatch(const BatchOptions& options, Batch batch) {
    if (options.folder) {
        const QString problem = folderProblem(*options.folder, options.isDryRun);
        if (!problem.isEmpty()) {
            batch.notes.fail(*options.folder, problem);
        }
    }
    const std::vector<JobResult> results = runAll(options, batch);
    if (!options.isQuiet && !options.isDryRun) {
        summarize(results, JobStatus::Skipped);
    }
    if (!options.isQuiet && options.folder) {
        summarize(results, JobStatus::Failed);
    }
    const int printed = options.printsJson ? printResults(batch, results)
                        : options.isDryRun ? printPlan(batch, results)
                                           : Done;
    return countOf(results, JobStatus::Failed) == 0 ? printed : Failed;
}

} // namespace cli
