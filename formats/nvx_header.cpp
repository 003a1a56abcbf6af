#include "formats/nvx_header.h"
#include "formats/domain.h"

#include "formats/fill_table.h"
#include "formats/text/words.h"

#include <string_view>

namespace tintwell {

int readNvxHeader(LineSource& lines, float (&domainMin)[3], float (&domainMax)[3]) {
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        if (startsWith(line, "From")) {
            scanDomain(removeAll(line, "From "), domainMin, domainMax);
        } else if (startsWith(line, "Length")) {
            int length = 0;
            scan(removeAll(line, "Length "), length);
            return length;
        }
    }
    return 0;
}

void writeNvxHeader(TextFile& out, int length) {
    out << "From 0.0 1.0\n"
        << "Length " << length << '\n';
}

} // namespace tintwell
