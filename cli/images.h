#pragma once

#include "cli/command.h"
#include "cli/input.h"
#include "cli/target.h"

#include <QByteArray>
#include <QImage>
#include <QString>

#include <functional>
#include <optional>

namespace cli {

/// The input of a command that makes an image from a table.
struct ImageJob {
    Table table;
    Target target;
    QByteArray type; ///< of the image, by Qt's name; empty for standard output, which has none
    Notes notes{false};
};

/// Sets where the image goes and what type it is. Returns a status, with the error reported, if
/// such an image cannot be written.
std::optional<int> beginImage(const CommandLine& line, const QString& path, ImageJob& job);

/// Begins such a command: parses the arguments, where the first operand is the table and the last
/// the image, and reads the table. Returns a status, with the error reported, if there is nothing
/// more to do.
std::optional<int> beginImageJob(CommandLine& line, const QStringList& arguments, int operands,
                                 ImageJob& job);

/// Runs the image work of such a command; \a work returns whether it succeeded. Returns a status,
/// with the error about \a path reported if the work cannot be started.
int doImageWork(const QString& path, const std::function<bool()>& work);

/// Loads an image of a type in the catalogue, upright, and sets \a type, if it is empty, to that of
/// the image. Null, with the error reported, for anything else and for an image that is too large.
QImage loadImage(const QString& path, QByteArray& type);

/// Saves an image with saveFile(), and notes what its type cannot store.
bool saveImage(ImageJob& job, const QImage& image);

} // namespace cli
