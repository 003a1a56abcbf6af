#pragma once

#include <QString>

#include <cstdint>

/// One file to read or write: its path, its format and its orders.
struct LUTFILE_ST {
    QString path;                 ///< full path of the file
    std::int32_t formatCode = 0;  ///< position in the format catalogue, 0 to 16
    bool defaultOrder = true;     ///< let the format decide the two orders below
    bool dataOrder = true;        ///< channel order: true is RGB, false BGR
    bool tableOrder = true;       ///< lattice order: true is [i][j][k], false [k][j][i]
    std::int64_t outputScale = 1; ///< writers: below 2 real numbers, else integers of value x scale
    std::int32_t outSize3D = 0;   ///< requested lattice points per axis of the output
    std::int32_t reserved = 0;    ///< always 0
};
