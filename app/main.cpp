#include "app/main_window.h"
#include "saving/descriptors.h"
#include "saving/left_overs.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>

int main(int argc, char* argv[]) {
    if (!tintwell::openMissingStandardDescriptors()) {
        return 1;
    }
    tintwell::removeTemporaryFilesOnSignals();
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Tintwell"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TINTWELL_VERSION));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/tintwell.svg")));
    QGuiApplication::setDesktopFileName(QStringLiteral("tintwell"));

    QCommandLineParser arguments;
    arguments.setApplicationDescription(QStringLiteral("Converts colour look-up tables."));
    arguments.addHelpOption();
    arguments.addVersionOption();
    arguments.addPositionalArgument(QStringLiteral("file"),
                                    QStringLiteral("The input file, as if chosen in the window."),
                                    QStringLiteral("[file]"));
    arguments.process(app);

    MainWindow window;
    window.show();
    window.openFiles(arguments.positionalArguments());
    return QApplication::exec();
}
