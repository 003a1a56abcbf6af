#include "app/main_window.h"

#include <QApplication>

int main(int argc, char* argv[]) {
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Tintwell"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TINTWELL_VERSION));

    MainWindow window;
    window.show();
    return QApplication::exec();
}
