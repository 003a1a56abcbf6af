#pragma once

#include <QCommandLineParser>
#include <QStringList>

#include <optional>

namespace cli {

/// What the program tells the shell.
enum ExitStatus { Done = 0, Failed = 1, Usage = 2 };

/// What a command asks of the toolkit.
enum class Toolkit { Core, Fonts };

/// One command of the program. Help, dispatch and the tests of the documents go through the table
/// of these in main.cpp.
struct Command {
    const char* name;
    const char* operands; ///< as the usage line shows them: "FIRST SECOND OUT"
    const char* summary;  ///< one sentence, without a full stop
    int (*run)(const Command& self, const QStringList& arguments); ///< returns an ExitStatus
    Toolkit toolkit = Toolkit::Core;
    const char* batch = nullptr; ///< a second form of the operands, with the options it needs
};

// The commands, each in a source of its name. The arguments begin with the command's name.
int runFormats(const Command& self, const QStringList& arguments);
int runInfo(const Command& self, const QStringList& arguments);
int runConvert(const Command& self, const QStringList& arguments);
int runMerge(const Command& self, const QStringList& arguments);
int runIdentity(const Command& self, const QStringList& arguments);
int runApply(const Command& self, const QStringList& arguments);
int runPicture(const Command& self, const QStringList& arguments);

/// The command line of one command: its own options beside --help and --verbose, which every
/// command has.
class CommandLine {
public:
    explicit CommandLine(const Command& command);

    /// Adds an option; one with a \a valueName takes a value.
    void addOption(const char* name, const char* description, const char* valueName = nullptr);

    /// Takes the arguments apart. A status, when there is nothing more to do: help was asked for
    /// and given, or the usage is wrong and was reported. Needs \a least to \a most operands.
    std::optional<int> parse(const QStringList& arguments, int least, int most);

    bool isSet(const char* option) const;
    QString value(const char* option) const;
    /// The option as a whole number from \a least to \a most, \a unset without the option. None,
    /// with the usage reported as wrong, for anything else.
    std::optional<int> number(const char* option, int least, int most, int unset) const;
    QStringList operands() const { return m_parser.positionalArguments(); }

    /// Reports wrong usage; returns Usage.
    int wrong(const QString& what) const;

private:
    void showHelp() const;

    const Command& m_command;
    QCommandLineParser m_parser;
};

} // namespace cli
