#pragma once

#include <QJsonArray>

namespace cli {

/// Prints an array on standard output, indented.
void printJson(const QJsonArray& array);

/// The last step of a command that prints. Returns Done or, with the error reported, Failed if the
/// output could not be written.
int finishOutput();

} // namespace cli
