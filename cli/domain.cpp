#include "cli/domain.h"

#include "cli/report.h"
#include "lut/words.h"

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
    return tintwell::formatted(domain.min, domain.max);
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

void noteLostDomain(const Table& table, TableKind kind, const QString& path, Notes& notes) {
    const bool uses3D =
        table.lut.hasTable3D() && (kind == TableKind::ThreeD || !table.lut.hasTable1D());
    const StatedDomain domain =
        statedDomain(table.lut, uses3D ? TableKind::ThreeD : TableKind::OneD);
    if (table.format->traits.domain == DomainMeaning::Input && !domain.isUnit()) {
        notes.add(path, QStringLiteral("the domain %1 is not written: readers will take 0 to 1")
                            .arg(formatted(domain)));
    }
}

void noteLostTitle(const Table& table, const QString& path, Notes& notes) {
    if (!table.lut.title.isEmpty()) {
        notes.add(path, QStringLiteral("the title \"%1\" is not written").arg(table.lut.title));
    }
}

} // namespace cli
