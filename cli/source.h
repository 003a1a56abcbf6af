#pragma once

#include "saving/descriptors.h"

#include <QString>

namespace cli {

/// Whether an operand stands for standard input: "-" or "/dev/stdin".
bool isStandardInput(const QString& path);

/// Where readers find the content of an input: in the file itself or, for standard input, in a copy
/// that has no name and lasts as long as this. They open inputs more than once, and wait for no
/// other program.
class Source {
public:
    /// Goes to \a path; standard input is read to its end, or a little beyond the largest file that
    /// readers accept. Returns why that fails, or that it was read before; empty on success.
    QString open(const QString& path);

    /// The path to read.
    const QString& place() const { return m_place; }

private:
    QString m_place;
    tintwell::Descriptor m_copy;
};

} // namespace cli
