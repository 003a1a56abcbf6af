#include "cli/command.h"
#include "cli/report.h"
#include "cli/standard_output.h"
#include "saving/descriptors.h"
#include "saving/left_overs.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QTextCodec>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <new>

#include <langinfo.h>
#include <malloc.h>
#include <sys/resource.h>

namespace {

using cli::Command;
using cli::Toolkit;

int runWithoutCommand(const QString& word) {
    if (word == QLatin1String("--help") || word == QLatin1String("-h")) {
        cli::showProgramHelp();
        return cli::finishOutput();
    }
    if (word == QLatin1String("--version") || word == QLatin1String("-V")) {
        std::puts("tintwell-cli " TINTWELL_VERSION);
        return cli::finishOutput();
    }
    if (word.isEmpty()) {
        cli::report(QStringLiteral("no command given"));
    } else {
        cli::reportUnknownCommand(word);
    }
    cli::report(QStringLiteral("see tintwell-cli --help"));
    return cli::Usage;
}

std::unique_ptr<QCoreApplication> makeApplication(Toolkit toolkit, int& argc, char* argv[]) {
    qputenv("QT_NO_GLIB", "1"); // its event loop, not used here, aborts if resources are scarce
    if (toolkit == Toolkit::Core) {
        return std::make_unique<QCoreApplication>(argc, argv);
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(argc, argv);
}

/// Prints Qt's messages, and ends the program with status 1 where Qt would abort it.
void printMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    std::fprintf(stderr, "%s\n", qUtf8Printable(qFormatLogMessage(type, context, text)));
    if (type == QtFatalMsg) {
        std::_Exit(cli::Failed);
    }
}

/// The first argument that is not text in the encoding of the locale: no file could be found under
/// its name, and a new one would get another. Empty if there is none.
QString firstLost(int argc, char* argv[]) {
    for (int n = 1; n < argc; ++n) {
        QString text = QString::fromLocal8Bit(argv[n]);
        if (text.toLocal8Bit() != argv[n]) {
            return text;
        }
    }
    return {};
}

int runCommand(int argc, char* argv[]) {
    qInstallMessageHandler(printMessage);
    QLoggingCategory::setFilterRules(QStringLiteral("*=false")); // Qt's warnings, too
    const Command* const command =
        argc > 1 ? cli::commandByName(QString::fromLocal8Bit(argv[1])) : nullptr;
    const auto app =
        makeApplication(command != nullptr ? command->toolkit : Toolkit::Core, argc, argv);
    std::setlocale(LC_MESSAGES, "C"); // system error texts appear within English messages
    if (qstrcmp(nl_langinfo(CODESET), "ANSI_X3.4-1968") == 0) {
        // Scripts often run in the bare C locale; file names are UTF-8 all the same.
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    }
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (const QString lost = firstLost(argc, argv); !lost.isEmpty()) {
        cli::report(QStringLiteral("found \"%1\", expected a name in %2")
                        .arg(lost, QString::fromLatin1(QTextCodec::codecForLocale()->name())));
        return cli::Usage;
    }
    return command != nullptr ? command->run(*command, arguments)
                              : runWithoutCommand(arguments.value(0));
}

/// Makes all threads share one heap if memory is limited. Each further heap reserves 64 MiB, and a
/// thread that cannot get one uses a whole page for every block.
void limitHeaps() {
    rlimit memory{};
    if (getrlimit(RLIMIT_AS, &memory) == 0 && memory.rlim_cur != RLIM_INFINITY) {
        mallopt(M_ARENA_MAX, 1);
    }
}

/// Without cleaning up: a normal exit may need memory.
[[noreturn]] void endWithoutMemory() {
    cli::reportNoMemory();
    std::_Exit(cli::Failed);
}

/// For memory that runs out where nothing may throw.
[[noreturn]] void onTerminate() {
    try {
        if (const std::exception_ptr thrown = std::current_exception()) {
            std::rethrow_exception(thrown);
        }
    } catch (const std::bad_alloc&) {
        endWithoutMemory();
    } catch (...) {
    }
    std::abort();
}

} // namespace

int main(int argc, char* argv[]) try {
    if (!tintwell::openMissingStandardDescriptors()) {
        return cli::Failed;
    }
    limitHeaps();
    std::set_terminate(onTerminate);
    tintwell::removeTemporaryFilesOnSignals();
    return runCommand(argc, argv);
} catch (const std::bad_alloc&) {
    endWithoutMemory();
}
