#include "app/main_window.h"
#include "saving/descriptors.h"
#include "saving/left_overs.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QUrl>

#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>

namespace {

/// Qt's platform for programs that show nothing.
constexpr const char* noDisplay = "minimal";

void describe(QCommandLineParser& arguments) {
    arguments.setApplicationDescription(QStringLiteral("Converts colour look-up tables."));
    arguments.addHelpOption();
    arguments.addVersionOption();
    arguments.addPositionalArgument(QStringLiteral("file"),
                                    QStringLiteral("The input file, as if chosen in the window."),
                                    QStringLiteral("[file]"));
}

/// Whether the help or the version is asked for, which needs no application with windows. False for
/// a line with options of Qt, which only such an application knows.
bool asksForText(int argc, char* argv[]) {
    QStringList line;
    for (int n = 0; n < argc; ++n) {
        line += QString::fromLocal8Bit(argv[n]);
    }
    QCommandLineParser arguments;
    describe(arguments);
    return arguments.parse(line) &&
           (arguments.isSet(QStringLiteral("help")) || arguments.isSet(QStringLiteral("version")));
}

/// The platforms to ask of Qt, which tries X alone unless the session is said to be Wayland's. Null
/// where the user has chosen, and where Qt does well.
const char* chosenPlatform() {
    const auto named = [](const char* name) { return !qEnvironmentVariableIsEmpty(name); };
    if (named("QT_QPA_PLATFORM")) {
        return nullptr;
    }
    const bool wayland = named("WAYLAND_DISPLAY") || named("WAYLAND_SOCKET");
    if (named("DISPLAY")) {
        return wayland && qgetenv("XDG_SESSION_TYPE") != "wayland" ? "xcb;wayland" : nullptr;
    }
    return wayland ? "wayland" : noDisplay;
}

/// Says why no window opens, and what to do without one.
void explainMissingDisplay(const char* reason) {
    std::fprintf(stderr,
                 "tintwell: %s; tintwell-cli needs none: tintwell-cli convert look.cube "
                 "result.cube --size 17\n",
                 reason);
}

/// Handles Qt's messages while the display is opened: Qt would abort if it can open none.
void endWithoutDisplay(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type != QtFatalMsg) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(qFormatLogMessage(type, context, text)));
        return;
    }
    const bool wayland = qgetenv("QT_QPA_PLATFORM").contains("wayland");
    // The text lists the plug-ins that there are.
    explainMissingDisplay(wayland && !text.contains(QLatin1String("wayland"))
                              ? "the display cannot be opened without the package qtwayland5"
                              : "the display cannot be opened");
    std::_Exit(1);
}

QIcon windowIcon() {
    QIcon icon;
    const QFileInfoList sizes = QDir(QStringLiteral(":/icons")).entryInfoList();
    for (const QFileInfo& png : sizes) {
        icon.addFile(png.filePath());
    }
    return icon;
}

QString toPath(const QString& argument) {
    return argument.startsWith(QLatin1String("file://")) ? QUrl(argument).toLocalFile() : argument;
}

/// Why the file cannot be an input, whatever it holds. Empty if it can.
QString fault(const QString& path) {
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        return tintwell::systemError();
    }
    if (S_ISDIR(status.st_mode)) {
        return QStringLiteral("is a folder, expected a file");
    }
    return S_ISREG(status.st_mode) ? QString() : QStringLiteral("is not a regular file");
}

/// The paths that are named on the command line. Those of no file are reported too.
QStringList namedFiles(const QStringList& arguments) {
    QStringList paths;
    for (const QString& argument : arguments) {
        const QString path = toPath(argument);
        const QString reason = fault(path);
        if (!reason.isEmpty()) {
            std::fprintf(stderr, "tintwell: %s: %s\n", QFile::encodeName(path).constData(),
                         qUtf8Printable(reason));
        }
        paths += path;
    }
    return paths;
}

} // namespace

int main(int argc, char* argv[]) {
    if (!tintwell::openMissingStandardDescriptors()) {
        return 1;
    }
    tintwell::removeTemporaryFilesOnSignals();
    QCoreApplication::setApplicationName(QStringLiteral("Tintwell"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TINTWELL_VERSION));
    QCommandLineParser arguments;
    describe(arguments);
    if (asksForText(argc, argv)) {
        const QCoreApplication console(argc, argv);
        arguments.process(console); // ends the program
    }

    if (!qEnvironmentVariableIsSet("QT_XCB_GL_INTEGRATION")) {
        // Nothing is drawn by OpenGL, and loading it is half of the start.
        qputenv("QT_XCB_GL_INTEGRATION", "none");
    }
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    const char* const platform = chosenPlatform();
    if (platform != nullptr) {
        qputenv("QT_QPA_PLATFORM", platform);
    }
    const QtMessageHandler usual = qInstallMessageHandler(endWithoutDisplay);
    const QApplication app(argc, argv);
    qInstallMessageHandler(usual);
    QGuiApplication::setWindowIcon(windowIcon());
    QGuiApplication::setDesktopFileName(QStringLiteral("tintwell"));
    arguments.process(app);
    // Without a display, the application was still needed to tell Qt's own options from wrong ones.
    if (platform == noDisplay && QGuiApplication::platformName() == QLatin1String(noDisplay)) {
        explainMissingDisplay("there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set");
        return 1;
    }

    MainWindow window;
    window.show();
    window.openFiles(namedFiles(arguments.positionalArguments()));
    return QApplication::exec();
}
