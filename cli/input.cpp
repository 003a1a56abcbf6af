#include "cli/input.h"

#include "calc/make_table.h"
#include "cli/image_thread.h"
#include "cli/report.h"
#include "cli/shape.h"
#include "cli/words.h"

#include <algorithm>
#include <limits>
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

QString noSample(const Format& format) {
    return QStringLiteral("found no sample, expected %1").arg(QString::fromUtf8(format.label));
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

std::optional<int> beginReading(CommandLine& line, const QStringList& arguments, Input& input) {
    if (const auto status = line.parse(arguments, 1, std::numeric_limits<int>::max())) {
        return status;
    }
    const std::optional<Input> options = inputOptions(line);
    if (!options) {
        return Usage;
    }
    input = *options;
    return std::nullopt;
}

const Format* formatOfInput(const Input& input, const QString& path, QString& problem) {
    if (input.format != nullptr) {
        return input.format;
    }
    if (isStandardInput(path)) {
        problem = QStringLiteral("standard input needs --from");
        return nullptr;
    }
    const std::vector<const Format*> formats = tintwell::formatsByExtension(path);
    if (formats.empty()) {
        problem = unknownExtension(path, "--from");
        return nullptr;
    }
    const auto fits = [&path](const Format* format) {
        Read_LUTFile probed(nullptr);
        return readFile(request(path, *format), *format, true, probed);
    };
    return *std::find_if(formats.begin(), formats.end() - 1, fits);
}

QString readTable(const Input& input, const QString& path, Table& table) {
    QString problem;
    table.path = path;
    table.format = formatOfInput(input, path, problem);
    if (table.format == nullptr) {
        return problem;
    }
    problem = table.source.open(path);
    if (!problem.isEmpty()) {
        return problem;
    }
    Read_LUTFile& lut = table.lut;
    LUTFILE_ST st = request(table.source.place(), *table.format);
    setOrders(st, input.orders, table.format->readerOrders);
    if (!readFile(st, *table.format, false, lut)) {
        return lut.lastError;
    }
    if (!lut.hasTable3D() && !lut.hasTable1D()) {
        return lut.remarks.isEmpty() ? noTable(*table.format) : lut.remarks.first();
    }
    if (lut.sizeInferred && lut.isUnfilled()) {
        return noSample(*table.format);
    }
    tintwell::undoLatticeOrder(lut);
    return {};
}

bool loadTable(const Input& input, const QString& path, Table& table, Notes& notes) {
    if (const QString problem = readTable(input, path, table); !problem.isEmpty()) {
        return notes.fail(path, problem);
    }
    for (const QString& what : table.lut.remarks) {
        notes.add(path, what);
    }
    return true;
}

bool loadOneTable(const Input& input, const QString& path, Table& table, Notes& notes) {
    if (!loadTable(input, path, table, notes)) {
        return false;
    }
    if (table.lut.hasTable3D() && table.lut.hasTable1D()) {
        noteBothKinds(path, tintwell::TableKind::ThreeD, notes);
        table.lut.setSize1D(0);
    }
    return true;
}

} // namespace cli
