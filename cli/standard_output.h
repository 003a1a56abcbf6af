#pragma once

#include <QJsonArray>

namespace cli {

/// Prints an array on standard output, indented.
void printJson(const QJsonArray& array);

/// The last step of a command that prints: Done, or Failed, with the error reported, when what was
/// printed could not be written.
int finishOutput();

} // namespace cli
