#pragma once

#include "cli/command.h"
#include "cli/orders.h"
#include "cli/report.h"
#include "cli/source.h"
#include "lut/catalogue.h"
#include "lut/read_lutfile.h"

#include <QString>

#include <array>
#include <optional>

namespace cli {

/// How tables are to be read, from the options shared by all commands that read them.
struct Input {
    const tintwell::Format* format = nullptr; ///< --from; null: found from extension and content
    Orders orders;                            ///< --in-order
};

/// A table as read: cells hold R, G, B and lattices are [red][green][blue], provided that the
/// orders are those of the file.
struct Table {
    QString path;
    Source source; ///< where \a path was read
    const tintwell::Format* format = nullptr;
    Read_LUTFile lut{nullptr};
};

/// The options for input.
inline constexpr std::array inputOptionList = {
    Option{"from", "FORMAT",
           "Format of the input, by short name or code (see tintwell-cli formats); by "
           "default, found from the extension and content. Standard input (-) needs it.",
           Completion::Formats},
    Option{"in-order", "ORDER",
           "Orders of the input: rgb or bgr for the numbers of a sample, red-fastest or "
           "blue-fastest for the lattice, or one of each, separated by a comma. By default, the "
           "orders of the format.",
           Completion::Orders}};

inline constexpr Option strictOption = {"strict", nullptr,
                                        "Take any note for a failure, before anything is written."};

/// None, with wrong usage reported, if an option's value is not valid.
std::optional<Input> inputOptions(const CommandLine& line);

/// Begins a command that reads one file or more, which are its operands. Returns a status, with the
/// error reported, if there is nothing more to do.
std::optional<int> beginReading(CommandLine& line, const QStringList& arguments, Input& input);

/// The format of a file to read: from --from or from its extension and, if that leaves a choice,
/// its content; standard input needs --from. Null, with the reason in \a problem, if these do not
/// decide.
const tintwell::Format* formatOfInput(const Input& input, const QString& path, QString& problem);

/// Reads the tables of a file. Returns why that fails, or that there is none; empty on success.
QString readTable(const Input& input, const QString& path, Table& table);

/// The same with the error, which gives false, and the reader's remarks added to \a notes.
bool loadTable(const Input& input, const QString& path, Table& table, Notes& notes);

/// The same for a command that uses one table: of a file with both kinds only the lattice is kept,
/// which is noted.
bool loadOneTable(const Input& input, const QString& path, Table& table, Notes& notes);

} // namespace cli
