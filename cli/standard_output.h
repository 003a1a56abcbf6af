#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

namespace cli {

/// Prints an array or an object on standard output, indented.
void printJson(const QJsonArray& array);
void printJson(const QJsonObject& object);

/// Numbers that are not finite become null.
template <typename Values>
QJsonArray jsonNumbers(const Values& values) {
    QJsonArray array;
    for (const auto value : values) {
        array.append(static_cast<double>(value));
    }
    return array;
}

/// The entry for a file that could not be read, in an array of files.
QJsonObject failureAsJson(const QString& path, const QString& error);

/// The last step of a command that prints. Returns Done or, with the error reported, Failed if the
/// output could not be written.
int finishOutput();

} // namespace cli
