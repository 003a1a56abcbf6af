#include "formats/nvx_header.h"

#include "formats/tables.h"
#include "formats/text/words.h"

#include <string_view>

namespace tintwell {

void readNvxHeader(LineSource& lines, float (&domainMin)[3], float (&domainMax)[3], int& length) {
    float min = 0;
    float max = 0;
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        if (startsWith(line, "From")) {
            if (scan(without(line, "From "), min, max) > 0) {
                setDomain(domainMin, min);
                setDomain(domainMax, max);
            }
        } else if (startsWith(line, "Length")) {
            scan(without(line, "Length "), length);
            return;
        }
    }
}

void writeNvxHeader(TextFile& out, int length) {
    out << "From 0.0 1.0\n"
        << "Length " << length << '\n';
}

} // namespace tintwell
