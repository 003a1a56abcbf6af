#pragma once

#include "lut/lutfile_st.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <array>
#include <cfloat>
#include <cstdint>
#include <optional>

static_assert(FLT_EVAL_METHOD == 0, "Tables need float to be computed as float, on 32-bit x86 with "
                                    "-msse2 -mfpmath=sse.");

namespace tintwell {
enum class FormatCode : int;
enum class TableKind;
struct Format;
} // namespace tintwell

namespace tintwell {

/// The numbers of a table that could not be stored as they are.
struct OddNumbers {
    std::int64_t clamped = 0;   ///< finite numbers outside the domain
    float least = 0;            ///< of those
    float largest = 0;          ///< of those
    std::int64_t nonFinite = 0; ///< NaN and infinities
    int copies = 1;             ///< how often each number of the file is counted

    /// Clamps and divides a number for storing, and counts it if it is odd.
    float normalised(float value, float min, float max);
};

} // namespace tintwell

/// The colour look-up table in memory: at most one 3D and one 1D table, each with its input domain,
/// and the two order flags that decide how samples are stored.
///
/// Every reader fills a container; every computation and every writer works on one. It owns its
/// tables and frees them. A container is good for one read.
class Read_LUTFile : public QObject {
    Q_OBJECT

public:
    /// The largest lattice (points per axis) that a full read accepts; a probe reports any size.
    static constexpr int MaxSize3D = 256;
    /// The longest 1D table (entries) that a full read accepts; a probe reports any length.
    static constexpr int MaxSize1D = 1 << 20;

    /// The upper end of a domain (R, G, B).
    using DomainEnd = std::array<float, 3>;

    float domainMin3D[3] = {0, 0, 0}; ///< lower end of the 3D input domain (R, G, B)
    float domainMax3D[3] = {1, 1, 1}; ///< upper end of the 3D input domain (R, G, B)
    float**** data3D = nullptr;       ///< data3D[a][b][c] is a cell of three floats
    int size3D = 0;                   ///< lattice points per axis; 0: no 3D table
    float domainMin1D[3] = {0, 0, 0}; ///< lower end of the 1D input domain (R, G, B)
    float domainMax1D[3] = {1, 1, 1}; ///< upper end of the 1D input domain (R, G, B)
    float** data1D = nullptr;         ///< data1D[n] is a cell of three floats
    int size1D = 0;                   ///< entries of the 1D table; 0: no 1D table
    double shaperIn[256] = {};        ///< 3dl: input positions, divided by the largest of them
    double gamma = 1.0;               ///< 3dl: the value of the file's gamma line
    bool dataOrder = true;            ///< true: cells hold R, G, B; false: B, G, R
    bool tableOrder = true;    ///< true: (i, j, k) is data3D[i][j][k]; false: data3D[k][j][i]
    bool defaultOrder = false; ///< readers replace both orders by their format's own pair
    bool meshHeader = false;   ///< cube: the file declared integer samples by a Mesh line
    bool sizeInferred = false; ///< cube: no line states the size; the number of lines gave it
    QString title; ///< cube, csp: the title or metadata of the file, cut to a hundred characters
    /// Why the last read failed: "LINE: what", or "what" if no line is to blame.
    QString lastError;
    /// What the last read had to alter, complete or ignore in a file that it accepted, worded like
    /// `lastError`; empty if nothing. Readers tell of lines and keywords, and ReadFile() of what
    /// became of the samples.
    QStringList remarks;

    explicit Read_LUTFile(QObject* parent);
    ~Read_LUTFile() override;

    /// Allocates a zero-filled table of \a size points per axis and stores it in \a *table, which
    /// is unchanged if \a size is below 1 or memory runs out. The caller must set `size3D`.
    static void Data3DCalloc(float***** table, int size);
    /// Allocates a zero-filled table of \a size entries and stores it in \a *table, which is
    /// unchanged if \a size is below 1 or memory runs out. The caller must set `size1D`.
    static void Data1DCalloc(float*** table, int size);

    /// Sets the size of a table that is still to be allocated. A table of the previous size is
    /// freed; a table whose size had been set to 0 belongs to somebody else and is kept.
    void setSize3D(int size);
    void setSize1D(int size);
    /// Allocates a zero-filled 3D table of `size3D` points per axis, replacing any the container
    /// had. False, with no table, if the size is outside 1..MaxSize3D or memory runs out.
    bool allocate3D();
    /// The same for a 1D table of `size1D` entries, at most MaxSize1D.
    bool allocate1D();

    /// Stores one 3D sample: each channel is clamped to [min, max] and divided by max - min (the
    /// minimum is not subtracted), then stored in the place given by the two order flags. \a min
    /// and \a max are three floats. The table must contain (i, j, k).
    void White3D(int i, int j, int k, float r, float g, float b, const float* min,
                 const float* max);
    /// Stores one 1D sample, clamped and divided in the same way. A 1D table has no lattice order:
    /// the cell holds R, G, B if both flags are equal, and B, G, R if they differ.
    void White1D(int i, float r, float g, float b, const float* min, const float* max);

    /// The label of a format code; empty outside 0..16.
    static QString formatStr(int code);
    /// Whether a format code is a 3D format; false outside 0..16.
    static bool formatIs3D(int code);

    /// Fills this fresh container from \a st.path in the format \a st.formatCode. With \a probe
    /// only the header is read: sizes and domain, no table. False if the code is unknown, the file
    /// cannot be opened, or the format does not accept its content.
    bool ReadFile(LUTFILE_ST st, bool probe);

    // One reader per format, each in its own source file under formats/.
    bool Read_Cube(QString path, bool probe);
    bool Read_Texture(QString path, bool probe);
    bool Read_IUC(QString path, bool probe);
    bool Read_3dl(QString path, bool probe);
    bool Read_Mga(QString path, bool probe);
    bool Read_Look(QString path, bool probe);
    bool Read_1dLut_Discreet(QString path, bool probe);
    bool Read_1dLut(QString path, bool probe);
    bool Read_DavLut(QString path, bool probe);
    bool Read_Csp(QString path, bool probe);
    bool Read_Cub(QString path, bool probe);
    bool Read_Itx(QString path, bool probe);
    bool Read_Spi1D(QString path, bool probe);
    bool Read_Spi3D(QString path, bool probe);
    bool Read_Csv(QString path, bool probe);
    bool Read_NVX1D(QString path, bool probe);
    bool Read_NVX3D(QString path, bool probe);

    /// Whether a size of either kind is known, which is what most readers return.
    bool hasSize() const { return size3D > 0 || size1D > 0; }
    /// Whether there is a table of a kind. After a probe there is only its size.
    bool hasTable3D() const { return size3D > 0 && data3D != nullptr; }
    bool hasTable1D() const { return size1D > 0 && data1D != nullptr; }

    /// Whether the last read found no sample at all and left its table black.
    bool isUnfilled() const { return m_isUnfilled; }

    /// The upper end of the domain that the last file stated, although the container's is 1 again.
    DomainEnd statedMax3D() const;
    DomainEnd statedMax1D() const;

    // Shared by the readers.

    /// Sets `lastError`. Returns false, which the reader returns in turn.
    bool fail(const QString& what);
    /// The first step of a reader: with `defaultOrder` set, sets the format's own pair of orders.
    void applyDefaultOrders(tintwell::FormatCode format);
    /// The last step of a reader: stored samples are normalised, so the upper end of the domain is
    /// set back to 1.
    void resetDomainMax3D();
    void resetDomainMax1D();
    /// For a reader that stores each number of the file in \a channels channels of the 1D table:
    /// the remarks count it once.
    void tellNumbersOnce1D(int channels) { m_odd1D.copies = channels; }
    /// Adds the remark that only \a found of \a expected samples are in the file, if they are
    /// fewer.
    void remarkMissing(std::int64_t found, std::int64_t expected);
    /// Adds the remark that a table is black because the file has no samples for it.
    void remarkUnfilled(const QString& why);

private:
    /// Adds the remarks on the domain and the samples of a table that has been read.
    void remarkOnTable(const tintwell::Format& format, tintwell::TableKind kind);

    /// A table that this container has allocated and still owns, and the size it was allocated
    /// with: `size3D` and `size1D` may have changed since.
    template <typename Table>
    struct Allocation {
        Table table = nullptr;
        int size = 0;
    };

    void release3D();
    void release1D();

    Allocation<float****> m_lattice;
    Allocation<float**> m_curve;
    std::optional<DomainEnd> m_statedMax3D; ///< none: it was not set back
    std::optional<DomainEnd> m_statedMax1D;
    tintwell::OddNumbers m_odd3D;
    tintwell::OddNumbers m_odd1D;
    bool m_isUnfilled = false;
};

namespace tintwell {

inline void fillCell(float* cell, bool rgb, float r, float g, float b) {
    cell[0] = rgb ? r : b;
    cell[1] = g;
    cell[2] = rgb ? b : r;
}

/// The store of both kinds of table, and the innermost loop of every reader: what lies inside the
/// domain, as nearly all does, is only divided.
inline void storeSample(float* cell, bool rgb, float r, float g, float b, const float* min,
                        const float* max, OddNumbers& odd) {
    if (r >= min[0] && r <= max[0] && g >= min[1] && g <= max[1] && b >= min[2] && b <= max[2]) {
        fillCell(cell, rgb, r / (max[0] - min[0]), g / (max[1] - min[1]), b / (max[2] - min[2]));
    } else {
        fillCell(cell, rgb, odd.normalised(r, min[0], max[0]), odd.normalised(g, min[1], max[1]),
                 odd.normalised(b, min[2], max[2]));
    }
}

} // namespace tintwell

inline void Read_LUTFile::White3D(int i, int j, int k, float r, float g, float b, const float* min,
                                  const float* max) {
    float* const cell = tableOrder ? data3D[i][j][k] : data3D[k][j][i];
    tintwell::storeSample(cell, dataOrder, r, g, b, min, max, m_odd3D);
}

inline void Read_LUTFile::White1D(int i, float r, float g, float b, const float* min,
                                  const float* max) {
    tintwell::storeSample(data1D[i], dataOrder == tableOrder, r, g, b, min, max, m_odd1D);
}
