#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tintwell {

/// The places of a table that lines of the file have named. Most files name all of them in order.
class FilledPlaces {
public:
    /// A table of \a all places.
    explicit FilledPlaces(std::int64_t all) : m_all(all) {}

    /// Takes a place from 0 to all - 1. False if it has been taken before.
    bool add(std::int64_t place) {
        if (place == m_count && m_isFilled.empty()) {
            ++m_count;
            return true;
        }
        return addOutOfOrder(static_cast<std::size_t>(place));
    }

    std::int64_t count() const { return m_count; }
    std::int64_t all() const { return m_all; }

private:
    bool addOutOfOrder(std::size_t place) {
        if (m_isFilled.empty()) {
            m_isFilled.resize(static_cast<std::size_t>(m_all));
            std::fill_n(m_isFilled.begin(), m_count, true);
        }
        if (m_isFilled[place]) {
            return false;
        }
        m_isFilled[place] = true;
        ++m_count;
        return true;
    }

    std::int64_t m_all;
    std::int64_t m_count = 0;
    std::vector<bool> m_isFilled; ///< empty as long as the places come in order
};

} // namespace tintwell
