#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tintwell {

/// Copies several planes of a kji lattice at once, so that each cache line is loaded once.
///
/// The points of a plane of equal i, (i, 0, 0) to (i, n - 1, n - 1), are scattered over the whole
/// of such a table, each next to those of the following planes. While planes are copied, rows
/// further on are prefetched.
class PlaneCopies {
public:
    /// \a data holds n x n x n cells.
    PlaneCopies(float**** data, int n) : m_data(data), m_size(static_cast<std::size_t>(n)) {}

    /// The samples of plane \a i, k fastest; valid until a later plane is requested. Planes must be
    /// requested in order.
    const float* plane(int i) {
        const std::size_t place = static_cast<std::size_t>(i) % PlanesAtOnce;
        if (place == 0) {
            copyFrom(static_cast<std::size_t>(i));
        }
        return &m_samples[place * planeLength()];
    }

private:
    static constexpr std::size_t PlanesAtOnce = 16;
    static constexpr std::size_t RowsAhead = 6;

    std::size_t planeLength() const { return 3 * m_size * m_size; }

    void copyFrom(std::size_t first) {
        const std::size_t planes = std::min(PlanesAtOnce, m_size - first);
        m_samples.resize(planes * planeLength());
        for (std::size_t k = 0; k < m_size; ++k) {
            for (std::size_t j = 0; j < m_size; ++j) {
                prefetchCells(k, j + RowsAhead, first, planes);
                copyRow(m_data[k][j] + first, planes, &m_samples[3 * (j * m_size + k)]);
            }
        }
    }

    void prefetchCells(std::size_t k, std::size_t j, std::size_t first, std::size_t planes) const {
        constexpr std::size_t cellsPerCacheLine = 2; // the allocator uses 32 bytes for each
        for (std::size_t i = 0; j < m_size && i < planes; i += cellsPerCacheLine) {
            __builtin_prefetch(m_data[k][j][first + i]);
        }
    }

    /// Neighbours in the table, each copied to a plane of its own.
    void copyRow(const float* const* cells, std::size_t planes, float* sample) const {
        for (std::size_t i = 0; i < planes; ++i) {
            sample[0] = cells[i][0];
            sample[1] = cells[i][1];
            sample[2] = cells[i][2];
            sample += planeLength();
        }
    }

    float**** m_data;
    std::size_t m_size;
    std::vector<float> m_samples;
};

} // namespace tintwell
