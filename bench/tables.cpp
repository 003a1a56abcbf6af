#include "bench/tables.h"

#include "lut/write_lutfile.h"

#include <QBuffer>
#include <QFile>
#include <QImage>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iomanip>
#include <iterator>

namespace bench {

namespace {

void putDecimals(std::ostream& out, const Read_LUTFile& lut) {
    out << std::fixed << std::setprecision(6);
    forCells(lut, [&](const float* cell) {
        out << cell[0] << ' ' << cell[1] << ' ' << cell[2] << '\n';
    });
}

int code(float value, int fullScale) {
    return static_cast<int>(std::lround(value * static_cast<float>(fullScale)));
}

/// Positions of ten bits, samples of twelve.
void putThreeDl(std::ostream& out, const Read_LUTFile& lut) {
    for (int n = 0; n < lut.size3D; ++n) {
        out << n * 1023 / (lut.size3D - 1) << ' ';
    }
    out << '\n';
    forCells(lut, [&](const float* cell) {
        out << code(cell[0], 4095) << ' ' << code(cell[1], 4095) << ' ' << code(cell[2], 4095)
            << '\n';
    });
}

void putCsp(std::ostream& out, const Read_LUTFile& lut) {
    const int n = lut.size3D;
    out << "CSPLUTV100\n3D\n\nBEGIN METADATA\nEND METADATA\n\n";
    for (int channel = 0; channel < 3; ++channel) {
        out << "2\n0.0 1.0\n0.0 1.0\n";
    }
    out << '\n' << n << ' ' << n << ' ' << n << '\n';
    putDecimals(out, lut);
}

void putTruelightCube(std::ostream& out, const Read_LUTFile& lut) {
    constexpr int shaperLength = 1024;
    const int n = lut.size3D;
    out << "# Truelight Cube v2.0\n# iDims 3\n# oDims 3\n# width " << n << ' ' << n << ' ' << n
        << "\n# lutLength " << shaperLength << "\n# InputLUT\n";
    for (int entry = 0; entry < shaperLength; ++entry) {
        const float position = static_cast<float>(entry * (n - 1)) / float{shaperLength - 1};
        out << position << ' ' << position << ' ' << position << '\n';
    }
    out << "\n# Cube\n";
    putDecimals(out, lut);
    out << "# end\n";
}

void putLook(std::ostream& out, const Read_LUTFile& lut) {
    out << "<?xml version=\"1.0\" ?>\n<look>\n<LUT>\n<size>\"" << lut.size3D
        << "\"</size>\n<data>\"\n";
    forCells(lut, [&](const float* cell) {
        const QByteArray bytes(reinterpret_cast<const char*>(cell), 3 * sizeof(float));
        out << bytes.toHex().toUpper().constData() << '\n';
    });
    out << "\"</data>\n</LUT>\n</look>\n";
}

/// The planes of a lattice as tiles, this many per row.
void putTiles(std::ostream& out, const Read_LUTFile& lut, int tilesPerRow) {
    const int n = lut.size3D;
    QImage image(tilesPerRow * n, n / tilesPerRow * n, QImage::Format_RGB888);
    tintwell::visitLattice(n, [&](int i, int j, int k) {
        const float* const cell = lut.data3D[i][j][k];
        image.setPixel(i % tilesPerRow * n + k, i / tilesPerRow * n + j,
                       qRgb(code(cell[0], 255), code(cell[1], 255), code(cell[2], 255)));
        return true;
    });
    QBuffer png;
    image.save(&png, "PNG");
    out.write(png.data().constData(), png.size());
}

void putTexture(std::ostream& out, const Read_LUTFile& lut) {
    putTiles(out, lut, static_cast<int>(std::lround(std::sqrt(lut.size3D))));
}

void putUnwrappedCube(std::ostream& out, const Read_LUTFile& lut) {
    putTiles(out, lut, lut.size3D);
}

/// One output channel: mostly its own input, plus a little of the other two.
float graded(float own, float next, float last) {
    return 0.8F * std::sqrt(own) + 0.15F * next * next + 0.05F * last;
}

void grade(float* cell, float r, float g, float b) {
    cell[0] = graded(r, g, b);
    cell[1] = graded(g, b, r);
    cell[2] = graded(b, r, g);
}

Maker makerOf(const tintwell::Format& format) {
    using tintwell::FormatCode;
    switch (format.code) {
    case FormatCode::Texture:
        return putTexture;
    case FormatCode::UnwrappedCube:
        return putUnwrappedCube;
    case FormatCode::ThreeDl:
        return putThreeDl;
    case FormatCode::Look:
        return putLook;
    case FormatCode::Csp:
        return putCsp;
    case FormatCode::TruelightCube:
        return putTruelightCube;
    default:
        return nullptr;
    }
}

std::vector<int> sizesOf(const tintwell::Format& format) {
    if (format.fixedSize > 0) {
        return {format.fixedSize};
    }
    if (format.isImage) {
        return {16, 64};
    }
    return format.kind == tintwell::TableKind::ThreeD
               ? std::vector<int>(latticeSizes.begin(), latticeSizes.end())
               : std::vector<int>{1024, 4096, 65536};
}

Format exercised(const tintwell::Format& format) {
    using tintwell::IntegerSamples;
    if (format.write == nullptr && makerOf(format) == nullptr) {
        qFatal("The format %s has no writer, and no maker here.", format.name);
    }
    const IntegerSamples integers = format.traits.integers;
    const bool isBestInIntegers =
        integers == IntegerSamples::Always || integers == IntegerSamples::LargestIsFull;
    return {.row = &format,
            .sizes = sizesOf(format),
            .scale = isBestInIntegers ? 65535 : 1,
            .isNumbersAndBlanks = !format.isImage && format.code != tintwell::FormatCode::Look &&
                                  format.code != tintwell::FormatCode::Csv,
            .make = makerOf(format)};
}

} // namespace

std::unique_ptr<Read_LUTFile> gradedLattice(int size) {
    auto lut = std::make_unique<Read_LUTFile>(nullptr);
    lut->setSize3D(size);
    lut->allocate3D();
    const auto position = [last = static_cast<float>(size - 1)](int index) {
        return static_cast<float>(index) / last;
    };
    tintwell::visitLattice(size, [&](int i, int j, int k) {
        grade(lut->data3D[i][j][k], position(i), position(j), position(k));
        return true;
    });
    return lut;
}

std::unique_ptr<Read_LUTFile> gradedCurve(int size) {
    auto lut = std::make_unique<Read_LUTFile>(nullptr);
    lut->setSize1D(size);
    lut->allocate1D();
    for (int n = 0; n < size; ++n) {
        const float t = static_cast<float>(n) / static_cast<float>(size - 1);
        grade(lut->data1D[n], t, t * t, 1 - t);
    }
    return lut;
}

LUTFILE_ST Format::request(const QString& path) const {
    LUTFILE_ST st;
    st.path = path;
    st.formatCode = codeOf(*row);
    st.outputScale = scale;
    return st;
}

std::string Format::named(const std::string& subject, int size) const {
    return subject + '/' + name() + '/' + std::to_string(size);
}

const std::vector<Format>& formats() {
    static const std::vector<Format> all = [] {
        std::vector<Format> made;
        std::transform(tintwell::catalogue.begin(), tintwell::catalogue.end(),
                       std::back_inserter(made), exercised);
        return made;
    }();
    return all;
}

bool makeTable(const Format& format, int size, const QString& path) {
    const auto lut = format.graded(size);
    if (format.make == nullptr) {
        return Write_LUTFile(nullptr).WriteFile(format.request(path), *lut);
    }
    std::ofstream out(QFile::encodeName(path).toStdString(), std::ios::binary);
    format.make(out, *lut);
    return out.flush().good();
}

QString Tables::path(const Format& format, int size) const {
    const QString path =
        m_folder.filePath(QStringLiteral("%1.%2").arg(size).arg(QLatin1String(format.name())));
    if (!QFile::exists(path)) {
        makeTable(format, size, path);
    }
    return path;
}

} // namespace bench
