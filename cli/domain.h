#pragma once

#include "calc/measure.h"
#include "cli/input.h"
#include "lut/catalogue.h"

#include <QString>

namespace cli {

/// The domain that a file states or its numbers imply. The table read from it is normalised.
struct StatedDomain {
    tintwell::Channels min = {0, 0, 0};
    tintwell::Channels max = {1, 1, 1};

    bool isUnit() const;
};

/// The domain of the table of a kind.
StatedDomain statedDomain(const Read_LUTFile& lut, tintwell::TableKind kind);

/// "0 to 1"
QString formatted(const StatedDomain& domain);

/// What a format calls its domain: "domain", "range" or "scale". Null if it has none worth
/// reporting.
const char* domainLabel(const StatedDomain& domain, const tintwell::Format& format);

/// Notes that the file \a path, with a table of \a kind, will not hold the input domain that
/// \a table was read with.
void noteLostDomain(const Table& table, tintwell::TableKind kind, const QString& path,
                    Notes& notes);

/// The same for the title.
void noteLostTitle(const Table& table, const QString& path, Notes& notes);

} // namespace cli
