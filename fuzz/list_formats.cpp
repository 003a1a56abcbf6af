// Prints the short names of the formats, for fuzz/run.

#include "lut/catalogue.h"

#include <cstdio>

int main() {
    for (const tintwell::Format& format : tintwell::catalogue) {
        std::puts(format.name);
    }
}
