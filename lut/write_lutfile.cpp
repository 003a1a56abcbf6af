#include "lut/write_lutfile.h"

#include "lut/catalogue.h"

#include <algorithm>
#include <new>

Write_LUTFile::Write_LUTFile(QObject* parent) : QObject(parent) {}

bool Write_LUTFile::WriteFile(LUTFILE_ST st, Read_LUTFile& lut) try {
    dataOrder = st.dataOrder;
    tableOrder = st.tableOrder;
    defaultOrder = st.defaultOrder;
    outputScale = st.outputScale;

    lastError.clear();
    const tintwell::Format* const format = tintwell::formatOf(st.formatCode);
    if (format == nullptr || format->write == nullptr) {
        lastError = QStringLiteral("there is no writer for format code %1").arg(st.formatCode);
        return false;
    }
    return (this->*format->write)(st.path, lut);
} catch (const std::bad_alloc&) {
    lastError = QStringLiteral("not enough memory for the table");
    return false;
}

void Write_LUTFile::forceRealNumbers() {
    outputScale = std::min<std::int64_t>(outputScale, 1);
}

void Write_LUTFile::applyDefaultOrders(tintwell::FormatCode format) {
    if (defaultOrder) {
        const tintwell::Orders& own = formatOf(format).writerOrders;
        dataOrder = own.dataOrder;
        tableOrder = own.tableOrder;
    }
}
