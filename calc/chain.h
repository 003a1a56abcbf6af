#pragma once

#include "calc/lattice_rows.h"
#include "calc/look_up.h"
#include "calc/tables.h"
#include "lut/read_lutfile.h"

#include <vector>

namespace tintwell {

/// The effect of tables one after the other, each by its lattice or, if it has none, by its curves.
/// What is the same for all colours is computed once.
class Chain {
public:
    explicit Chain(Tables tables) {
        m_links.reserve(tables.size());
        for (const Read_LUTFile* const table : tables) {
            m_links.push_back({table, latticeAxes(*table)});
        }
    }

    /// Puts the result in the place of a colour.
    void apply(float* colour) const {
        for (const Link& link : m_links) {
            if (link.table->hasTable3D()) {
                evaluate(*link.table, link.axes, colour, colour);
            } else {
                lookUp1D(*link.table, colour, colour);
            }
        }
    }

private:
    struct Link {
        const Read_LUTFile* table;
        LatticeAxes axes;
    };

    std::vector<Link> m_links;
};

} // namespace tintwell
