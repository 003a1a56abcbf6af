// evaluate LUT [R G B]...: prints what a table makes of colours.

#include "calc/look_up.h"
#include "calc/measure.h"
#include "cli/command.h"
#include "cli/input.h"
#include "cli/numbers.h"
#include "cli/report.h"
#include "cli/standard_output.h"
#include "lut/words.h"
#include "saving/descriptors.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <optional>
#include <vector>

namespace {

using tintwell::Channels;

/// The numbers of a colour, separated by \a between.
QByteArray inWords(const Channels& colour, const char* between) {
    return cli::shortest(colour[0]) + between + cli::shortest(colour[1]) + between +
           cli::shortest(colour[2]);
}

/// JSON has no infinity and no NaN.
QByteArray jsonText(const Channels& colour) {
    QByteArray text;
    for (const float value : colour) {
        text += text.isEmpty() ? "[" : ", ";
        text += std::isfinite(value) ? cli::shortest(value) : QByteArrayLiteral("null");
    }
    return text + ']';
}

/// Prints colours as they come, a line each.
class Printer {
public:
    Printer(const Read_LUTFile& lut, bool isJson) : m_lut(lut), m_isJson(isJson) {}

    void print(const Channels& in) {
        Channels out = {};
        tintwell::lookUp(m_lut, in.data(), out.data());
        if (m_isJson) {
            std::fputs(m_count++ == 0 ? "[\n" : ",\n", stdout);
            put("    {\"in\": " + jsonText(in) + ", \"out\": " + jsonText(out) + '}');
        } else {
            put(inWords(out, " ") + '\n');
        }
    }

    int finish() {
        if (m_isJson) {
            std::fputs(m_count == 0 ? "[\n]\n" : "\n]\n", stdout);
        }
        return cli::finishOutput();
    }

private:
    static void put(const QByteArray& text) { std::fputs(text.constData(), stdout); }

    const Read_LUTFile& m_lut;
    bool m_isJson;
    std::int64_t m_count = 0;
};

bool isBlank(const char* text) {
    return text[std::strspn(text, " \t\r\n\v\f")] == '\0';
}

std::optional<Channels> colourIn(const char* line) {
    Channels colour = {};
    for (float& value : colour) {
        const std::optional<float> number = cli::takeNumber(line);
        if (!number) {
            return std::nullopt;
        }
        value = *number;
    }
    return isBlank(line) ? std::optional(colour) : std::nullopt;
}

/// Takes colours from standard input, one a line, until one cannot be read.
class ColourLines {
public:
    std::optional<Channels> next() {
        while (std::fgets(m_line.data(), static_cast<int>(m_line.size()), stdin) != nullptr) {
            ++m_number;
            const std::size_t length = std::strlen(m_line.data());
            if ((length == 0 || m_line[length - 1] != '\n') && std::feof(stdin) == 0) {
                fail(QStringLiteral("found a line of more than %1 bytes or with a zero byte")
                         .arg(m_line.size() - 2));
                return std::nullopt;
            }
            const char* const text = withoutExtras();
            if (isBlank(text)) {
                continue;
            }
            const std::optional<Channels> colour = colourIn(text);
            if (!colour) {
                fail(QStringLiteral("found \"%1\", expected three numbers")
                         .arg(QString::fromUtf8(text).simplified().left(60)));
            }
            return colour;
        }
        if (std::ferror(stdin) != 0) {
            cli::reportFile(input(), tintwell::systemError());
            m_hasFailed = true;
        }
        return std::nullopt;
    }

    bool hasFailed() const { return m_hasFailed; }

private:
    /// The line without a byte order mark before it and a comment after it.
    const char* withoutExtras() {
        constexpr const char* mark = "\xEF\xBB\xBF";
        m_line[std::strcspn(m_line.data(), "#")] = '\0';
        const bool isMarked = m_number == 1 && std::strncmp(m_line.data(), mark, 3) == 0;
        return m_line.data() + (isMarked ? 3 : 0);
    }

    static QString input() { return QStringLiteral("standard input"); }

    void fail(const QString& what) {
        cli::reportFile(input(), QStringLiteral("%1: ").arg(m_number) + what);
        m_hasFailed = true;
    }

    std::array<char, 1 << 16> m_line = {};
    std::int64_t m_number = 0;
    bool m_hasFailed = false;
};

int printColours(const std::vector<Channels>& colours, Printer printer) {
    for (const Channels& colour : colours) {
        printer.print(colour);
    }
    return printer.finish();
}

int printLines(Printer printer) {
    ColourLines lines;
    for (auto colour = lines.next(); colour && std::ferror(stdout) == 0; colour = lines.next()) {
        printer.print(*colour);
    }
    const int printed = printer.finish();
    return lines.hasFailed() ? cli::Failed : printed;
}

/// The colours among the operands; none, with wrong usage reported, if they are not all colours.
std::optional<std::vector<Channels>> coloursIn(const cli::CommandLine& line) {
    const QStringList texts = line.operands().mid(1);
    std::vector<Channels> colours(static_cast<std::size_t>(texts.size() / 3));
    for (int n = 0; n < texts.size(); ++n) {
        const std::optional<float> number = cli::parseNumber(texts[n]);
        if (!number) {
            line.wrong(QStringLiteral("found \"%1\", expected a number").arg(texts[n]));
            return std::nullopt;
        }
        if (texts.size() % 3 == 0) {
            colours[static_cast<std::size_t>(n / 3)][static_cast<std::size_t>(n % 3)] = *number;
        }
    }
    if (texts.size() % 3 != 0) {
        line.wrong(QStringLiteral("found %1, expected three for each colour")
                       .arg(tintwell::counted(texts.size(), "number")));
        return std::nullopt;
    }
    return colours;
}

} // namespace

int cli::runEvaluate(const Command& self, const QStringList& arguments) {
    CommandLine line(self);
    if (const auto status = line.parse(arguments, 1, std::numeric_limits<int>::max())) {
        return *status;
    }
    const std::optional<Input> input = inputOptions(line);
    const auto colours = input ? coloursIn(line) : std::nullopt;
    if (!colours) {
        return Usage;
    }
    const QString path = line.operands().first();
    if (colours->empty() && isStandardInput(path)) {
        return line.wrong(QStringLiteral("standard input is the table: expected colours after it"));
    }
    Table table;
    Notes notes(line.isSet("strict"));
    if (!loadOneTable(*input, path, table, notes)) {
        return Failed;
    }
    if (!notes.allowWriting()) {
        reportFile(path, QStringLiteral("not evaluated: ") + notes.reason());
        return Failed;
    }
    const Printer printer(table.lut, line.isSet("json"));
    return colours->empty() ? printLines(printer) : printColours(*colours, printer);
}
