#include "lut/read_lutfile.h"

#include "lut/catalogue.h"
#include "lut/trace.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <utility>

namespace {

using Cell = float*;
using Row = Cell*;
using Plane = Row*;
using Lattice = Plane*;

template <typename T>
T* zeroed(int count) {
    return static_cast<T*>(std::calloc(static_cast<std::size_t>(count), sizeof(T)));
}

/// A zero-filled cell. It is cleared here because calloc() does not use the thread's cache of small
/// blocks, at least up to glibc 2.36.
Cell makeCell() {
    auto* const cell = static_cast<Cell>(std::malloc(3 * sizeof(float)));
    if (cell != nullptr) {
        std::fill_n(cell, 3, 0.0F);
    }
    return cell;
}

/// Frees an array of owned pointers, some of which may be null.
template <typename T, typename Release>
void releaseAll(T* items, int count, Release release) {
    if (items == nullptr) {
        return;
    }
    for (int n = 0; n < count; ++n) {
        release(items[n]);
    }
    std::free(items);
}

void releaseRow(Row row, int size) {
    releaseAll(row, size, [](Cell cell) { std::free(cell); });
}

void releasePlane(Plane plane, int size) {
    releaseAll(plane, size, [size](Row row) { releaseRow(row, size); });
}

void releaseLattice(Lattice lattice, int size) {
    releaseAll(lattice, size, [size](Plane plane) { releasePlane(plane, size); });
}

/// An array of \a size items, each made by \a make; null, with nothing kept, if memory runs out.
template <typename T, typename Make, typename Release>
T* makeAll(int size, Make make, Release release) {
    T* const items = zeroed<T>(size);
    if (items == nullptr) {
        return nullptr;
    }
    for (int n = 0; n < size; ++n) {
        items[n] = make();
        if (items[n] == nullptr) {
            release(items, size);
            return nullptr;
        }
    }
    return items;
}

Row makeRow(int size) {
    return makeAll<Cell>(size, makeCell, releaseRow);
}

Plane makePlane(int size) {
    return makeAll<Row>(
        size, [size] { return makeRow(size); }, releasePlane);
}

Lattice makeLattice(int size) {
    return makeAll<Plane>(
        size, [size] { return makePlane(size); }, releaseLattice);
}

QString outside(const char* what, int found, int most) {
    return QStringLiteral("found %1 of %2, expected 1 to %3")
        .arg(QLatin1String(what))
        .arg(found)
        .arg(most);
}

Read_LUTFile::DomainEnd copied(const float (&end)[3]) {
    return {end[0], end[1], end[2]};
}

/// Sets one end of a domain to 1 and remembers what it was.
void resetEnd(float (&end)[3], std::optional<Read_LUTFile::DomainEnd>& stated) {
    stated = copied(end);
    std::fill_n(end, 3, 1.0F);
}

const char* word(bool flag) {
    return flag ? "true" : "false";
}

} // namespace

Read_LUTFile::Read_LUTFile(QObject* parent) : QObject(parent) {}

Read_LUTFile::~Read_LUTFile() {
    release3D();
    release1D();
}

void Read_LUTFile::release3D() {
    const Lattice table = std::exchange(data3D, nullptr);
    const Allocation<Lattice> own = std::exchange(m_lattice, {});
    if (size3D > 0) {
        releaseLattice(table, table == own.table ? own.size : size3D);
    }
}

void Read_LUTFile::release1D() {
    const Row table = std::exchange(data1D, nullptr);
    const Allocation<Row> own = std::exchange(m_curve, {});
    if (size1D > 0) {
        releaseRow(table, table == own.table ? own.size : size1D);
    }
}

void Read_LUTFile::Data3DCalloc(float***** table, int size) {
    if (size <= 0) {
        return;
    }
    if (Lattice const made = makeLattice(size)) {
        *table = made;
    }
}

void Read_LUTFile::Data1DCalloc(float*** table, int size) {
    if (size <= 0) {
        return;
    }
    if (Row const made = makeRow(size)) {
        *table = made;
    }
}

void Read_LUTFile::setSize3D(int size) {
    release3D();
    size3D = size;
}

void Read_LUTFile::setSize1D(int size) {
    release1D();
    size1D = size;
}

bool Read_LUTFile::allocate3D() {
    release3D();
    if (size3D < 1 || size3D > MaxSize3D) {
        return fail(outside("a lattice size", size3D, MaxSize3D));
    }
    Data3DCalloc(&data3D, size3D);
    m_lattice = {data3D, size3D};
    return data3D != nullptr || fail(QStringLiteral("not enough memory for the table"));
}

bool Read_LUTFile::allocate1D() {
    release1D();
    if (size1D < 1 || size1D > MaxSize1D) {
        return fail(outside("a length", size1D, MaxSize1D));
    }
    Data1DCalloc(&data1D, size1D);
    m_curve = {data1D, size1D};
    return data1D != nullptr || fail(QStringLiteral("not enough memory for the table"));
}

QString Read_LUTFile::formatStr(int code) {
    const tintwell::Format* const format = tintwell::formatOf(code);
    return format != nullptr ? QString::fromUtf8(format->label) : QString();
}

bool Read_LUTFile::formatIs3D(int code) {
    const tintwell::Format* const format = tintwell::formatOf(code);
    return format != nullptr && format->kind == tintwell::TableKind::ThreeD;
}

bool Read_LUTFile::ReadFile(LUTFILE_ST st, bool probe) try {
    if (!st.defaultOrder) {
        dataOrder = st.dataOrder;
        tableOrder = st.tableOrder;
    }
    defaultOrder = st.defaultOrder;
    qCDebug(formatTrace) << word(defaultOrder) << word(dataOrder) << word(tableOrder);

    const tintwell::Format* const format = tintwell::formatOf(st.formatCode);
    lastError.clear();
    remarks.clear();
    title.clear();
    sizeInferred = false;
    m_isUnfilled = false;
    m_statedMax3D.reset();
    m_statedMax1D.reset();
    m_odd3D = {};
    m_odd1D = {};
    if (format == nullptr) {
        return fail(QStringLiteral("there is no format with code %1").arg(st.formatCode));
    }
    const bool accepted = (this->*format->read)(st.path, probe);
    if (accepted && hasTable3D()) {
        remarkOnTable(*format, tintwell::TableKind::ThreeD);
    }
    if (accepted && hasTable1D()) {
        remarkOnTable(*format, tintwell::TableKind::OneD);
    }
    return accepted;
} catch (const std::bad_alloc&) {
    return fail(QStringLiteral("not enough memory for the file"));
}

bool Read_LUTFile::fail(const QString& what) {
    lastError = what;
    return false;
}

void Read_LUTFile::applyDefaultOrders(tintwell::FormatCode format) {
    if (defaultOrder) {
        const tintwell::Orders& own = formatOf(format).readerOrders;
        dataOrder = own.dataOrder;
        tableOrder = own.tableOrder;
    }
}

void Read_LUTFile::resetDomainMax3D() {
    resetEnd(domainMax3D, m_statedMax3D);
}

void Read_LUTFile::resetDomainMax1D() {
    resetEnd(domainMax1D, m_statedMax1D);
}

Read_LUTFile::DomainEnd Read_LUTFile::statedMax3D() const {
    return m_statedMax3D.value_or(copied(domainMax3D));
}

Read_LUTFile::DomainEnd Read_LUTFile::statedMax1D() const {
    return m_statedMax1D.value_or(copied(domainMax1D));
}
