#include "cli/report.h"

#include "cli/printable.h"
#include "lut/words.h"

#include <cstdio>
#include <new>

#include <unistd.h>

namespace cli {

namespace {

bool onTerminal() {
    return isatty(STDERR_FILENO) != 0;
}

/// One call per line, so that the lines of several threads do not mix. On a terminal it overwrites
/// the progress shown there.
void print(const QString& line, const char* end) {
    std::fprintf(stderr, "%s%s%s", onTerminal() ? "\r\033[K" : "", qUtf8Printable(line), end);
}

} // namespace

void report(const QString& what) {
    print(QStringLiteral("tintwell-cli: ") + printable(what), "\n");
}

void reportFile(const QString& path, const QString& what) {
    report(tintwell::inFile(path, what));
}

void Notes::add(const QString& path, const QString& what) {
    m_texts += tintwell::inFile(path, what);
    if (m_areFailures || !m_isQuiet) {
        report(tintwell::inFile(path, what, QStringLiteral("note: ")));
    }
}

void Notes::tell(const QString& path, const QString& what) const {
    if (!m_isQuiet) {
        reportFile(path, what);
    }
}

bool Notes::fail(const QString& path, const QString& what) {
    if (m_failure.isEmpty()) {
        m_failure = tintwell::inFile(path, what);
    }
    reportFile(path, what);
    return false;
}

QString Notes::reason() const {
    return QStringLiteral("--strict allows no notes");
}

void reportNoMemory(const QString& path) noexcept try {
    reportFile(path, QStringLiteral("out of memory"));
} catch (const std::bad_alloc&) {
    reportNoMemory();
}

void reportNoMemory() noexcept {
    std::fputs("tintwell-cli: out of memory\n", stderr);
}

void showProgress(int done, int total) {
    if (onTerminal()) {
        print(QStringLiteral("%1 of %2").arg(done).arg(total), "");
    }
}

void endProgress() {
    if (onTerminal()) {
        print(QString(), "");
    }
}

} // namespace cli
