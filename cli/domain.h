#pragma once

#include "cli/input.h"
#include "lut/catalogue.h"
#include "lut/stated_domain.h"

#include <QString>

namespace cli {

/// "0 to 1"
QString formatted(const tintwell::StatedDomain& domain);

/// What a format calls its domain: "domain", "range" or "scale". Null if it has none worth
/// reporting.
const char* domainLabel(const tintwell::StatedDomain& domain, const tintwell::Format& format);

/// Notes that the file \a path, with a table of \a kind, will not hold the input domain that
/// \a table was read with.
void noteLostDomain(const Table& table, tintwell::TableKind kind, const QString& path,
                    Notes& notes);

/// The same for the title.
void noteLostTitle(const Table& table, const QString& path, Notes& notes);

} // namespace cli
