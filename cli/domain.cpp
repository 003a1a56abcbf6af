#include "cli/domain.h"

#include "cli/report.h"
#include "cli/words.h"

namespace cli {

namespace {

using tintwell::Channels;
using tintwell::DomainMeaning;
using tintwell::Format;
using tintwell::TableKind;

Channels channels(const float* values) {
    return {values[0], values[1], values[2]};
}

} // namespace

bool StatedDomain::isUnit() const {
    return min == Channels{0, 0, 0} && max == Channels{1, 1, 1};
}

StatedDomain statedDomain(const Read_LUTFile& lut, TableKind kind) {
    return kind == TableKind::ThreeD ? StatedDomain{channels(lut.domainMin3D), lut.statedMax3D()}
                                     : StatedDomain{channels(lut.domainMin1D), lut.statedMax1D()};
}

QString formatted(const StatedDomain& domain) {
    return formatted(domain.min) + QStringLiteral(" to ") + formatted(domain.max);
}

const char* domainLabel(const StatedDomain& domain, const Format& format) {
    switch (format.traits.domain) {
    case DomainMeaning::Input:
        return "domain";
    case DomainMeaning::SampleRange:
        return domain.isUnit() ? nullptr : "range";
    case DomainMeaning::FullScale:
        return domain.isUnit() ? nullptr : "scale";
    }
    return nullptr;
}

QString domainCaveat(const StatedDomain& domain, const Format& format) {
    if (domain.isUnit() || format.traits.domain == DomainMeaning::FullScale) {
        return {};
    }
    return QStringLiteral(
               "samples are clamped to the %1 %2 and divided by its width; its lower end is "
               "not subtracted")
        .arg(QLatin1String(domainLabel(domain, format)), formatted(domain));
}

void noteDomain(const Table& table) {
    const TableKind kind = table.lut.hasTable3D() ? TableKind::ThreeD : TableKind::OneD;
    const QString caveat = domainCaveat(statedDomain(table.lut, kind), *table.format);
    if (!caveat.isEmpty()) {
        noteFile(table.path, caveat);
    }
}

} // namespace cli
