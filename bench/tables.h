#pragma once

#include "lut/catalogue.h"
#include "lut/lattice.h"
#include "lut/read_lutfile.h"

#include <QDir>
#include <QString>

#include <array>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace bench {

inline constexpr std::array<int, 4> latticeSizes = {17, 33, 65, 129};

constexpr std::int64_t cubed(int size) {
    return std::int64_t{size} * size * size;
}

/// Calls \a take(cell) with every cell in file order, k fastest.
template <typename Take>
void forCells(const Read_LUTFile& lut, Take&& take) {
    tintwell::visitLattice(lut.size3D, [&](int i, int j, int k) {
        take(lut.data3D[i][j][k]);
        return true;
    });
}

/// A warm, contrasty table: smooth, and with no two channels alike.
std::unique_ptr<Read_LUTFile> gradedLattice(int size);
std::unique_ptr<Read_LUTFile> gradedCurve(int size);

/// Makes a file of a format that has no writer.
using Maker = void (*)(std::ostream& out, const Read_LUTFile& lut);

/// How the suite exercises a file format.
struct Format {
    const tintwell::Format* row;    ///< in the catalogue
    std::vector<int> sizes;         ///< points per axis, or entries
    std::int64_t scale = 1;         ///< for writing its real numbers
    bool isNumbersAndBlanks = true; ///< whether its samples are
    Maker make = nullptr;           ///< null if the format has a writer

    /// The format in benchmarks' names, and the suffix of its files.
    const char* name() const { return row->name; }
    bool is3D() const { return row->kind == tintwell::TableKind::ThreeD; }
    std::int64_t points(int size) const { return is3D() ? cubed(size) : size; }
    std::unique_ptr<Read_LUTFile> graded(int size) const {
        return is3D() ? gradedLattice(size) : gradedCurve(size);
    }
    LUTFILE_ST request(const QString& path) const;
    /// The name of a benchmark: "subject/format/size".
    std::string named(const std::string& subject, int size) const;
};

/// Every format of the catalogue.
const std::vector<Format>& formats();

/// Makes a file of a graded table.
bool makeTable(const Format& format, int size, const QString& path);

/// Files of graded tables in one folder, each made when first requested.
class Tables {
public:
    explicit Tables(const QString& folder) : m_folder(folder) {}

    QString path(const Format& format, int size) const;
    /// A path where no file exists.
    QString freshPath() const { return m_folder.filePath(QStringLiteral("fresh")); }

private:
    QDir m_folder;
};

} // namespace bench
