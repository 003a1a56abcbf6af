#include "formats/nvx_header.h"
#include "formats/domain.h"

#include "formats/fill_table.h"
#include "formats/text/words.h"

#include <string_view>

namespace tintwell {

int readNvxHeader(Read_LUTFile& lut, LineSource& lines, float (&domainMin)[3],
                  float (&domainMax)[3]) {
    OddLines unknown;
    int length = 0;
    while (!lines.atEnd()) {
        const std::string_view line = lines.next();
        if (startsWith(line, "From")) {
            if (scanDomain(removeAll(line, "From "), domainMin, domainMax) < 2 &&
                !statesDomain(removeAll(line, "From"), domainMin, domainMax)) {
                remarkOnLine(lut, lines,
                             QStringLiteral("expected one blank and 2 numbers: the rest is not "
                                            "set"));
            }
        } else if (startsWith(line, "Length")) {
            scan(removeAll(line, "Length "), length);
            break;
        } else {
            unknown.addUnlessComment(line, lines);
        }
    }
    unknown.tell(lut, QStringLiteral("which is not a keyword of the header"));
    return length;
}

void writeNvxHeader(TextFile& out, int length) {
    out << "From 0.0 1.0\n"
        << "Length " << length << '\n';
}

} // namespace tintwell
