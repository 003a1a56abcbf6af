#include "cli/command.h"

#include "cli/report.h"
#include "cli/standard_output.h"

#include <QLoggingCategory>

#include <cstdio>

namespace cli {

CommandLine::CommandLine(const Command& command) : m_command(command) {
    m_parser.addOption(
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")});
    addOption("verbose", "Trace what readers do on standard error.");
}

void CommandLine::addOption(const char* name, const char* description, const char* valueName) {
    m_parser.addOption(
        {QLatin1String(name), QString::fromUtf8(description), QLatin1String(valueName)});
}

std::optional<int> CommandLine::parse(const QStringList& arguments, int least, int most) {
    if (!m_parser.parse(arguments)) {
        return wrong(m_parser.errorText());
    }
    if (isSet("help")) {
        showHelp();
        return finishOutput();
    }
    if (isSet("verbose")) {
        QLoggingCategory::setFilterRules(QString());
    }
    for (const QString& option : m_parser.optionNames()) {
        if (m_parser.values(option).contains(QString())) {
            return wrong(QStringLiteral("found --%1 with an empty value").arg(option));
        }
    }
    const int count = operands().size();
    if (count < least || count > most) {
        return wrong(QStringLiteral("found %1 operands, expected %2")
                         .arg(count)
                         .arg(QLatin1String(m_command.operands)));
    }
    return std::nullopt;
}

bool CommandLine::isSet(const char* option) const {
    return m_parser.isSet(QLatin1String(option));
}

QString CommandLine::value(const char* option) const {
    return m_parser.value(QLatin1String(option));
}

std::optional<int> CommandLine::number(const char* option, int least, int most, int unset) const {
    if (!isSet(option)) {
        return unset;
    }
    bool isNumber = false;
    const int number = value(option).toInt(&isNumber);
    if (isNumber && number >= least && number <= most) {
        return number;
    }
    wrong(QStringLiteral("found --%1 %2, expected a whole number from %3 to %4")
              .arg(QLatin1String(option), value(option))
              .arg(least)
              .arg(most));
    return std::nullopt;
}

int CommandLine::wrong(const QString& what) const {
    report(what);
    report(QStringLiteral("see tintwell-cli %1 --help").arg(QLatin1String(m_command.name)));
    return Usage;
}

void CommandLine::showHelp() const {
    // The toolkit's own usage line knows nothing of commands.
    const QString help = m_parser.helpText();
    const QString options = help.mid(help.indexOf(QLatin1Char('\n')) + 1);
    std::printf("Usage: tintwell-cli %s [options]", m_command.name);
    if (*m_command.operands != '\0') {
        std::printf(" %s", m_command.operands);
    }
    if (m_command.batch != nullptr) {
        std::printf("\n       tintwell-cli %s [options] %s", m_command.name, m_command.batch);
    }
    std::printf("\n%s.\n%s", m_command.summary, qUtf8Printable(options));
}

} // namespace cli
