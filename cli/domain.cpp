#include "cli/domain.h"

#include "cli/report.h"
#include "lut/words.h"

namespace cli {

using tintwell::DomainMeaning;
using tintwell::Format;
using tintwell::StatedDomain;
using tintwell::TableKind;

QString formatted(const StatedDomain& domain) {
    return tintwell::formatted(domain.min, domain.max);
}

const char* domainLabel(const StatedDomain& domain, const Format& format) {
    const DomainMeaning meaning = format.traits.domain;
    return domain.isUnit() && meaning != DomainMeaning::Input ? nullptr : domainWord(meaning);
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
