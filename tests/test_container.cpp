#include "calc/lutcalc.h"
#include "lut/catalogue.h"
#include "samples.h"

#include <cmath>

class TestContainer : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startsEmpty() {
        const Read_LUTFile lut(nullptr);
        QVERIFY(lut.data3D == nullptr && lut.data1D == nullptr);
        QCOMPARE(lut.size3D + lut.size1D, 0);
        QVERIFY(lut.dataOrder && lut.tableOrder && !lut.meshHeader);
        QCOMPARE(lut.gamma, 1.0);
        QCOMPARE(samples::cell(lut.domainMin3D), QVector<float>({0, 0, 0}));
        QCOMPARE(samples::cell(lut.domainMax1D), QVector<float>({1, 1, 1}));
    }

    void allocationIsZeroFilledAndBounded() {
        float**** lattice = nullptr;
        float** curve = nullptr;
        Read_LUTFile::Data3DCalloc(&lattice, 0);
        Read_LUTFile::Data1DCalloc(&curve, -1);
        QVERIFY(lattice == nullptr && curve == nullptr);

        Read_LUTFile lut(nullptr);
        Read_LUTFile::Data3DCalloc(&lut.data3D, 3);
        QCOMPARE(lut.size3D, 0);
        lut.size3D = 3;
        QCOMPARE(samples::cell(lut.data3D[2][1][0]), QVector<float>({0, 0, 0}));
        lut.data3D[2][2][2][2] = 1;
        QVERIFY(lut.allocate3D()); // replacing the previous table
        QCOMPARE(lut.data3D[2][2][2][2], 0.0F);

        Read_LUTFile large(nullptr);
        large.size3D = Read_LUTFile::MaxSize3D + 1;
        large.size1D = Read_LUTFile::MaxSize1D + 1;
        QVERIFY(!large.allocate3D() && !large.allocate1D());
        large.size1D = Read_LUTFile::MaxSize1D;
        QVERIFY(large.allocate1D());
    }

    void storesClampedAndDivided_data() {
        QTest::addColumn<float>("value");
        QTest::addColumn<float>("min");
        QTest::addColumn<float>("max");
        QTest::addColumn<float>("stored");
        QTest::newRow("inside") << 0.25F << 0.0F << 1.0F << 0.25F;
        QTest::newRow("codes") << 512.0F << 0.0F << 1024.0F << 0.5F;
        QTest::newRow("minimum not subtracted") << 0.75F << 0.5F << 1.0F << 1.5F;
        QTest::newRow("below") << -3.0F << 0.5F << 1.0F << 1.0F;
        QTest::newRow("above") << 9.0F << 0.5F << 1.0F << 2.0F;
        QTest::newRow("negative domain") << -2.0F << -1.0F << 3.0F << -0.25F;
    }
    void storesClampedAndDivided() {
        QFETCH(float, value);
        QFETCH(float, min);
        QFETCH(float, max);
        QFETCH(float, stored);
        const float mins[] = {min, 0, 0};
        const float maxs[] = {max, 1, 1};
        Read_LUTFile lut(nullptr);
        lut.size3D = lut.size1D = 1;
        QVERIFY(lut.allocate3D() && lut.allocate1D());
        lut.White3D(0, 0, 0, value, 0.5F, NAN, mins, maxs);
        lut.White1D(0, value, 0.5F, NAN, mins, maxs);
        QCOMPARE(lut.data3D[0][0][0][0], stored);
        QCOMPARE(lut.data1D[0][0], stored);
        QCOMPARE(lut.data3D[0][0][0][1], 0.5F);
        QVERIFY(std::isnan(lut.data3D[0][0][0][2]) && std::isnan(lut.data1D[0][2]));
    }

    void flagsPlaceSamples_data() {
        QTest::addColumn<bool>("dataOrder");
        QTest::addColumn<bool>("tableOrder");
        QTest::newRow("RGB, ijk") << true << true;
        QTest::newRow("BGR, ijk") << false << true;
        QTest::newRow("RGB, kji") << true << false;
        QTest::newRow("BGR, kji") << false << false;
    }
    void flagsPlaceSamples() {
        QFETCH(bool, dataOrder);
        QFETCH(bool, tableOrder);
        Read_LUTFile lut(nullptr);
        lut.dataOrder = dataOrder;
        lut.tableOrder = tableOrder;
        lut.size3D = 4;
        lut.size1D = 4;
        QVERIFY(lut.allocate3D() && lut.allocate1D());
        lut.White3D(1, 2, 3, 0.1F, 0.2F, 0.3F, lut.domainMin3D, lut.domainMax3D);
        lut.White1D(3, 0.1F, 0.2F, 0.3F, lut.domainMin1D, lut.domainMax1D);

        const QVector<float> rgb = {0.1F, 0.2F, 0.3F};
        const QVector<float> bgr = {0.3F, 0.2F, 0.1F};
        const float* const stored = tableOrder ? lut.data3D[1][2][3] : lut.data3D[3][2][1];
        QCOMPARE(samples::cell(stored), dataOrder ? rgb : bgr);
        // A curve has no lattice order: the two flags decide together.
        QCOMPARE(samples::cell(lut.data1D[3]), dataOrder == tableOrder ? rgb : bgr);
    }

    void catalogueOutside() {
        QCOMPARE(Read_LUTFile::formatStr(0), QStringLiteral(".cube"));
        QCOMPARE(Read_LUTFile::formatStr(15), QString::fromUtf8(".nvx1d norvane专用格式1D"));
        for (const int code : {-1, tintwell::formatCount, 1 << 20}) {
            QVERIFY(Read_LUTFile::formatStr(code).isEmpty());
            QVERIFY(!Read_LUTFile::formatIs3D(code));
        }
    }

    void dispatchRefusesUnknownCodes() {
        const samples::Folder folder;
        const QString path = folder.file(QStringLiteral("a.cube"), "LUT_3D_SIZE 2\n");
        const QString target = folder.path(QStringLiteral("b"));
        Read_LUTFile lut(nullptr);
        Write_LUTFile writer(nullptr);
        for (const int code : {-1, tintwell::formatCount}) {
            QVERIFY(!lut.ReadFile(samples::request(path, code), true));
            QVERIFY(!writer.WriteFile(samples::request(target, code), lut));
        }
        for (const int code : {1, 2, 3, 5, 9, 10}) {
            QVERIFY(!writer.WriteFile(samples::request(target, code), lut));
        }
        lut.size1D = lut.size3D = 3; // as after a probe
        for (const int code : {0, 4, 6, 7, 8, 11, 12, 13, 14, 15, 16}) {
            QVERIFY(!writer.WriteFile(samples::request(target, code), lut));
        }
        QVERIFY(!writer.Write_1dLut(target, lut) && !writer.Write_Cube(target, lut));
        LutCalc().Lut3D_OnebyOne(lut);
        LutCalc().Lut1D_OnebyOne(lut);
        lut.size1D = lut.size3D = 0;
        QVERIFY(!QFile::exists(target));
        QVERIFY(writer.WriteFile(samples::request(target, 0), lut)); // with only the 3D table
    }

    /// The container frees everything it holds and keeps no trace of it. Checked by the sanitizer.
    void tablesLeaveTheContainer() {
        float**** taken = nullptr;
        for (const int size : {9, 2, 5}) { // often at the same address
            Read_LUTFile lut(nullptr);
            lut.setSize3D(size + 3);
            QVERIFY(lut.allocate3D());
            lut.setSize3D(0);
            Read_LUTFile::Data3DCalloc(&lut.data3D, size);
            lut.size3D = size;
            lut.data3D[size - 1][size - 1][size - 1][2] = 1;
            if (size == 5) {
                taken = lut.data3D;
                lut.size3D = 0;
            }
        }
        Read_LUTFile owner(nullptr);
        owner.data3D = taken;
        owner.size3D = 5;
        QCOMPARE(owner.data3D[4][4][4][2], 1.0F);
    }

    void tablesOfAnEarlierReadAreReleased() {
        const samples::Folder folder;
        Read_LUTFile lut(nullptr);
        for (const int size : {2, 5}) {
            const QByteArray text = "LUT_3D_SIZE " + QByteArray::number(size) + "\nLUT_1D_SIZE " +
                                    QByteArray::number(size) + '\n' +
                                    QByteArray("1 1 1\n").repeated(size * size * size + size);
            const QString path = folder.file(QStringLiteral("a.cube"), text);
            QVERIFY(lut.ReadFile(samples::request(path, 0), false));
            const int last = size - 1;
            QCOMPARE(samples::cell(lut.data3D[last][last][last]), QVector<float>({1, 1, 1}));
            QCOMPARE(samples::cell(lut.data1D[last]), QVector<float>({1, 1, 1}));
        }
    }

    void dispatchPassesFlagsOn() {
        Read_LUTFile lut(nullptr);
        LUTFILE_ST st = samples::request(QString(), -1, false, false);
        st.defaultOrder = true;
        lut.ReadFile(st, true);
        QVERIFY(lut.defaultOrder && lut.dataOrder && lut.tableOrder);
        st.defaultOrder = false;
        lut.ReadFile(st, true);
        QVERIFY(!lut.defaultOrder && !lut.dataOrder && !lut.tableOrder);

        Write_LUTFile writer(nullptr);
        st.outputScale = 1023;
        writer.WriteFile(st, lut);
        QVERIFY(!writer.defaultOrder && !writer.dataOrder && !writer.tableOrder);
        QCOMPARE(writer.outputScale, 1023);
    }
};

QTEST_GUILESS_MAIN(TestContainer)
#include "test_container.moc"
