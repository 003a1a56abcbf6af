#include "formats/domain.h"

#include "formats/text/scan.h"

int tintwell::scanDomain(std::string_view text, float (&min)[3], float (&max)[3]) {
    float from = 0;
    float to = 0;
    const int count = scan(text, from, to);
    if (count > 0) {
        setDomain(min, from);
    }
    if (count > 1) {
        setDomain(max, to);
    }
    return count;
}

bool tintwell::statesDomain(std::string_view text, const float (&min)[3], const float (&max)[3]) {
    float from = 0;
    float to = 0;
    return scan(text, from, to) == 2 && from == min[0] && to == max[0];
}
