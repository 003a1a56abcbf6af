#include "samples.h"

#include <QDir>
#include <QRegularExpression>

namespace {

/// What sets a format apart from the others, beside its syntax.
struct Traits {
    int code;
    const char* sample;    ///< in tests/data
    bool tableOrder;       ///< the reader's own; its channel order is RGB everywhere
    bool writerTableOrder; ///< the writer's own, likewise
    bool lacksLast;        ///< passes without its last line
    bool lacksTwo;         ///< passes without its last two lines
};

// clang-format off
const Traits formats[] = {
    {0, "sample.cube", false, false, true, false},
    {1, "texture.png", false, true, false, false},
    {2, "unwrapped.png", false, true, true, true},
    {3, "sample.3dl", true, true, true, false},
    {4, "sample.mga", true, true, true, false},
    {5, "sample.look", false, true, true, true},
    {6, "sample_discreet.lut", true, true, true, true},
    {7, "sample_plain.lut", true, true, true, false},
    {8, "sample.davlut", true, true, true, false},
    {9, "sample.csp", false, true, true, false},
    {10, "sample.cub", false, true, true, false},
    {11, "sample.itx", false, false, true, false},
    {12, "sample.spi1d", false, true, true, false},
    {13, "sample.spi3d", true, true, true, true},
    {14, "sample.csv", true, true, true, true},
    {15, "sample.nvx1d", true, true, false, false},
    {16, "sample.nvx3d", true, true, true, true},
};
// clang-format on

QString sampleOf(const Traits& format) {
    return QDir(QStringLiteral(TINTWELL_TEST_DATA)).filePath(QLatin1String(format.sample));
}

QByteArray contentOf(const Traits& format) {
    QFile file(sampleOf(format));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool isImage(const Traits& format) {
    return QByteArray(format.sample).endsWith(".png");
}

/// Reads every cell, so that the sanitizers see a table that is smaller than it says.
float sum(const Read_LUTFile& lut) {
    float total = 0;
    for (int i = 0; lut.data3D != nullptr && i < lut.size3D; ++i) {
        for (int j = 0; j < lut.size3D; ++j) {
            for (int k = 0; k < lut.size3D; ++k) {
                total += lut.data3D[i][j][k][0] + lut.data3D[i][j][k][2];
            }
        }
    }
    for (int n = 0; lut.data1D != nullptr && n < lut.size1D; ++n) {
        total += lut.data1D[n][0] + lut.data1D[n][2];
    }
    return total;
}

} // namespace

class TestAllFormats : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    void addFormats() {
        QTest::addColumn<int>("row");
        for (int row = 0; row < int(std::size(formats)); ++row) {
            QTest::newRow(formats[row].sample) << row;
        }
    }

    /// Any result will do, but a whole one.
    bool survives(const QByteArray& content, int code) {
        bool read = false;
        for (const bool probe : {true, false}) {
            Read_LUTFile lut(nullptr);
            read = lut.ReadFile(
                samples::request(m_folder.file(QStringLiteral("broken"), content), code), probe);
            if (!read && lut.lastError.isEmpty()) {
                qFatal("a reader does not say why it failed");
            }
            static_cast<void>(sum(lut));
        }
        return read;
    }

private Q_SLOTS:
    void samplesRead_data() { addFormats(); }
    void samplesRead() {
        QFETCH(int, row);
        const Traits& format = formats[row];
        QCOMPARE(format.code, row);

        Read_LUTFile lut(nullptr);
        QVERIFY(lut.ReadFile(samples::request(sampleOf(format), row), false));
        QVERIFY(lut.dataOrder);
        QCOMPARE(lut.tableOrder, format.tableOrder);
        QCOMPARE(lut.size3D > 0 && lut.data3D != nullptr, Read_LUTFile::formatIs3D(row));
        QVERIFY(sum(lut) > 0);
        QVERIFY(lut.domainMax3D[0] > 0 && lut.domainMax1D[2] == 1);

        Read_LUTFile asAsked(nullptr);
        QVERIFY(asAsked.ReadFile(samples::request(sampleOf(format), row, false, false), false));
        QVERIFY(!asAsked.dataOrder && !asAsked.tableOrder);

        Read_LUTFile probed(nullptr);
        QVERIFY(probed.ReadFile(samples::request(sampleOf(format), row), true));
        QVERIFY(probed.data3D == nullptr && probed.data1D == nullptr);
        QCOMPARE(probed.size3D, lut.size3D);
        QCOMPARE(probed.size1D, lut.size1D);
        QCOMPARE(probed.tableOrder, format.tableOrder);

        Read_LUTFile none(nullptr);
        const QString missing = m_folder.path(QStringLiteral("missing"));
        const bool passes = row == 2; // a side of nothing is the square of a side of nothing
        QCOMPARE(none.ReadFile(samples::request(missing, row), false), passes);
        QCOMPARE(none.ReadFile(samples::request(m_folder.path(QString()), row), true), passes);
    }

    void writersApplyTheirOrders_data() { addFormats(); }
    void writersApplyTheirOrders() {
        QFETCH(int, row);
        Read_LUTFile lut(nullptr);
        QVERIFY(lut.ReadFile(samples::request(sampleOf(formats[row]), row), false));
        const QString target = m_folder.path(QStringLiteral("out%1").arg(row));
        for (const bool defaultOrder : {true, false}) {
            LUTFILE_ST st = samples::request(target, row, false, false);
            st.defaultOrder = defaultOrder;
            Write_LUTFile writer(nullptr);
            if (!writer.WriteFile(st, lut)) {
                QVERIFY(!QFile::exists(target));
                return;
            }
            QCOMPARE(writer.dataOrder, defaultOrder);
            QCOMPARE(writer.tableOrder, defaultOrder && formats[row].writerTableOrder);
        }
        LUTFILE_ST st = samples::request(m_folder.path(QStringLiteral("no/folder")), row);
        QVERIFY(!Write_LUTFile(nullptr).WriteFile(st, lut));
        const Read_LUTFile empty(nullptr);
        st.path = target;
        QVERIFY(Write_LUTFile(nullptr).WriteFile(st, const_cast<Read_LUTFile&>(empty)));
    }

    void shortFiles_data() { addFormats(); }
    void shortFiles() {
        QFETCH(int, row);
        const Traits& format = formats[row];
        if (isImage(format)) {
            return;
        }
        QByteArrayList lines = contentOf(format).trimmed().split('\n');
        while (QRegularExpression(QStringLiteral("^\\s*[#}]")).match(lines.last()).hasMatch()) {
            lines.removeLast(); // what closes the file
        }
        lines.removeLast();
        QCOMPARE(survives(lines.join('\n') + '\n', row), format.lacksLast);
        lines.removeLast();
        QCOMPARE(survives(lines.join('\n') + '\n', row), format.lacksTwo);
    }

    void brokenFilesAreSurvived_data() { addFormats(); }
    void brokenFilesAreSurvived() {
        QFETCH(int, row);
        const QByteArray content = contentOf(formats[row]);
        const int step = isImage(formats[row]) ? content.size() / 40 + 1 : content.size() / 700 + 1;
        for (int length = 0; length < content.size(); length += step) {
            survives(content.left(length), row);
        }
        if (isImage(formats[row])) {
            for (int at = 0; at < content.size(); at += step) {
                QByteArray flipped = content;
                flipped[at] = static_cast<char>(~flipped[at]);
                survives(flipped, row);
            }
            return;
        }
        const QByteArrayList lines = content.split('\n');
        const QByteArrayList noises = {"",
                                       "noise",
                                       "-1",
                                       "99999999999",
                                       "1e999 nan -inf",
                                       "0x10 0X1.8p1 1",
                                       "# #",
                                       QByteArray("\0\xff\xfe", 3),
                                       QByteArray("7 ").repeated(300)};
        const int lineStep = lines.size() / 60 + 1;
        for (int n = 0; n < lines.size(); n += n < 20 ? 1 : lineStep) {
            QByteArrayList changed = lines;
            changed.removeAt(n);
            survives(changed.join('\n'), row);
            changed = lines;
            changed.insert(n, lines[n]);
            survives(changed.join('\n'), row);
            for (const QByteArray& noise : noises) {
                changed[n] = noise;
                survives(changed.join('\n'), row);
            }
            for (const char* number : {"0", "-3", "257", "4294967298", "x"}) { // in a keyword line
                changed[n] = QString::fromLatin1(lines[n])
                                 .replace(QRegularExpression(QStringLiteral("\\d+")), number)
                                 .toLatin1();
                survives(changed.join('\n'), row);
            }
        }
    }

    /// The README's table says what the catalogue says.
    void readmeListsTheCatalogue() {
        QFile readme(QStringLiteral(TINTWELL_TEST_DATA "/../../README.md"));
        QVERIFY(readme.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(readme.readAll());
        Read_LUTFile lut(nullptr);
        for (int code = 0; code < 17; ++code) {
            const bool writes = Write_LUTFile(nullptr).WriteFile(
                samples::request(m_folder.path(QStringLiteral("any")), code), lut);
            const QString row =
                QStringLiteral("| %1 | %2 | %3 | yes | %4 |")
                    .arg(code)
                    .arg(Read_LUTFile::formatStr(code),
                         Read_LUTFile::formatIs3D(code) ? "3D" : "1D", writes ? "yes" : "no");
            QVERIFY2(text.contains(row), qPrintable(row));
        }
    }
};

QTEST_GUILESS_MAIN(TestAllFormats)
#include "test_all_formats.moc"
