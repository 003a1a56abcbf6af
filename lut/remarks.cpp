// The remarks that all formats share: what became of the samples when they were stored.

#include "lut/catalogue.h"
#include "lut/lattice.h"
#include "lut/read_lutfile.h"
#include "lut/stated_domain.h"
#include "lut/words.h"

#include <algorithm>
#include <cmath>

using tintwell::counted;
using tintwell::DomainMeaning;
using tintwell::formatted;
using tintwell::OddNumbers;
using tintwell::StatedDomain;
using tintwell::TableKind;

namespace {

/// What the division by a domain does; empty where it does nothing or is the nature of the format.
QString effectOf(const StatedDomain& domain, const tintwell::Format& format) {
    if (!domain.hasWidth()) {
        return QStringLiteral("it has no width, and the samples are divided by zero");
    }
    if (domain.isUnit() || format.traits.domain == DomainMeaning::FullScale) {
        return {};
    }
    if (domain.startsAtZero()) {
        return QStringLiteral("the samples are divided by ") + formatted(domain.max);
    }
    return QStringLiteral("the samples are divided by its width, %1, and its lower end is not "
                          "subtracted")
        .arg(formatted(domain.width()));
}

const char* isOrAre(std::int64_t count) {
    return count == 1 ? "is" : "are";
}

/// "it is 1.5" or "the least is -1, the largest 1.5"
QString extremes(std::int64_t count, float least, float largest) {
    return count == 1         ? QStringLiteral("it is %1").arg(formatted(least))
           : least == largest ? QStringLiteral("each is %1").arg(formatted(least))
                              : QStringLiteral("the least is %1, the largest %2")
                                    .arg(formatted(least), formatted(largest));
}

bool isSame(const float* a, const float* b) {
    return a[0] == b[0] && a[1] == b[1] && a[2] == b[2];
}

/// Whether all samples of a table are the same; quick for any other table.
bool isConstant(const Read_LUTFile& lut, TableKind kind) {
    if (kind == TableKind::OneD) {
        return std::all_of(lut.data1D, lut.data1D + lut.size1D,
                           [&](const float* cell) { return isSame(cell, lut.data1D[0]); });
    }
    return tintwell::visitLattice(lut.size3D, [&](int i, int j, int k) {
        return isSame(lut.data3D[i][j][k], lut.data3D[0][0][0]);
    });
}

/// "the 3D table"
QString nameOf(TableKind kind) {
    return QStringLiteral("the %1 table").arg(QLatin1String(kindName(kind)));
}

QString clampedText(TableKind kind, const StatedDomain& domain, const OddNumbers& odd) {
    const std::int64_t count = odd.clamped / odd.copies;
    return QStringLiteral("%1 of %2 %3 outside %4 and clamped: %5")
        .arg(counted(count, "value"), nameOf(kind), QLatin1String(isOrAre(count)),
             formatted(domain.min, domain.max), extremes(count, odd.least, odd.largest));
}

QString nonFiniteText(TableKind kind, const OddNumbers& odd) {
    const std::int64_t count = odd.nonFinite / odd.copies;
    return QStringLiteral("%1 of %2 %3 not finite")
        .arg(counted(count, "number"), nameOf(kind), QLatin1String(isOrAre(count)));
}

/// What the domain and the store did to the numbers of a table.
QStringList remarksOnNumbers(const tintwell::Format& format, TableKind kind,
                             const StatedDomain& domain, const OddNumbers& odd) {
    QStringList remarks;
    const QString effect = effectOf(domain, format);
    if (!effect.isEmpty()) {
        remarks += QStringLiteral("the %1 of %2 is %3: %4")
                       .arg(QLatin1String(domainWord(format.traits.domain)), nameOf(kind),
                            formatted(domain.min, domain.max), effect);
    }
    if (odd.clamped > 0 && domain.hasWidth()) {
        remarks += clampedText(kind, domain, odd);
    }
    if (remarks.size() > 1) { // one loss, told once
        remarks = QStringList(remarks.join(QStringLiteral("; ")));
    }
    if (odd.nonFinite > 0) {
        remarks += nonFiniteText(kind, odd);
    }
    return remarks;
}

constexpr float black[] = {0, 0, 0};

QString constantText(TableKind kind, const float* cell) {
    return QStringLiteral("all samples of %1 are ").arg(nameOf(kind)) +
           (isSame(cell, black)
                ? QStringLiteral("black")
                : QStringLiteral("the same, %1").arg(formatted({cell[0], cell[1], cell[2]})));
}

} // namespace

float OddNumbers::normalised(float value, float min, float max) {
    const float clampedValue = min > value ? min : (value > max ? max : value); // NaN stays NaN
    if (!std::isfinite(value)) {
        ++nonFinite;
    } else if (clampedValue != value) {
        least = clamped == 0 ? value : std::min(least, value);
        largest = clamped == 0 ? value : std::max(largest, value);
        ++clamped;
    }
    return clampedValue / (max - min);
}

void Read_LUTFile::remarkMissing(std::int64_t found, std::int64_t expected) {
    if (found >= expected) {
        return;
    }
    m_isUnfilled = found == 0;
    remarks += QStringLiteral("found %1 of %2; the rest is black")
                   .arg(found)
                   .arg(counted(expected, "sample"));
}

void Read_LUTFile::remarkUnfilled(const QString& why) {
    m_isUnfilled = true;
    remarks += why + QStringLiteral(": the table is black");
}

void Read_LUTFile::remarkOnTable(const tintwell::Format& format, TableKind kind) {
    const bool is3D = kind == TableKind::ThreeD;
    const StatedDomain domain = statedDomain(*this, kind);
    remarks += remarksOnNumbers(format, kind, domain, is3D ? m_odd3D : m_odd1D);
    if ((is3D ? size3D : size1D) > 1) {
        const float* const first = is3D ? data3D[0][0][0] : data1D[0];
        const bool isToldBlack = m_isUnfilled && isSame(first, black);
        if (!isToldBlack && domain.hasWidth() && isConstant(*this, kind)) {
            remarks += constantText(kind, first);
        }
    } else if (!sizeInferred) {
        remarks += nameOf(kind) + QStringLiteral(" has a single point: it maps all colours to one");
    }
}
