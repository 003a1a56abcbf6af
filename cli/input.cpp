#include "cli/input.h"

#include "calc/make_table.h"
#include "cli/image_thread.h"
#include "cli/report.h"
#include "cli/words.h"

#include <algorithm>
#include <vector>

namespace cli {

namespace {

using tintwell::Format;

LUTFILE_ST request(const QString& path, const Format& format) {
    LUTFILE_ST st;
    st.path = path;
    st.formatCode = codeOf(format);
    return st;
}

QString noTable(const Format& format) {
    return QStringLiteral("found no table, expected %1").arg(QString::fromUtf8(format.label));
}

/// Reads or probes; images in the thread that they need.
bool readFile(const LUTFILE_ST& st, const Format& format, bool probe, Read_LUTFile& lut) {
    if (!format.isImage) {
        return lut.ReadFile(st, probe);
    }
    bool read = false;
    return onImageThread([&] { read = lut.ReadFile(st, probe); }) ? read
                                                                  : lut.fail(noImageThread());
}

} // namespace

std::optional<Input> inputOptions(const CommandLine& line) {
    Input input;
    if (const std::optional<QString> name = line.value("from")) {
        input.format = tintwell::formatByName(*name);
        if (input.format == nullptr) {
            line.wrong(unknownFormat(*name));
            return std::nullopt;
        }
    }
    const std::optional<Orders> orders = ordersOption(line, "in-order");
    if (!orders) {
        return std::nullopt;
    }
    input.orders = *orders;
    return input;
}

bool refuseStandardInput(const QString& path) {
    if (path != QLatin1String("-")) {
        return false;
    }
    reportFile(path, QStringLiteral("standard input is not read"));
    return true;
}

const Format* formatOfInput(const Input& input, const QString& path) {
    if (refuseStandardInput(path)) {
        return nullptr;
    }
    if (input.format != nullptr) {
        return input.format;
    }
    const std::vector<const Format*> formats = tintwell::formatsByExtension(path);
    if (formats.empty()) {
        reportFile(path, unknownExtension(path, "--from"));
        return nullptr;
    }
    const auto fits = [&path](const Format* format) {
        Read_LUTFile probed(nullptr);
        return readFile(request(path, *format), *format, true, probed);
    };
    return *std::find_if(formats.begin(), formats.end() - 1, fits);
}

bool readTable(const Input& input, const QString& path, Table& table) {
    table.path = path;
    table.format = formatOfInput(input, path);
    if (table.format == nullptr) {
        return false;
    }
    Read_LUTFile& lut = table.lut;
    LUTFILE_ST st = request(path, *table.format);
    setOrders(st, input.orders, table.format->readerOrders);
    if (!readFile(st, *table.format, false, lut)) {
        reportFile(path, lut.lastError);
        return false;
    }
    if (!lut.hasTable3D() && !lut.hasTable1D()) {
        reportFile(path, lut.remarks.isEmpty() ? noTable(*table.format) : lut.remarks.first());
        return false;
    }
    for (const QString& what : lut.remarks) {
        noteFile(path, what);
    }
    tintwell::undoLatticeOrder(lut);
    return true;
}

} // namespace cli
