#include "calc/lutcalc.h"
#include "samples.h"

#include <cmath>
#include <vector>

class TestDeviceWords : public QObject {
    Q_OBJECT

    LutCalc m_calc;

private Q_SLOTS:
    void packing() {
        const struct {
            float sample;
            int bits;
            int word;
        } rows[] = {
            {1, 10, 1023},        {0.5F, 10, 511},
            {1, 16, 65535},       {-0.0005F, 10, 0},
            {-0.001F, 10, 65535}, // two's complement
            {-1, 10, 64513},      {3e9F, 1, int(3'000'000'000 % 65536)},
            {1e30F, 16, 0}, // beyond 64 bits
            {NAN, 8, 0},          {1, 1000, 0},
        };
        for (const auto& row : rows) {
            Read_LUTFile lut(nullptr);
            tintwell::makeZeros(lut, tintwell::TableKind::ThreeD, 1);
            samples::fill1D(lut, 1, [&](int) { return QVector<float>{row.sample, 7, 7}; });
            std::copy_n(lut.data1D[0], 3, lut.data3D[0][0][0]);
            for (const auto pack :
                 {&LutCalc::Lut1D_to_Uart, &LutCalc::Lut3D_to_Uart, &LutCalc::Gamma_to_Uart}) {
                unsigned short words[3] = {};
                (m_calc.*pack)(words, row.bits, lut);
                QCOMPARE(int(words[0]), row.word);
            }
        }
    }

    /// Every word has its place: packing undoes unpacking, and nothing is touched after the last.
    void wordsAndBack() {
        std::vector<unsigned short> given;
        for (int n = 0; n < 82; ++n) {
            given.push_back(static_cast<unsigned short>(n * 49));
        }
        Read_LUTFile lut(nullptr);
        tintwell::makeZeros(lut, tintwell::TableKind::ThreeD, 3);
        samples::fill1D(lut, 27, [](int) { return QVector<float>(3, 9); });
        m_calc.Uart_to_Lut3D(given.data(), 12, lut);
        m_calc.Uart_to_Lut1D(given.data(), 12, lut);
        QCOMPARE(lut.data3D[1][2][0][2], float(49 * 47) / 4095);
        QCOMPARE(lut.data1D[26][1], float(49 * 79) / 4095);
        const auto expectPacked = [&](auto pack, std::size_t count) {
            std::vector<unsigned short> words(count + 1, 7777);
            (m_calc.*pack)(words.data(), 20, lut); // enough bits for the fractions
            for (std::size_t n = 0; n < count; ++n) {
                const double exact = given[n] / 4095.0 * 1048575;
                QVERIFY(std::fabs(std::remainder(words[n] - exact, 65536)) < 1.1);
            }
            QCOMPARE(int(words[count]), 7777);
        };
        expectPacked(&LutCalc::Lut3D_to_Uart, 81);
        expectPacked(&LutCalc::Lut1D_to_Uart, 81);
        m_calc.Uart_to_Gamma(given.data(), 12, lut);
        QCOMPARE(samples::cell(lut.data1D[26]), QVector<float>(3, float(49 * 26) / 4095));
        expectPacked(&LutCalc::Gamma_to_Uart, 27);

        Read_LUTFile none(nullptr);
        none.size3D = none.size1D = 3; // as after a probe
        m_calc.Lut3D_to_Uart(nullptr, 10, none);
        m_calc.Uart_to_Lut1D(nullptr, 10, none);
    }
};

QTEST_GUILESS_MAIN(TestDeviceWords)
#include "test_device_words.moc"
