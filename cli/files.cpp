#include "cli/files.h"

#include "cli/image_thread.h"
#include "cli/report.h"
#include "lut/catalogue.h"
#include "lut/write_lutfile.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace cli {

namespace {

using tintwell::formatCount;
using tintwell::formatOf;

std::vector<int> formatsOfExtension(const QString& path) {
    const QString extension = QFileInfo(path).suffix().toLower();
    std::vector<int> codes;
    for (int code = 0; code < formatCount; ++code) {
        if (extensionsOf(code).contains(extension)) {
            codes.push_back(code);
        }
    }
    return codes;
}

QString namesOf(const std::vector<int>& codes) {
    QStringList names;
    for (const int code : codes) {
        names += QLatin1String(formatOf(code)->name);
    }
    return names.join(QStringLiteral(" or "));
}

QString unknownFormat(const QString& name) {
    return QStringLiteral("found no format \"%1\" (see tintwell-cli formats)").arg(name);
}

QString unknownExtension(const QString& path) {
    return QStringLiteral("found the extension \"%1\", expected one of a format "
                          "(see tintwell-cli formats)")
        .arg(QFileInfo(path).suffix());
}

LUTFILE_ST request(const QString& path, int formatCode) {
    LUTFILE_ST st;
    st.path = path;
    st.formatCode = formatCode;
    return st;
}

bool isImage(int formatCode) {
    return extensionsOf(formatCode).contains(QStringLiteral("png"));
}

bool readFile(const LUTFILE_ST& st, bool probe, Read_LUTFile& lut) {
    bool read = false;
    const auto work = [&] { read = lut.ReadFile(st, probe); };
    if (!isImage(st.formatCode)) {
        work();
    } else if (!onImageThread(work)) {
        return lut.fail(noImageThread());
    }
    return read;
}

/// Reads what the head of a file tells, in the format's own orders. Whether it could be read.
bool probe(const QString& path, int formatCode, Read_LUTFile& lut) {
    return readFile(request(path, formatCode), true, lut);
}

bool isWhole(const Orders& orders) {
    return orders.rgb.has_value() && orders.blueFastest.has_value();
}

/// Asks for the format's own orders, or those given; \a own() tells the former where only one is.
template <typename Own>
void setOrders(LUTFILE_ST& st, const Orders& orders, Own&& own) {
    st.defaultOrder = !orders.rgb && !orders.blueFastest;
    if (st.defaultOrder) {
        return;
    }
    const std::pair<bool, bool> others = isWhole(orders) ? std::pair(true, true) : own();
    st.dataOrder = orders.rgb.value_or(others.first);
    st.tableOrder = orders.blueFastest.value_or(others.second);
}

std::pair<bool, bool> ordersOfReader(const QString& path, int formatCode) {
    Read_LUTFile probed(nullptr);
    probe(path, formatCode, probed);
    return {probed.dataOrder, probed.tableOrder};
}

/// A writer tells its orders when it has written, be it nothing to nowhere.
std::pair<bool, bool> ordersOfWriter(int formatCode) {
    Read_LUTFile nothing(nullptr);
    Write_LUTFile writer(nullptr);
    writer.WriteFile(request(QStringLiteral("/dev/null"), formatCode), nothing);
    return {writer.dataOrder, writer.tableOrder};
}

/// The container lets the lattice order count for the channels of a 1D table, too.
void undoLatticeOrder(Read_LUTFile& lut) {
    for (int n = 0; !lut.tableOrder && lut.data1D != nullptr && n < lut.size1D; ++n) {
        std::swap(lut.data1D[n][0], lut.data1D[n][2]);
    }
}

/// Also a file that the shell has opened for it: that is the shell's to replace.
bool isStandardOutput(const QString& path) {
    struct stat file {};
    struct stat own {};
    return path == QLatin1String("-") || path == QLatin1String("/dev/stdout") ||
           (stat(QFile::encodeName(path).constData(), &file) == 0 &&
            fstat(STDOUT_FILENO, &own) == 0 && !S_ISCHR(file.st_mode) &&
            file.st_dev == own.st_dev && file.st_ino == own.st_ino);
}

QString reasonOf(const tintwell::SaveError& error) {
    switch (error.kind) {
    case tintwell::SaveError::Exists:
        return QStringLiteral("exists already (--force replaces it)");
    case tintwell::SaveError::Unsuitable:
        return error.reason;
    case tintwell::SaveError::NotWritten:
        break;
    }
    return QStringLiteral("not written: ") + error.reason;
}

std::optional<tintwell::SaveError> save(const Target& target, const tintwell::WriteContent& write) {
    if (isStandardOutput(target.path)) {
        return tintwell::writeTo(STDOUT_FILENO, write);
    }
    // Once, as a run saves to one folder.
    [[maybe_unused]] static const int removed = tintwell::removeLeftOversBeside(target.path);
    return tintwell::saveFile(
        target.path, target.overwrite ? tintwell::IfExists::Replace : tintwell::IfExists::Keep,
        write);
}

} // namespace

QStringList extensionsOf(int formatCode) {
    return QString::fromLatin1(formatOf(formatCode)->extensions).split(QLatin1Char(' '));
}

std::optional<Orders> ordersByName(const QString& text) {
    Orders orders;
    for (const QString& word : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        if (word == QLatin1String("rgb") || word == QLatin1String("bgr")) {
            orders.rgb = word.front() == QLatin1Char('r');
        } else if (word == QLatin1String("blue-fastest") || word == QLatin1String("red-fastest")) {
            orders.blueFastest = word.front() == QLatin1Char('b');
        } else {
            return std::nullopt;
        }
    }
    return orders;
}

std::optional<int> formatByName(const QString& name) {
    bool isNumber = false;
    const int number = name.toInt(&isNumber);
    if (isNumber && formatOf(number) != nullptr) {
        return number;
    }
    for (int code = 0; code < formatCount; ++code) {
        if (name == QLatin1String(formatOf(code)->name)) {
            return code;
        }
    }
    return std::nullopt;
}

bool fromIsKnown(const CommandLine& line) {
    const QString name = line.value("from");
    if (line.isSet("from") && !formatByName(name)) {
        line.wrong(unknownFormat(name));
        return false;
    }
    return true;
}

std::optional<int> formatOfInput(const QString& path) {
    const std::vector<int> codes = formatsOfExtension(path);
    if (codes.empty()) {
        reportFile(path, unknownExtension(path) + QStringLiteral(", or --from"));
        return std::nullopt;
    }
    const auto fits = [&path](int code) {
        Read_LUTFile probed(nullptr);
        return probe(path, code, probed);
    };
    const auto found = std::find_if(codes.begin(), codes.end() - 1, fits);
    return *found;
}

std::optional<int> formatOfInput(const QString& path, const QString& name) {
    return name.isEmpty() ? formatOfInput(path) : formatByName(name);
}

std::optional<int> formatOfOutput(const QString& path, const QString& name, int hint,
                                  QString& problem) {
    std::vector<int> codes = formatsOfExtension(path);
    if (!name.isEmpty()) {
        const std::optional<int> code = formatByName(name);
        if (!code) {
            problem = unknownFormat(name);
            return std::nullopt;
        }
        codes = {*code};
    }
    if (codes.empty() && QFileInfo(path).isDir()) {
        problem = path + QStringLiteral(": is a folder, expected a file");
        return std::nullopt;
    }
    if (codes.empty()) {
        problem =
            path + QStringLiteral(": ") + unknownExtension(path) + QStringLiteral(", or --to");
        return std::nullopt;
    }
    if (formatOf(codes.front())->write == nullptr) {
        problem = QStringLiteral("the format %1 is read, but not written").arg(namesOf(codes));
        return std::nullopt;
    }
    if (codes.size() == 1) {
        return codes.front();
    }
    if (std::find(codes.begin(), codes.end(), hint) != codes.end()) {
        return hint;
    }
    problem = QStringLiteral("%1: the format may be %2, expected --to").arg(path, namesOf(codes));
    return std::nullopt;
}

bool readLut(const QString& path, int formatCode, const Orders& orders, Read_LUTFile& lut) {
    LUTFILE_ST st = request(path, formatCode);
    setOrders(st, orders, [&] { return ordersOfReader(path, formatCode); });
    if (!readFile(st, false, lut)) {
        reportFile(path, lut.lastError);
        return false;
    }
    if (lut.data3D == nullptr && lut.data1D == nullptr) {
        reportFile(path, lut.lastError.isEmpty() ? QStringLiteral("found no table, expected %1")
                                                       .arg(Read_LUTFile::formatStr(formatCode))
                                                 : lut.lastError);
        return false;
    }
    if (!lut.lastError.isEmpty()) {
        noteFile(path, lut.lastError);
    }
    undoLatticeOrder(lut);
    return true;
}

bool saveFile(const Target& target, const tintwell::WriteContent& write) {
    const std::optional<tintwell::SaveError> error = save(target, write);
    if (error) {
        reportFile(target.path, reasonOf(*error));
    }
    return !error;
}

bool saveLut(const Target& target, int formatCode, const Orders& orders, std::int64_t scale,
             Read_LUTFile& lut) {
    LUTFILE_ST st = request(target.path, formatCode);
    setOrders(st, orders, [&] { return ordersOfWriter(formatCode); });
    st.outputScale = scale;
    return saveFile(target, [&](const QString& path) {
        st.path = path;
        Write_LUTFile writer(nullptr);
        writer.WriteFile(st, lut);
        return writer.lastError;
    });
}

} // namespace cli
