#pragma once

#include <QCommandLineParser>
#include <QStringList>

#include <array>
#include <optional>
#include <span>

namespace cli {

/// The program's exit status.
enum ExitStatus { Done = 0, Failed = 1, Usage = 2 };

/// How much of Qt a command needs.
enum class Toolkit { Core, Fonts };

/// How the value of an option or an operand is completed.
enum class Completion {
    Nothing,
    Formats,
    WrittenFormats,
    ImageTypes,
    Orders,
    Folders,
    Files,
    Commands
};

/// An option of a command. --help, the manual page and the completions are all made from this.
struct Option {
    const char* name;
    const char* value; ///< name of its value; null if it has none
    const char* help;  ///< a sentence or two
    Completion completion = Completion::Nothing;
    const char* letter = nullptr; ///< its short form, if it has one
};

/// One command of the program.
struct Command {
    const char* name;
    const char* operands; ///< as in the usage line: "FIRST SECOND OUT"
    const char* summary;  ///< one sentence, without a full stop
    int (*run)(const Command& self, const QStringList& arguments); ///< returns an ExitStatus
    std::array<std::span<const Option>, 4> options = {}; ///< in groups that commands share
    Toolkit toolkit = Toolkit::Core;
    const char* batch = nullptr; ///< a second form of the operands, with the options it needs
    Completion completion = Completion::Files; ///< of the operands
    bool takesNumbers = false;                 ///< operands may be negative numbers
};

/// Every command, in the order in which the help lists them.
std::span<const Command> allCommands();

/// Null, if there is none of this name.
const Command* commandByName(const QString& name);

/// Reports that there is no command of this name, and suggests one that is spelled much like it.
void reportUnknownCommand(const QString& name);

/// Prints the help of the program, with all commands.
void showProgramHelp();

/// The options that every command has.
std::span<const Option> commonOptions();

// The commands, each in a source file of its name. The arguments begin with the command's name.
int runFormats(const Command& self, const QStringList& arguments);
int runInfo(const Command& self, const QStringList& arguments);
int runCheck(const Command& self, const QStringList& arguments);
int runCompare(const Command& self, const QStringList& arguments);
int runEvaluate(const Command& self, const QStringList& arguments);
int runConvert(const Command& self, const QStringList& arguments);
int runMerge(const Command& self, const QStringList& arguments);
int runIdentity(const Command& self, const QStringList& arguments);
int runApply(const Command& self, const QStringList& arguments);
int runPicture(const Command& self, const QStringList& arguments);
int runHelp(const Command& self, const QStringList& arguments);

/// The command line of one command.
class CommandLine {
public:
    explicit CommandLine(const Command& command);

    /// Parses the arguments, which must include \a least to \a most operands. Returns a status if
    /// the command has nothing more to do: help was asked for and printed, or wrong usage was
    /// reported.
    std::optional<int> parse(const QStringList& arguments, int least, int most);

    bool isSet(const char* option) const;
    /// None if the option is not given.
    std::optional<QString> value(const char* option) const;
    /// Parses the option as a whole number from \a least to \a most into \a number, which is
    /// unchanged if the option is not given. False, with wrong usage reported, for any other value.
    bool number(const char* option, int least, int most, std::optional<int>& number) const;
    /// Parses the option as a real number of 0 or more in the same way.
    bool number(const char* option, std::optional<float>& number) const;
    QStringList operands() const;
    const Command& command() const { return m_command; }

    /// Reports wrong usage; returns Usage.
    int wrong(const QString& what) const;

private:
    /// The operands that the options call for.
    QString expected() const;
    void addOptions(std::span<const Option> options);
    void showHelp() const;

    const Command& m_command;
    QCommandLineParser m_parser;
};

} // namespace cli
