#include "cli/orders.h"

#include <QStringList>

namespace cli {

namespace {

/// None if the words do not name orders.
std::optional<Orders> ordersByName(const QString& text) {
    Orders orders;
    for (const QString& word : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        if (word == QLatin1String("rgb") || word == QLatin1String("bgr")) {
            orders.rgb = word.front() == QLatin1Char('r');
        } else if (word == QLatin1String("blue-fastest") || word == QLatin1String("red-fastest")) {
            orders.blueFastest = word.front() == QLatin1Char('b');
        } else {
            return std::nullopt;
        }
    }
    return orders;
}

} // namespace

std::optional<Orders> ordersOption(const CommandLine& line, const char* option) {
    const QString text = line.value(option).value_or(QString());
    const std::optional<Orders> orders = ordersByName(text);
    if (!orders) {
        line.wrong(QStringLiteral("found --%1 %2, expected rgb, bgr, red-fastest, blue-fastest, or "
                                  "one of each pair with a comma")
                       .arg(QLatin1String(option), text));
    }
    return orders;
}

void setOrders(LUTFILE_ST& st, const Orders& orders, const tintwell::Orders& own) {
    st.defaultOrder = !orders.rgb && !orders.blueFastest;
    st.dataOrder = orders.rgb.value_or(own.dataOrder);
    st.tableOrder = orders.blueFastest.value_or(own.tableOrder);
}

} // namespace cli
