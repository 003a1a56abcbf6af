#include "app/main_window.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <functional>

namespace {

/// A lattice of distinct samples, one line each in the order of the file.
QStringList samples(int size) {
    QStringList lines;
    for (int n = 0; n < size * size * size; ++n) {
        lines += QString::asprintf("%.6f %.6f %.6f", n * 1e-6, 0.25 + n * 1e-6, 0.5 + n * 1e-6);
    }
    return lines;
}

/// The lines with their first and third number swapped.
QStringList channelsSwapped(QStringList lines) {
    for (QString& line : lines) {
        const QStringList values = line.split(QLatin1Char(' '));
        line = QStringList{values[2], values[1], values[0]}.join(QLatin1Char(' '));
    }
    return lines;
}

/// The lines with the first lattice axis running fastest instead of the third.
QStringList axesSwapped(const QStringList& lines, int size) {
    QStringList swapped;
    for (int n = 0; n < lines.size(); ++n) {
        const int i = n / (size * size);
        const int j = n / size % size;
        const int k = n % size;
        swapped += lines[(k * size + j) * size + i];
    }
    return swapped;
}

QByteArray cube(int size, const QStringList& lines) {
    const QStringList header{QStringLiteral("TITLE "), QStringLiteral("LUT_3D_SIZE %1").arg(size)};
    return (header + lines).join(QLatin1Char('\n')).toLatin1() + '\n';
}

/// Answers modal dialogs while the window waits for them, in the order in which answers were added.
class Answers {
public:
    using Answer = std::function<bool(QWidget*)>;

    explicit Answers(QVector<Answer> answers) : waiting(std::move(answers)) {
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] { answerNext(); });
        timer.start(5);
    }

    bool allGiven() const { return waiting.isEmpty() && !surplus; }

private:
    void answerNext() {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (dialog == nullptr) {
            return;
        }
        if (waiting.isEmpty()) {
            surplus = true;
            QMetaObject::invokeMethod(dialog, "reject");
        } else if (waiting.first()(dialog)) {
            waiting.removeFirst();
        }
    }

    QVector<Answer> waiting;
    QTimer timer;
    bool surplus = false;
};
