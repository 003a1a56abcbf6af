#pragma once

#include "cli/command.h"
#include "cli/files.h"

#include <QByteArray>
#include <QImage>
#include <QString>

#include <functional>
#include <optional>

namespace cli {

/// What a command that makes an image with a table works on.
struct ImageJob {
    Target target;
    QByteArray type; ///< of the image: the toolkit's name
    int lutFormat = 0;
};

/// Begins such a command: takes the arguments apart, of which the first names the table and the
/// last the image, and reads the table. A status, with the error reported, when there is nothing
/// more to do.
std::optional<int> begin(CommandLine& line, const QStringList& arguments, int operands,
                         ImageJob& job, Read_LUTFile& lut);

/// Does the work on images of such a command, which tells whether it succeeded. Returns a status,
/// with the error about \a path reported, where the work cannot be begun.
int doImageWork(const QString& path, const std::function<bool()>& work);

/// Loads an image of any type that the toolkit knows, upright. Null, with the error reported, for
/// what is no image or too large a one.
QImage loadImage(const QString& path);

/// Saves an image through saveFile(), with a note where its type cannot hold all of it.
bool saveImage(const ImageJob& job, const QImage& image);

} // namespace cli
