#include "bench/suite.h"

#include <QFileInfo>

#include <malloc.h>

#include <cstddef>
#include <fstream>
#include <iostream>

namespace bench {

namespace {

/// A field of /proc/self/status, in bytes.
std::size_t status(const std::string& field) {
    std::ifstream words("/proc/self/status");
    std::string word;
    while (words >> word && word != field) {
    }
    std::size_t kibibytes = 0;
    words >> kibibytes;
    return kibibytes * 1024;
}

std::size_t heapInUse() {
    const struct mallinfo2 heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

} // namespace

bool printPeakMemory(const QString& cubePath) {
    LUTFILE_ST st;
    st.path = cubePath;
    Read_LUTFile lut(nullptr);
    const std::size_t residentBefore = status("VmRSS:");
    const std::size_t heapBefore = heapInUse();
    if (!lut.ReadFile(st, false)) {
        return false;
    }
    std::cout << status("VmHWM:") - residentBefore << ' ' << heapInUse() - heapBefore << ' '
              << QFileInfo(cubePath).size() << '\n';
    return true;
}

} // namespace bench
