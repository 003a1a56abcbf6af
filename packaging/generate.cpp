// Prints what is generated from the commands' definitions: "bash" or "zsh" for the completions,
// "man" for the options of the manual page; and "readme" for the table of formats from the
// catalogue. Used by scripts/generate.

#include "cli/command.h"
#include "lut/catalogue.h"

#include <QStringList>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

using cli::Command;
using cli::Completion;
using cli::Option;

/// An option and all commands that have it. Options of one name that mean different things are two.
struct SharedOption {
    const Option* option;
    QStringList commands;
};

std::vector<const Option*> optionsOf(const Command& command) {
    std::vector<const Option*> options;
    for (const std::span<const Option>& group : command.options) {
        for (const Option& option : group) {
            options.push_back(&option);
        }
    }
    return options;
}

std::vector<SharedOption> sharedOptions() {
    std::vector<SharedOption> shared;
    for (const Command& command : cli::allCommands()) {
        for (const Option* const option : optionsOf(command)) {
            const auto known = std::find_if(shared.begin(), shared.end(), [&](const auto& other) {
                return qstrcmp(other.option->name, option->name) == 0 &&
                       qstrcmp(other.option->help, option->help) == 0;
            });
            SharedOption& entry =
                known != shared.end() ? *known : shared.emplace_back(SharedOption{option, {}});
            entry.commands += QLatin1String(command.name);
        }
    }
    return shared;
}

QString formatNames(bool writtenOnly) {
    QStringList names;
    for (const tintwell::Format& format : tintwell::catalogue) {
        if (!writtenOnly || format.write != nullptr) {
            names += QLatin1String(format.name);
        }
    }
    return names.join(QLatin1Char(' '));
}

constexpr const char* orderNames =
    "rgb bgr red-fastest blue-fastest rgb,red-fastest rgb,blue-fastest bgr,red-fastest "
    "bgr,blue-fastest";

QString commandNames() {
    QStringList names;
    for (const Command& command : cli::allCommands()) {
        names += QLatin1String(command.name);
    }
    return names.join(QLatin1Char(' '));
}

/// "*' --from' | 'apply --to'": the options whose values are of one kind, after a command if others
/// have an option of this name with values of another kind.
QString pattern(Completion completion) {
    const std::vector<SharedOption> options = sharedOptions();
    QStringList patterns;
    for (const SharedOption& shared : options) {
        if (shared.option->value == nullptr || shared.option->completion != completion) {
            continue;
        }
        const QString name = QLatin1String(shared.option->name);
        const auto differs = [&shared](const SharedOption& other) {
            return qstrcmp(other.option->name, shared.option->name) == 0 &&
                   other.option->completion != shared.option->completion;
        };
        if (std::none_of(options.begin(), options.end(), differs)) {
            patterns += QStringLiteral("*' --%1'").arg(name);
            continue;
        }
        for (const QString& command : shared.commands) {
            patterns += QStringLiteral("'%1 --%2'").arg(command, name);
        }
    }
    return patterns.join(QStringLiteral(" | "));
}

QString bashCase(Completion completion, const QString& words) {
    return QStringLiteral("    %1)\n"
                          "        mapfile -t COMPREPLY < <(compgen %2 -- \"$current\")\n"
                          "        return\n"
                          "        ;;\n")
        .arg(pattern(completion), words);
}

QString bashWords(const Command& command) {
    QString words =
        QStringLiteral("    %1) words='--help --verbose").arg(QLatin1String(command.name));
    for (const Option* const option : optionsOf(command)) {
        words += QLatin1String(" --") + QLatin1String(option->name);
    }
    return words + QStringLiteral("' ;;\n");
}

/// The completion of operands other than files.
QString bashOperands(const Command& command) {
    return command.completion == Completion::Commands
               ? QStringLiteral("        %1) mapfile -t COMPREPLY < <(compgen -W \"$commands\" -- "
                                "\"$current\") ;;\n")
                     .arg(QLatin1String(command.name))
               : QString();
}

QString bashCompletion() {
    QString text =
        QStringLiteral(R"(# Completion of tintwell-cli for bash. Made by scripts/generate.

_tintwell_cli() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} words=
    local formats='%1'
    local written='%2'
    local orders='%3'
    local commands='%4'

    # The shell takes the equals sign of --to=cube for a word of its own.
    if [ "$current" = = ]; then
        current=
    elif [ "$previous" = = ]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        words="$commands --help --version"
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
        return
    fi
    case ${COMP_WORDS[1]}' '$previous in
)")
            .arg(formatNames(false), formatNames(true), QLatin1String(orderNames), commandNames());
    text += bashCase(Completion::Formats, QStringLiteral("-W \"$formats\""));
    text += bashCase(Completion::WrittenFormats, QStringLiteral("-W \"$written\""));
    text += bashCase(Completion::ImageTypes,
                     QStringLiteral("-W '%1'").arg(QLatin1String(tintwell::imageExtensions)));
    text += bashCase(Completion::Orders, QStringLiteral("-W \"$orders\""));
    text += bashCase(Completion::Folders, QStringLiteral("-d"));
    text += QStringLiteral("    %1) return ;;\n").arg(pattern(Completion::Nothing));
    text += QStringLiteral(R"(    esac
    if [[ $current != -* ]]; then
        case ${COMP_WORDS[1]} in
)");
    for (const Command& command : cli::allCommands()) {
        text += bashOperands(command);
    }
    text += QStringLiteral(R"(        *) mapfile -t COMPREPLY < <(compgen -f -- "$current") ;;
        esac
        return
    fi
    case ${COMP_WORDS[1]} in
)");
    for (const Command& command : cli::allCommands()) {
        text += bashWords(command);
    }
    return text + QStringLiteral(R"(    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

complete -o filenames -F _tintwell_cli tintwell-cli
)");
}

/// The start of a help text, up to its first punctuation mark.
QString brief(const char* help) {
    const QString text = QString::fromUtf8(help);
    const auto end = std::find_if(text.begin(), text.end(), [](QChar c) {
        return c == QLatin1Char('.') || c == QLatin1Char(';') || c == QLatin1Char(':');
    });
    const QString first = text.left(static_cast<int>(end - text.begin()));
    return first.left(1).toLower() + first.mid(1);
}

QString zshAction(Completion completion) {
    switch (completion) {
    case Completion::Formats:
        return QStringLiteral("($formats)");
    case Completion::WrittenFormats:
        return QStringLiteral("($written)");
    case Completion::ImageTypes:
        return QStringLiteral("(%1)").arg(QLatin1String(tintwell::imageExtensions));
    case Completion::Orders:
        return QStringLiteral("($orders)");
    case Completion::Folders:
        return QStringLiteral("_files -/");
    case Completion::Files:
        return QStringLiteral("_files");
    case Completion::Commands:
        return QStringLiteral("(%1)").arg(commandNames());
    case Completion::Nothing:
        break;
    }
    return {};
}

QString zshOption(const Option& option) {
    QString spec = QStringLiteral("\"--%1%2[%3]")
                       .arg(QLatin1String(option.name),
                            QLatin1String(option.value != nullptr ? "=" : ""), brief(option.help));
    if (option.value != nullptr) {
        spec += QStringLiteral(":%1:%2").arg(QString::fromLatin1(option.value).toLower(),
                                             zshAction(option.completion));
    }
    return spec + QLatin1Char('"');
}

QString zshCommand(const Command& command) {
    QString text =
        QStringLiteral("    %1)\n        _arguments $common").arg(QLatin1String(command.name));
    for (const Option* const option : optionsOf(command)) {
        text += QStringLiteral(" \\\n            ") + zshOption(*option);
    }
    if (*command.operands != '\0') {
        text +=
            QStringLiteral(" \\\n            '*:%1:%2'")
                .arg(QLatin1String(command.completion == Completion::Files ? "file" : "command"),
                     zshAction(command.completion));
    }
    return text + QStringLiteral("\n        ;;\n");
}

QString zshCompletion() {
    QString text = QStringLiteral(R"(#compdef tintwell-cli
# Completion of tintwell-cli for zsh. Made by scripts/generate.

_tintwell-cli() {
    local -a commands common
    local formats='%1'
    local written='%2'
    local orders='%3'
    commands=(
)")
                       .arg(formatNames(false), formatNames(true), QLatin1String(orderNames));
    for (const Command& command : cli::allCommands()) {
        text += QStringLiteral("        '%1:%2'\n")
                    .arg(QLatin1String(command.name), brief(command.summary));
    }
    text += QStringLiteral(R"(    )
    common=('(-h --help)'{-h,--help}'[show this help]' '--verbose[trace what readers do]')

    if ((CURRENT == 2)); then
        _describe command commands
        _arguments '(-h --help)'{-h,--help}'[show the help]' \
            '(-V --version)'{-V,--version}'[show the version]'
        return
    fi
    local command=${words[2]}
    shift words
    ((CURRENT--))
    case $command in
)");
    for (const Command& command : cli::allCommands()) {
        text += zshCommand(command);
    }
    return text + QStringLiteral(R"(    esac
}

_tintwell-cli "$@"
)");
}

/// "info, convert and merge"
QString enumeration(QStringList names) {
    const QString last = names.takeLast();
    return names.isEmpty() ? last
                           : names.join(QStringLiteral(", ")) + QStringLiteral(" and ") + last;
}

QString manEntry(const Option& option) {
    const QString name =
        QString::fromLatin1(option.name).replace(QLatin1Char('-'), QLatin1String("\\-"));
    const QString entry =
        option.value != nullptr
            ? QStringLiteral(".BI \\-\\-%1 \" %2\"").arg(name, QLatin1String(option.value))
        : option.letter != nullptr
            ? QStringLiteral(".BR \\-%1 \", \" \\-\\-%2").arg(QLatin1String(option.letter), name)
            : QStringLiteral(".B \\-\\-%1").arg(name);
    const QString help =
        QString::fromUtf8(option.help).replace(QLatin1Char('-'), QLatin1String("\\-"));
    return QStringLiteral(".TP\n%1\n%2\n").arg(entry, help);
}

QString manOptions() {
    QString text = QStringLiteral(".SS For every command\n");
    for (const Option& option : cli::commonOptions()) {
        text += manEntry(option);
    }
    std::vector<SharedOption> options = sharedOptions();
    while (!options.empty()) {
        const QStringList commands = options.front().commands;
        text += QStringLiteral(".SS For %1\n").arg(enumeration(commands));
        for (const SharedOption& shared : options) {
            text += shared.commands == commands ? manEntry(*shared.option) : QString();
        }
        options.erase(
            std::remove_if(options.begin(), options.end(),
                           [&](const SharedOption& shared) { return shared.commands == commands; }),
            options.end());
    }
    return text;
}

QString formatTable() {
    QString text =
        QStringLiteral("| Code | Label | Kind | Reads | Writes |\n|---|---|---|---|---|\n");
    for (const tintwell::Format& format : tintwell::catalogue) {
        text += QStringLiteral("| %1 | %2 | %3 | yes | %4 |\n")
                    .arg(codeOf(format))
                    .arg(QString::fromUtf8(format.label),
                         QLatin1String(tintwell::kindName(format.kind)),
                         QLatin1String(format.write != nullptr ? "yes" : "no"));
    }
    return text;
}

} // namespace

int main(int argc, char* argv[]) {
    const QString what = QString::fromLatin1(argc > 1 ? argv[1] : "");
    const QString text = what == QLatin1String("bash")     ? bashCompletion()
                         : what == QLatin1String("zsh")    ? zshCompletion()
                         : what == QLatin1String("man")    ? manOptions()
                         : what == QLatin1String("readme") ? formatTable()
                                                           : QString();
    const bool printed = std::fputs(qUtf8Printable(text), stdout) >= 0 && std::fflush(stdout) == 0;
    return printed && !text.isEmpty() ? 0 : 1;
}
