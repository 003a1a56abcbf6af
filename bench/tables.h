#pragma once

#include "lut/lattice.h"
#include "lut/read_lutfile.h"

#include <QDir>
#include <QString>

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace bench {

constexpr std::int64_t cubed(int size) {
    return std::int64_t{size} * size * size;
}

/// Gives \a take(cell) every cell in the order of files, k fastest.
template <typename Take>
void forCells(const Read_LUTFile& lut, Take&& take) {
    tintwell::visitLattice(lut.size3D, [&](int i, int j, int k) {
        take(lut.data3D[i][j][k]);
        return true;
    });
}

/// A warm, contrasty table: smooth, and no channel the same as another.
std::unique_ptr<Read_LUTFile> gradedLattice(int size);
std::unique_ptr<Read_LUTFile> gradedCurve(int size);

/// A file format as the suite exercises it.
struct Format {
    int code;
    const char* name;               ///< in benchmarks' names, and the suffix of its files
    std::vector<int> sizes;         ///< points per axis, or entries
    std::int64_t scale = 1;         ///< what its real numbers are written as
    bool isNumbersAndBlanks = true; ///< its samples, that is
    /// Makes the files of a format without writer.
    void (*make)(std::ostream& out, const Read_LUTFile& lut) = nullptr;

    bool isWritten() const { return make == nullptr; }
    bool is3D() const { return Read_LUTFile::formatIs3D(code); }
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

/// Makes the file of a graded table.
bool makeTable(const Format& format, int size, const QString& path);

/// Files of graded tables in one folder, each made when it is first asked for.
class Tables {
public:
    explicit Tables(const QString& folder) : m_folder(folder) {}

    QString path(const Format& format, int size) const;
    /// A path where no file is.
    QString freshPath() const { return m_folder.filePath(QStringLiteral("fresh")); }

private:
    QDir m_folder;
};

} // namespace bench
