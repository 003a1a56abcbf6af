#include "harness.h"

#include "lut/lattice.h"
#include "lut/read_lutfile.h"

#include <QByteArray>
#include <QFile>
#include <QtGlobal>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <sanitizer/allocator_interface.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

/// How much is allocated and not yet freed since the watch began, and the peak of that.
struct Heap {
    bool watched = false;
    std::ptrdiff_t used = 0;
    std::ptrdiff_t peak = 0;
};

// The allocator's hooks are given only the block.
Heap heap; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

/// Every block of the C library has a header of eight bytes and a multiple of sixteen bytes.
std::ptrdiff_t blockSize(std::size_t size) {
    return std::max<std::ptrdiff_t>(32, static_cast<std::ptrdiff_t>((size + 8 + 15) & ~size_t{15}));
}

void onAllocate(const volatile void* /*block*/, std::size_t size) {
    if (heap.watched) {
        heap.used += blockSize(size);
        heap.peak = std::max(heap.peak, heap.used);
    }
}

void onFree(const volatile void* block) {
    if (heap.watched && block != nullptr) {
        heap.used -= blockSize(__sanitizer_get_allocated_size(const_cast<const void*>(block)));
    }
}

void dropMessage(QtMsgType /*type*/, const QMessageLogContext& /*context*/,
                 const QString& /*message*/) {}

} // namespace

namespace fuzz {

void require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "false: %s\n", what);
        std::abort();
    }
}

MemoryFile::MemoryFile(std::string_view content) : m_descriptor(memfd_create("input", 0)) {
    const auto size = static_cast<ssize_t>(content.size());
    require(write(m_descriptor, content.data(), content.size()) == size,
            "the input is written to its file");
}

MemoryFile::~MemoryFile() {
    close(m_descriptor);
}

QString MemoryFile::path() const {
    return QStringLiteral("/proc/self/fd/%1").arg(m_descriptor);
}

QByteArray MemoryFile::content() const {
    QFile file(path());
    require(file.open(QIODevice::ReadOnly), "the output file opens");
    return file.readAll();
}

int Choices::oneOf(int count) {
    if (m_rest.empty()) {
        return 0;
    }
    const int letter = static_cast<unsigned char>(m_rest.front()) + 256 - 'a';
    m_rest.remove_prefix(1);
    return letter % 256 % count;
}

HeapWatch::HeapWatch() {
    heap = {true, 0, 0};
}

HeapWatch::~HeapWatch() {
    heap.watched = false;
    require(heap.peak <= Limit, "a small file needs little memory");
}

LUTFILE_ST request(const QString& path, int code) {
    LUTFILE_ST st;
    st.path = path;
    st.formatCode = code;
    return st;
}

void touch(const Read_LUTFile& lut, bool mustBeWhole) {
    require(!mustBeWhole || ((lut.size3D <= 0 || lut.data3D != nullptr) &&
                             (lut.size1D <= 0 || lut.data1D != nullptr)),
            "a table that was read is complete");
    volatile float last = 0;
    if (lut.data3D != nullptr) {
        tintwell::visitLattice(lut.size3D, [&](int i, int j, int k) {
            last = lut.data3D[i][j][k][2];
            return true;
        });
    }
    for (int n = 0; lut.data1D != nullptr && n < lut.size1D; ++n) {
        last = lut.data1D[n][2];
    }
}

} // namespace fuzz

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    qInstallMessageHandler(dropMessage);
    __sanitizer_install_malloc_and_free_hooks(onAllocate, onFree);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::run({reinterpret_cast<const char*>(data), size});
    return 0;
}
