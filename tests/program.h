#pragma once

#include "samples.h"

#include <QProcess>

namespace samples {

/// The result of a run of the command-line program.
struct Outcome {
    int status; ///< -1 when it crashed, hung or was killed
    QString output;
    QString errors;
};

/// The command-line program in a folder, which relative paths begin at.
class Program : public QProcess {
public:
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    std::function<void()> inChild = [] {}; ///< called before the program starts

    explicit Program(const Folder& folder) {
        setWorkingDirectory(folder.path(QString()));
        environment.remove(QStringLiteral("QT_LOGGING_RULES"));
    }

    /// \a line has the arguments, which must not contain blanks.
    void begin(const QString& line) {
        setProcessEnvironment(environment);
        start(QStringLiteral(TINTWELL_CLI), line.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    }

    Outcome run(const QString& line) {
        begin(line);
        const bool ended = waitForFinished(120'000) && exitStatus() == NormalExit;
        const QByteArray printed = readAllStandardOutput();
        return {ended ? exitCode() : -1, QString::fromUtf8(printed.constData(), printed.size()),
                QString::fromUtf8(readAllStandardError())};
    }

protected:
    void setupChildProcess() override { inChild(); }
};

/// Reads into R, G, B cells, as the file means them.
inline void read(const QString& path, int code, Read_LUTFile& lut) {
    const bool lattice = Read_LUTFile::formatIs3D(code);
    QVERIFY(lut.ReadFile(lattice ? request(path, code) : request(path, code, true, true), false));
}

} // namespace samples
