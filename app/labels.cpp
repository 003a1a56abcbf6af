#include "app/labels.h"

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

} // namespace

QString labelText(int language, Label label) {
    const LabelTable& table = language == SimplifiedChinese ? ChineseLabels : EnglishLabels;
    return QString::fromUtf8(table[static_cast<std::size_t>(label)]);
}

QString startHint(int language) {
    return language == SimplifiedChinese ? QStringLiteral("生成 Lut")
                                         : QStringLiteral("Generate Lut");
}

} // namespace tintwell
