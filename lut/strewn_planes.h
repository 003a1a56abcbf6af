#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tintwell {

/// The planes of a kji table, whose points (i, 0, 0) to (i, n - 1, n - 1) are strewn over all of
/// it, each beside those of the planes to come. So several planes are copied at a time: that meets
/// every place once for all of them, and places to come can be asked for ahead.
class StrewnPlanes {
public:
    /// \a data holds n x n x n cells.
    StrewnPlanes(float**** data, int n) : m_data(data), m_size(static_cast<std::size_t>(n)) {}

    /// The samples of plane \a i, k fastest, until a later plane is asked for. Planes are asked for
    /// one after the other.
    const float* copyOf(int i) {
        const std::size_t plane = static_cast<std::size_t>(i) % AtATime;
        if (plane == 0) {
            copyFrom(static_cast<std::size_t>(i));
        }
        return &m_samples[plane * planeLength()];
    }

private:
    static constexpr std::size_t AtATime = 16;
    static constexpr std::size_t RowsAhead = 6;

    std::size_t planeLength() const { return 3 * m_size * m_size; }

    void copyFrom(std::size_t first) {
        const std::size_t planes = std::min(AtATime, m_size - first);
        m_samples.resize(planes * planeLength());
        for (std::size_t k = 0; k < m_size; ++k) {
            for (std::size_t j = 0; j < m_size; ++j) {
                askForRow(k, j + RowsAhead, first, planes);
                copyRow(m_data[k][j] + first, planes, &m_samples[3 * (j * m_size + k)]);
            }
        }
    }

    void askForRow(std::size_t k, std::size_t j, std::size_t first, std::size_t planes) const {
        constexpr std::size_t cellsPerCacheLine = 2; // the allocator gives each 32 bytes
        for (std::size_t i = 0; j < m_size && i < planes; i += cellsPerCacheLine) {
            __builtin_prefetch(m_data[k][j][first + i]);
        }
    }

    /// Neighbours in the table, each into a plane of its own.
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
