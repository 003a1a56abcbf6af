#include "cli/command.h"

#include "cli/numbers.h"
#include "cli/report.h"
#include "cli/standard_output.h"
#include "lut/words.h"

#include <QLoggingCategory>

#include <algorithm>
#include <cstdio>

namespace cli {

namespace {

/// Goes before a negative number, which the parser would take for an option. It cannot be in an
/// argument.
constexpr QChar mark = QChar::Null;

/// No option begins so. A word that only begins like a number is left to the command to refuse.
bool isNegative(const QString& argument) {
    const QChar next = argument.size() > 1 ? argument[1] : QChar();
    return argument.startsWith(QLatin1Char('-')) &&
           (next.isDigit() || next == QLatin1Char('.') || parseNumber(argument));
}

QStringList withMarks(QStringList arguments) {
    for (QString& argument : arguments) {
        if (isNegative(argument)) {
            argument.prepend(mark);
        }
    }
    return arguments;
}

QString withoutMark(QString argument) {
    return argument.remove(mark);
}

} // namespace

CommandLine::CommandLine(const Command& command) : m_command(command) {
    addOptions(commonOptions());
    for (const std::span<const Option>& group : command.options) {
        addOptions(group);
    }
}

void CommandLine::addOptions(std::span<const Option> options) {
    for (const Option& option : options) {
        QStringList names = {QLatin1String(option.name)};
        if (option.letter != nullptr) {
            names.prepend(QLatin1String(option.letter));
        }
        m_parser.addOption({names, QString::fromUtf8(option.help), QLatin1String(option.value)});
    }
}

std::optional<int> CommandLine::parse(const QStringList& arguments, int least, int most) {
    if (!m_parser.parse(m_command.takesNumbers ? withMarks(arguments) : arguments)) {
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
        return wrong(QStringLiteral("found %1, expected %2")
                         .arg(tintwell::counted(count, "operand", "operands"), expected()));
    }
    return std::nullopt;
}

QString CommandLine::expected() const {
    if (m_command.batch != nullptr && isSet("output-directory")) {
        return QLatin1String(m_command.batch);
    }
    return QLatin1String(*m_command.operands != '\0' ? m_command.operands : "none");
}

bool CommandLine::isSet(const char* option) const {
    return m_parser.isSet(QLatin1String(option));
}

std::optional<QString> CommandLine::value(const char* option) const {
    return isSet(option) ? std::optional(withoutMark(m_parser.value(QLatin1String(option))))
                         : std::nullopt;
}

QStringList CommandLine::operands() const {
    QStringList operands = m_parser.positionalArguments();
    std::transform(operands.begin(), operands.end(), operands.begin(), withoutMark);
    return operands;
}

bool CommandLine::number(const char* option, int least, int most,
                         std::optional<int>& number) const {
    const std::optional<QString> text = value(option);
    if (!text) {
        return true;
    }
    bool isNumber = false;
    const int found = text->toInt(&isNumber);
    if (isNumber && found >= least && found <= most) {
        number = found;
        return true;
    }
    wrong(QStringLiteral("found --%1 %2, expected a whole number from %3 to %4")
              .arg(QLatin1String(option), *text)
              .arg(least)
              .arg(most));
    return false;
}

bool CommandLine::number(const char* option, std::optional<float>& number) const {
    const std::optional<QString> text = value(option);
    if (!text) {
        return true;
    }
    const std::optional<float> found = parseNumber(*text);
    if (found && *found >= 0) {
        number = found;
        return true;
    }
    wrong(QStringLiteral("found --%1 %2, expected a number of 0 or more")
              .arg(QLatin1String(option), *text));
    return false;
}

int CommandLine::wrong(const QString& what) const {
    report(what);
    report(QStringLiteral("see tintwell-cli %1 --help").arg(QLatin1String(m_command.name)));
    return Usage;
}

void CommandLine::showHelp() const {
    // Qt's own usage line does not include the command.
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
