#pragma once

#include "cli/command.h"
#include "cli/report.h"

#include <QString>
#include <QStringList>

#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace cli {

/// What to do where an output exists already.
enum class Existing {
    Fail,
    Replace, ///< --force
    Skip,    ///< --skip-existing
    Update,  ///< --update: replace it if it is older than what it is made from
};

/// How convert and apply go about their files, from the options that both have.
struct BatchOptions {
    std::optional<QString> folder; ///< --output-directory; none: one input, one output
    int jobs = 1;                  ///< --jobs
    Existing existing = Existing::Fail;
    bool isDryRun = false;   ///< --dry-run
    bool isQuiet = false;    ///< --quiet
    bool printsJson = false; ///< --json

    bool mayReplace() const {
        return existing == Existing::Replace || existing == Existing::Update;
    }
};

inline constexpr std::array batchOptionList = {
    Option{
        "output-directory", "DIR",
        "Write each input to DIR under its own name, with the extension of --to if that is given.",
        Completion::Folders},
    Option{"jobs", "N",
           "Work on up to N files of a batch at a time; by default, one per processor, of images "
           "at most 8."},
    Option{"skip-existing", nullptr, "Skip inputs whose output exists already."},
    Option{"update", nullptr,
           "Skip inputs whose output is not older than what it is made from, and replace older "
           "outputs."},
    Option{"dry-run", nullptr, "Tell what would be done. Nothing is written."},
    Option{"quiet", nullptr, "Print errors only: no notes, no summary."},
    Option{"json", nullptr, "Print JSON, an object for each input."}};

/// \a jobs is the number of jobs without --jobs. None, with wrong usage reported, if the options'
/// values are not valid or exclude each other.
std::optional<BatchOptions> batchOptions(const CommandLine& line, int jobs);

/// Whether the inputs of a batch have names to name the outputs after. If not, because standard
/// input is one of them, that is reported as wrong usage.
bool haveNames(const CommandLine& line, const QStringList& inputs);

/// A file to read and the file to make from it.
struct Job {
    QString in;
    QString out;
    QString problem = {}; ///< why that cannot be done; empty if it can
};

/// The jobs for the inputs of a batch, where \a nameOf(input) is the name of the output in
/// \a folder. An input whose output would overwrite that of another has a problem.
std::vector<Job> batchJobs(const QStringList& inputs, const QString& folder,
                           const std::function<QString(const QString& in)>& nameOf);

/// Runs \a work in up to \a most threads at a time. False, with nothing done, if that is not
/// possible.
using Crew = bool (*)(int most, const std::function<void()>& work);

/// A crew that always can.
bool onAnyThreads(int most, const std::function<void()>& work);

/// What is to be done with the files of a batch, or with a single one.
struct Batch {
    std::vector<Job> jobs;
    Notes notes{false}; ///< those that each job begins with
    QString table = {}; ///< a file that all outputs are made from, too; empty if none
    Crew crew = onAnyThreads;
    /// Does a job, and returns whether it succeeded; if not, the notes tell why.
    std::function<bool(const Job&, Notes&)> work;
};

/// Does what the options leave to do of a batch, and reports. Returns a status.
int runBatch(const BatchOptions& options, Batch batch);

} // namespace cli
