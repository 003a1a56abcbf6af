#include "cli/report.h"

#include "cli/printable.h"

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

/// The length of "LINE: " at the front of a message; 0 if there is none.
int lineLength(const QString& what) {
    int digits = 0;
    while (digits < what.size() && what[digits].isDigit()) {
        ++digits;
    }
    const QString end = QStringLiteral(": ");
    return digits > 0 && what.midRef(digits).startsWith(end) ? digits + end.size() : 0;
}

} // namespace

QString inFile(const QString& path, const QString& what, const QString& kind) {
    const int length = lineLength(what);
    return path + (length > 0 ? QStringLiteral(":") : QStringLiteral(": ")) + what.left(length) +
           kind + what.mid(length);
}

void report(const QString& what) {
    print(QStringLiteral("tintwell-cli: ") + printable(what), "\n");
}

void reportFile(const QString& path, const QString& what) {
    report(inFile(path, what));
}

void Notes::add(const QString& path, const QString& what) {
    ++m_count;
    report(inFile(path, what, QStringLiteral("note: ")));
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
