#include "app/labels.h"

#include <QRegularExpression>

#include <array>
#include <cstddef>

namespace tintwell {

namespace {

constexpr std::size_t LabelCount = static_cast<std::size_t>(Label::Begin) + 1;
using LabelTable = std::array<const char*, LabelCount>;

constexpr LabelTable EnglishLabels = {
    "Input File", "File Name",     "Type",       "Default Order", "Data Order", "Table Order",
    "3D Size",    "1D Size",       "Dimension",  "Output File",   "File Path",  "Type",
    "3D Size",    "Default Order", "Data Order", "Table Order",   "Language",   "Begin",
};

constexpr LabelTable ChineseLabels = {
    "输入文件", "文件名",   "类型",     "默认顺序", "数据顺序", "表格顺序",
    "3D尺寸",   "1D尺寸",   "维度",     "输出文件", "路径",     "类型",
    "3D尺寸",   "默认顺序", "数据顺序", "表格顺序", "语言",     "开始转换",
};

constexpr std::size_t MessageCount = static_cast<std::size_t>(Message::NoFolder) + 1;
using MessageTable = std::array<const char*, MessageCount>;

constexpr MessageTable EnglishMessages = {
    "Samples unchanged",
    "Red and blue swapped",
    "Lattice axes swapped",
    "Both swapped: red and blue, and the lattice axes",
    "The orders that .cube files have: RGB data, and red changes fastest from line to line",
    "The three numbers of a line are red, green, blue (RGB) or blue, green, red (BGR)",
    "From line to line blue changes fastest (RGB) or red does, as in .cube files (BGR)",
    "What the input does",
    "What the output will do",
    "Slices: the lattice at equal blue, red to the right, green down.",
    "Curves: red, green and blue out, over grey in.",
    "Choose a file, or drop one here, to see its table",
    "The file holds no table",
    "Too large to be shown here: tintwell-cli picture %1 picture.png draws it",
    "The input has no 3D table: nothing will be written",
    "Written: %1",
    "%1",
    "Not converted: %1",
    "Cannot be read: %1",
    "Not written: %1",
    "Not a .cube: tintwell-cli convert %1 converts it",
    "The 1D table will be lost",
    "The domain will be lost: the output covers 0 to 1",
    "The output is the input, which will be replaced",
    "The output exists and will be replaced",
    "The output is protected against writing",
    "The output is not a regular file",
    "The output has no name that ends in .cube",
    "There is no folder %1",
};

constexpr MessageTable ChineseMessages = {
    "样本不变",
    "红蓝互换",
    "晶格轴互换",
    "两者均互换：红蓝与晶格轴",
    ".cube 文件的顺序：RGB 数据，逐行红色变化最快",
    "一行的三个数为红、绿、蓝 (RGB) 或蓝、绿、红 (BGR)",
    "逐行蓝色变化最快 (RGB)，或红色变化最快 (BGR，.cube 文件即如此)",
    "输入的效果",
    "输出的效果",
    "切片：蓝色相等的晶格平面，红色向右，绿色向下。",
    "曲线：输入灰色时输出的红、绿、蓝。",
    "选择文件或拖放到此处，即可查看其表格",
    "文件中没有表格",
    "太大，无法在此显示：可用 tintwell-cli picture %1 picture.png 绘制",
    "输入没有 3D 表：不会写入任何内容",
    "已写入：%1",
    "%1",
    "未转换：%1",
    "无法读取：%1",
    "未写入：%1",
    "不是 .cube 文件：可用 tintwell-cli convert %1 转换",
    "1D 表将丢失",
    "定义域将丢失：输出覆盖 0 到 1",
    "输出即输入，输入将被替换",
    "输出已存在，将被替换",
    "输出文件受写保护",
    "输出不是普通文件",
    "输出的文件名不以 .cube 结尾",
    "文件夹 %1 不存在",
};

} // namespace

QString messageText(int language, Message message, const QString& argument) {
    const MessageTable& table = language == SimplifiedChinese ? ChineseMessages : EnglishMessages;
    QString text = QString::fromUtf8(table[static_cast<std::size_t>(message)]);
    return text.replace(QLatin1String("%1"), argument);
}

QString noteText(int language, const Note& note) {
    return messageText(language, note.message, note.argument);
}

QString shellWord(const QString& name) {
    static const QRegularExpression special(QStringLiteral("[^\\w.,:+-]"));
    QString word = name.startsWith(QLatin1Char('-')) ? QLatin1String("./") + name : name;
    if (!name.contains(special)) {
        return word;
    }
    return QLatin1Char('\'') + word.replace(QLatin1Char('\''), QLatin1String("'\\''")) +
           QLatin1Char('\'');
}

QString labelText(int language, Label label) {
    const LabelTable& table = language == SimplifiedChinese ? ChineseLabels : EnglishLabels;
    return QString::fromUtf8(table[static_cast<std::size_t>(label)]);
}

QString startHint(int language) {
    return language == SimplifiedChinese ? QStringLiteral("生成 Lut")
                                         : QStringLiteral("Generate Lut");
}

} // namespace tintwell
