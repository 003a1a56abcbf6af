#include "formats/text/emit.h"
#include "formats/text/text_file.h"
#include "samples.h"

#include <QTextStream>

#include <cmath>
#include <cstring>

namespace {

using Print = std::function<void(QTextStream&)>;

QString streamed(const Print& print) {
    QString text;
    QTextStream out(&text);
    print(out);
    return text;
}

QString byQt(float value, QTextStream::RealNumberNotation notation, int width = 0) {
    return streamed([&](QTextStream& out) {
        out.setRealNumberNotation(notation);
        out.setFieldWidth(width);
        out << value;
    });
}

QString printed(char* (*print)(char*, float), float value) {
    char text[tintwell::MaxNumberText];
    return QString::fromLatin1(text, static_cast<int>(print(text, value) - text));
}

} // namespace

class TestEmit : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { samples::requireExpectedLocale(); }

    void printsAsQtDoes() {
        std::vector<float> values = {5e-7F,     1e-4F,     9.99999e-5F,   0.99999949F,   9.9999995F,
                                     99999.95F, 999999.5F, 4294967040.0F, 4294967296.0F, NAN};
        for (int n = -300; n < 300; ++n) { // every tie at six decimals is an odd multiple of 1/128
            values.push_back(static_cast<float>(n) / 128.0F);
            values.push_back(static_cast<float>(n) * 2.5F);
        }
        const auto add = [&](std::uint64_t from, std::uint64_t to, unsigned step) {
            for (std::uint64_t bits = from; bits <= to; bits += step) {
                values.push_back(0);
                std::memcpy(&values.back(), &bits, sizeof(float));
            }
        };
        add(0, 0xFFFFFFFFU, 40'009);
        add(0x35000000U, 0x4A000000U, 1'999); // 5e-7 to 2e6
        for (const float value : values) {
            QCOMPARE(printed(tintwell::printFixed, value), byQt(value, QTextStream::FixedNotation));
            QCOMPARE(printed(tintwell::printSmart, value), byQt(value, QTextStream::SmartNotation));
        }
    }

    void files() {
        const samples::Folder folder;
        QString error;
        QString expected;
        {
            tintwell::TextFile(folder.path("one byte"), error) << '\n';
            tintwell::TextFile out(folder.path("columns"), error);
            for (const float value : {0.5F, -0.5F, NAN, -INFINITY, 123.0F}) {
                out.fixedColumn(value);
                expected += byQt(value, QTextStream::FixedNotation, 8);
            }
        }
        QCOMPARE(folder.content("columns"), expected.toLatin1());
        QCOMPARE(error, "");
        tintwell::TextFile("/dev/full", error) << "lost";
        QCOMPARE(error, "No space left on device");
    }

    /// In every order and scale, whatever state the owner of the stream has set.
    void emittersPrintAsQtDoes() {
        const Print states[] = {
            [](QTextStream& out) { out.setRealNumberPrecision(2); },
            [](QTextStream& out) { out.setRealNumberNotation(QTextStream::ScientificNotation); },
            [](QTextStream& out) { out.setNumberFlags(QTextStream::ForceSign); },
            [](QTextStream& out) { out.setLocale(QLocale(QLocale::German)); },
            [](QTextStream& out) { out.setFieldWidth(9); },
        };
        const QString sep = "→";
        Read_LUTFile lut(nullptr);
        samples::fill3D(lut, 2, [](int i, int, int k) {
            return QVector<float>{i == 0 ? 0.9999999F : -0.9999F, k == 0 ? 3e38F : NAN, 1.5F};
        });
        for (int way = 0; way < 5 * 16; ++way) {
            const int scale = QVector<int>{0, 1, 2, 1023}[way % 4];
            const bool rgb = way / 4 % 2 == 0;
            Write_LUTFile writer(nullptr);
            writer.dataOrder = rgb;
            writer.tableOrder = way / 8 % 2 == 0;
            float* cell = writer.tableOrder ? lut.data3D[0][1][1] : lut.data3D[1][1][0];
            const auto put = [&](QTextStream& out, float value) -> QTextStream& {
                const float scaled = value * static_cast<float>(scale);
                constexpr qlonglong outside = std::numeric_limits<qlonglong>::min();
                return scale < 2 ? out << value
                                 : out << (scaled < 1e9F ? qlonglong(scaled) : outside);
            };
            const QString expected = streamed([&](QTextStream& out) {
                states[way / 16](out);
                for (const int c : {0, rgb ? 0 : 2, 1, rgb ? 2 : 0}) {
                    put(out, cell[c]) << sep;
                }
                out.setRealNumberNotation(QTextStream::FixedNotation);
                for (const int c : {rgb ? 0 : 2, 1, rgb ? 2 : 0}) {
                    out.setFieldWidth(scale < 2 ? 8 : 0);
                    put(out, cell[c]).setFieldWidth(0);
                    out << sep;
                }
            });
            QCOMPARE(streamed([&](QTextStream& out) {
                         states[way / 16](out);
                         writer.WhiteGamma(&cell, out, 0, scale, sep);
                         writer.White1D(&cell, out, 0, scale, sep);
                         writer.White3D(lut.data3D, out, 0, 1, 1, scale, sep);
                         out << (scale < 2 ? sep : QString());
                     }),
                     expected);
        }
    }
};

QTEST_GUILESS_MAIN(TestEmit)
#include "test_emit.moc"
