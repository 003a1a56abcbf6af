#pragma once

#include "cli/command.h"
#include "lut/catalogue.h"
#include "lut/lutfile_st.h"

#include <optional>

namespace cli {

/// The order of a file's channels and lattice points; that of its format where not set.
struct Orders {
    std::optional<bool> rgb;         ///< the three numbers of a sample are R, G, B; else B, G, R
    std::optional<bool> blueFastest; ///< neighbouring samples differ in blue; else in red
};

/// The orders that an option names: "bgr", "red-fastest", or one of each with a comma between them.
/// None, with wrong usage reported, for any other words.
std::optional<Orders> ordersOption(const CommandLine& line, const char* option);

/// Requests these orders, and the format's \a own where they are not set.
void setOrders(LUTFILE_ST& st, const Orders& orders, const tintwell::Orders& own);

} // namespace cli
