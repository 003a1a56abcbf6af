// help [COMMAND]: the help of the program or of a command; and what to do about unknown commands.

#include "cli/command.h"
#include "cli/report.h"
#include "cli/standard_output.h"

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <vector>

namespace cli {

namespace {

/// The least number of characters to insert, remove or replace that makes one text of the other.
int editDistance(const QString& first, const QString& second) {
    std::vector<int> row(static_cast<std::size_t>(second.size()) + 1); // for a start of the first
    std::iota(row.begin(), row.end(), 0);
    for (const QChar c : first) {
        int diagonal = row.front()++;
        for (std::size_t n = 1; n < row.size(); ++n) {
            const int replaced = diagonal + (c == second[static_cast<int>(n) - 1] ? 0 : 1);
            diagonal = row[n];
            row[n] = std::min({replaced, diagonal + 1, row[n - 1] + 1});
        }
    }
    return row.back();
}

/// The only command that begins with the name; null if none or several do.
const Command* onlyCompletion(const QString& name) {
    const auto completes = [&](const Command& command) {
        return QString::fromLatin1(command.name).startsWith(name);
    };
    const std::span<const Command> all = allCommands();
    const auto found = std::find_if(all.begin(), all.end(), completes);
    return std::count_if(all.begin(), all.end(), completes) == 1 ? &*found : nullptr;
}

/// The command that the name may stand for; null if none is much like it.
const Command* nearest(const QString& name) {
    if (const Command* const completion = onlyCompletion(name)) {
        return completion;
    }
    constexpr int near = 2; // edits
    const auto distance = [&](const Command& command) {
        return editDistance(name, QString::fromLatin1(command.name));
    };
    const std::span<const Command> all = allCommands();
    const auto found =
        std::min_element(all.begin(), all.end(), [&](const Command& a, const Command& b) {
            return distance(a) < distance(b);
        });
    return distance(*found) <= near ? &*found : nullptr;
}

} // namespace

const Command* commandByName(const QString& name) {
    const std::span<const Command> all = allCommands();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Command& command) {
        return name == QLatin1String(command.name);
    });
    return found != all.end() ? &*found : nullptr;
}

void reportUnknownCommand(const QString& name) {
    const Command* const meant = nearest(name.toLower());
    report(QStringLiteral("unknown command \"%1\"").arg(name) +
           (meant != nullptr ? QStringLiteral("; did you mean %1?").arg(QLatin1String(meant->name))
                             : QString()));
}

void showProgramHelp() {
    std::puts("Usage: tintwell-cli COMMAND [options] ...\n"
              "Convert colour look-up tables.\n\n"
              "Commands:");
    for (const Command& command : allCommands()) {
        std::printf("  %-9s %-22s  %s.\n", command.name, command.operands, command.summary);
    }
    std::puts("\ntintwell-cli COMMAND --help lists the options of a command.\n"
              "tintwell-cli -V or --version prints the version.\n"
              "Exit status: 0 success, 1 failure, 2 wrong usage.");
}

int runHelp(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    if (const auto status = line.parse(arguments, 0, 1)) {
        return *status;
    }
    if (line.operands().isEmpty()) {
        showProgramHelp();
        return finishOutput();
    }
    const QString name = line.operands().first();
    const Command* const command = commandByName(name);
    if (command == nullptr) {
        reportUnknownCommand(name);
        report(QStringLiteral("see tintwell-cli help"));
        return Usage;
    }
    return command->run(*command, {name, QStringLiteral("--help")});
}

} // namespace cli
