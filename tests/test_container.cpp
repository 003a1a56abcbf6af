#include "format_samples.h"
#include "samples.h"

class TestContainer : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

private Q_SLOTS:
    void allocationIsZeroFilledAndBounded() {
        float**** lattice = nullptr;
        float** curve = nullptr;
        Read_LUTFile::Data3DCalloc(&lattice, 0);
        Read_LUTFile::Data1DCalloc(&curve, -1);
        QVERIFY(lattice == nullptr && curve == nullptr);
        Read_LUTFile lut(nullptr);
        QVERIFY(lut.dataOrder && lut.tableOrder);
        samples::fillRandom(lut, 3, 1);
        lut.size1D = Read_LUTFile::MaxSize1D;
        QVERIFY(lut.allocate3D() && lut.allocate1D()); // replacing the lattice
        QCOMPARE(samples::cell(lut.data3D[2][1][0]), QVector<float>({0, 0, 0}));
        lut.setSize3D(Read_LUTFile::MaxSize3D + 1);
        lut.setSize1D(Read_LUTFile::MaxSize1D + 1);
        QVERIFY(!lut.allocate3D() && !lut.allocate1D());
    }

    void refusesUnknownCodesAndMissingTables() {
        const QString path = m_folder.file(QStringLiteral("a.cube"), "LUT_3D_SIZE 2\n");
        const QString target = m_folder.path(QStringLiteral("b"));
        Read_LUTFile lut(nullptr);
        Write_LUTFile writer(nullptr);
        for (const int code : {-1, tintwell::formatCount}) {
            QVERIFY(Read_LUTFile::formatStr(code).isEmpty() && !Read_LUTFile::formatIs3D(code));
            QVERIFY(!lut.ReadFile(samples::request(path, code), true));
            QVERIFY(!writer.WriteFile(samples::request(target, code), lut));
        }
        QCOMPARE(Read_LUTFile::formatStr(15), QString::fromUtf8(".nvx1d norvane专用格式1D"));
        lut.size1D = lut.size3D = 3; // as after a probe
        for (int code = 0; code < tintwell::formatCount; ++code) {
            QVERIFY(!writer.WriteFile(samples::request(target, code), lut));
            QVERIFY(!writer.lastError.isEmpty());
        }
        lut.size1D = lut.size3D = 0;
        QVERIFY(!QFile::exists(target));
        QVERIFY(writer.WriteFile(samples::request(target, 0), lut));
        QVERIFY(writer.lastError.isEmpty());
    }

    /// The container frees everything it holds and keeps no trace of it. Checked by the sanitizer.
    void tablesLeaveTheContainer() {
        Read_LUTFile owner(nullptr);
        for (const int size : {9, 2, 5}) { // often at the same address
            Read_LUTFile lut(nullptr);
            lut.setSize3D(size + 3);
            QVERIFY(lut.allocate3D());
            lut.setSize3D(0);
            Read_LUTFile::Data3DCalloc(&lut.data3D, size);
            lut.size3D = size;
            lut.data3D[size - 1][size - 1][size - 1][2] = 1;
            if (size == 5) {
                owner.data3D = lut.data3D;
                owner.size3D = size;
                lut.size3D = 0; // not its own any more
            }
        }
        QCOMPARE(owner.data3D[4][4][4][2], 1.0F);
    }
};

QTEST_GUILESS_MAIN(TestContainer)
#include "test_container.moc"
