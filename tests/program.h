#pragma once

#include "samples.h"

#include <QProcess>

#include <functional>

namespace samples {

/// The result of a run of the command-line program.
struct Outcome {
    int status; ///< -1 when it crashed, hung or was killed
    QString output;
    QString errors;
};

/// A process in which \a inChild is called before the program starts.
class PreparedProcess : public QProcess {
public:
    std::function<void()> inChild = [] {};

protected:
    void setupChildProcess() override { inChild(); }
};

inline Outcome finish(PreparedProcess& process, const QStringList& arguments) {
    process.start(QStringLiteral(TINTWELL_CLI), arguments);
    const bool ended =
        process.waitForFinished(120'000) && process.exitStatus() == QProcess::NormalExit;
    return {ended ? process.exitCode() : -1, QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

inline Outcome run(const QStringList& arguments) {
    PreparedProcess process;
    return finish(process, arguments);
}

} // namespace samples
