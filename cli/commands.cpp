// The definition of every command.

#include "cli/batch.h"
#include "cli/command.h"
#include "cli/input.h"
#include "cli/output.h"

#include <array>

namespace cli {

namespace {

constexpr std::array common = {
    Option{.name = "help", .value = nullptr, .help = "Show this help.", .letter = "h"},
    Option{"verbose", nullptr, "Trace what readers do on standard error."}};

constexpr Option jsonOption = {"json", nullptr, "Print JSON."};

constexpr std::array json = {jsonOption};

constexpr std::array sizes = {Option{
    "sizes", nullptr,
    "Tell how far a 3D table would be off between its points at 17, 25, 33, 49 and 65 points "
    "per axis."}};

constexpr std::array force = {forceOption};

constexpr std::array strict = {strictOption};

constexpr std::array comparison = {
    Option{
        "tolerance", "T",
        "Exit with status 1 if the largest difference is above T; without it, no difference is a "
        "failure."},
    Option{"picture", "OUT.png",
           "Draw the differences: of lattices in slices, of curves over the input.",
           Completion::Files},
    jsonOption, forceOption};

constexpr std::array imageOutput = {
    Option{"to", "TYPE",
           "Type of the output, such as png or tif; by default, found from the extension or, in a "
           "batch, that of the input.",
           Completion::ImageTypes},
    Option{"compression", "N",
           "How much work goes into PNG files, 0 (not compressed) to 9 (smallest); by default 2 "
           "for 16 bits and 5 for 8 bits. Other types have one compression only."},
    strictOption, forceOption};

constexpr std::array commands = {
    Command{.name = "formats",
            .operands = "",
            .summary = "List the formats",
            .run = runFormats,
            .options = {json}},
    Command{.name = "info",
            .operands = "FILE...",
            .summary = "Show what tables hold",
            .run = runInfo,
            .options = {inputOptionList, strict, json, sizes}},
    Command{.name = "check",
            .operands = "FILE...",
            .summary = "Tell what is lost when files are read",
            .run = runCheck,
            .options = {inputOptionList, json}},
    Command{.name = "compare",
            .operands = "FIRST SECOND",
            .summary = "Tell how far two tables are apart",
            .run = runCompare,
            .options = {inputOptionList, strict, comparison},
            .toolkit = Toolkit::Fonts},
    Command{.name = "evaluate",
            .operands = "LUT [R G B]...",
            .summary = "Print what a table makes of colours, given or on standard input",
            .run = runEvaluate,
            .options = {inputOptionList, strict, json},
            .takesNumbers = true},
    Command{.name = "convert",
            .operands = "IN OUT",
            .summary = "Convert tables to another format, size or order",
            .run = runConvert,
            .options = {inputOptionList, strict, outputOptionList, batchOptionList},
            .batch = "--to FORMAT --output-directory DIR IN..."},
    Command{.name = "merge",
            .operands = "FIRST SECOND... OUT",
            .summary = "Combine tables, applied one after the other, into one",
            .run = runMerge,
            .options = {inputOptionList, strict, outputOptionList}},
    Command{.name = "identity",
            .operands = "OUT",
            .summary = "Write an identity table",
            .run = runIdentity,
            .options = {outputOptionList}},
    Command{.name = "apply",
            .operands = "LUT IN-IMAGE OUT-IMAGE",
            .summary = "Apply a table to images",
            .run = runApply,
            .options = {inputOptionList, imageOutput, batchOptionList},
            .batch = "--output-directory DIR LUT IN-IMAGE..."},
    Command{.name = "picture",
            .operands = "LUT OUT.png",
            .summary = "Draw a picture of a table",
            .run = runPicture,
            .options = {inputOptionList, strict, force},
            .toolkit = Toolkit::Fonts},
    Command{.name = "help",
            .operands = "[COMMAND]",
            .summary = "List the commands, or show the help of one",
            .run = runHelp,
            .completion = Completion::Commands}};

} // namespace

std::span<const Command> allCommands() {
    return commands;
}

std::span<const Option> commonOptions() {
    return common;
}

} // namespace cli
