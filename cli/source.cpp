#include "cli/source.h"

#include "lut/bounded_read.h"

#include <QFile>

#include <atomic>

#include <sys/mman.h>
#include <unistd.h>

namespace cli {

namespace {

/// Standard input can be read only once.
bool isFirstReader() {
    static std::atomic_flag taken;
    return !taken.test_and_set();
}

} // namespace

bool isStandardInput(const QString& path) {
    return path == QLatin1String("-") || path == QLatin1String("/dev/stdin");
}

QString Source::open(const QString& path) {
    m_place = path;
    if (!isStandardInput(path)) {
        return {};
    }
    if (!isFirstReader()) {
        return QStringLiteral("found standard input twice, expected it once");
    }
    m_copy = tintwell::Descriptor(memfd_create("input", MFD_CLOEXEC));
    if (!m_copy.isOpen() ||
        !tintwell::copyUpTo(STDIN_FILENO, m_copy.number(), tintwell::MaxFileSize + 1)) {
        return tintwell::systemError();
    }
    m_place = QFile::decodeName(m_copy.path());
    return {};
}

} // namespace cli
