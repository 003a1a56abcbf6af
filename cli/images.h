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

/// An image to be written.
struct ImageTarget {
    Target target;
    QByteArray type;                ///< by Qt's name
    std::optional<int> compression; ///< --compression
};

/// The input of a command that makes an image from a table.
struct ImageJob {
    Table table;
    ImageTarget image;
    Notes notes{false};
};

/// The type of an image that is written to a path, from its extension.
QByteArray imageTypeOf(const QString& path);

/// Why no image of a type can be written; empty if it can.
QString imageTypeProblem(const QByteArray& type, const QString& path);

/// The same reported as wrong usage or, for a package that is missing, as a failure. Returns a
/// status; none if such images can be written.
std::optional<int> checkImageType(const CommandLine& line, const QByteArray& type,
                                  const QString& path);

/// Sets where the image goes and what type it is, PNG for standard output. Returns a status, with
/// the error reported, if such an image cannot be written.
std::optional<int> beginImage(const CommandLine& line, const QString& path, ImageJob& job);

/// Begins such a command: parses the arguments, where the first operand is the table and the last
/// the image, and reads the table. Returns a status, with the error reported, if there is nothing
/// more to do.
std::optional<int> beginImageJob(CommandLine& line, const QStringList& arguments, int operands,
                                 ImageJob& job);

/// Runs the image work of such a command; \a work returns whether it succeeded. Returns a status,
/// with the error about \a path reported if the work cannot be started.
int doImageWork(const QString& path, const std::function<bool()>& work);

/// Loads an image of a type in the catalogue, upright, and sets \a type, if it is empty, to that
/// of the image. Null, with the error in \a notes, for anything else and for an image that is too
/// large.
QImage loadImage(const QString& path, QByteArray& type, Notes& notes);

/// Saves an image with saveFile(), and notes what its type cannot store.
bool saveImage(const ImageTarget& to, const QImage& image, Notes& notes);

} // namespace cli
