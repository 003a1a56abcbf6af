#include "formats/text/emit.h"
#include "formats/text/text_file.h"
#include "samples.h"

#include <QTextStream>

#include <cmath>
#include <cstring>

namespace {

using Print = std::function<void(QTextStream&)>;

QByteArray streamed(const Print& print) {
    QByteArray text;
    QTextStream out(&text);
    out.setCodec("UTF-8");
    print(out);
    out.flush();
    return text;
}

QByteArray byQt(float value, QTextStream::RealNumberNotation notation, int width = 0) {
    return streamed([&](QTextStream& out) {
        out.setRealNumberNotation(notation);
        out.setFieldWidth(width);
        out << value;
    });
}

QByteArray printed(char* (*print)(char*, float), float value) {
    char text[tintwell::MaxNumberText];
    return QByteArray(text, static_cast<int>(print(text, value) - text));
}

} // namespace

class TestEmit : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { samples::requireExpectedLocale(); }

    void printsAsQtDoes() {
        std::vector<float> values = {0.0F,        -0.0F,         5e-7F,         1e-4F,
                                     9.99999e-5F, 0.99999949F,   9.9999995F,    99999.95F,
                                     999999.5F,   4294967040.0F, 4294967296.0F, NAN};
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
        const auto failure = [](const QString& path, const QVector<float>& columns) {
            QString error;
            {
                tintwell::TextFile out(path, error);
                for (const float value : columns) {
                    out.fixedColumn(value);
                }
                out << '\n';
            }
            return error;
        };
        QByteArray expected;
        const QVector<float> columns = {0.5F, -0.5F, NAN, -INFINITY, 123.0F};
        for (const float value : columns) {
            expected += byQt(value, QTextStream::FixedNotation, 8);
        }
        QCOMPARE(failure(folder.path("columns"), columns), QString());
        QCOMPARE(folder.content("columns"), expected + '\n');
        QCOMPARE(failure(folder.path("one byte"), {}), QString());
        QCOMPARE(failure("/dev/full", columns), "No space left on device");
        QVERIFY(!failure("/", columns).isEmpty());
    }

    /// In every order and scale, whatever state the owner of the stream has set.
    void emittersPrintAsQtDoes() {
        const Print states[] = {
            [](QTextStream& out) { out.setRealNumberPrecision(2); },
            [](QTextStream& out) { out.setRealNumberNotation(QTextStream::ScientificNotation); },
            [](QTextStream& out) { out.setRealNumberNotation(QTextStream::FixedNotation); },
            [](QTextStream& out) { out.setNumberFlags(QTextStream::ForceSign); },
            [](QTextStream& out) { out.setLocale(QLocale(QLocale::German)); },
            [](QTextStream& out) { out.setFieldWidth(9); },
        };
        const QString sep = "→";
        Read_LUTFile lut(nullptr);
        samples::fill3D(lut, 2, [](int i, int j, int k) {
            return QVector<float>{0.25F + float(i), 1.5F + float(j), -0.75F - float(k)};
        });
        for (unsigned way = 0; way < 6 * 16; ++way) {
            const Print& prepare = states[way % 6];
            const int scale = QVector<int>{0, 1, 2, 1023}[way / 6 % 4];
            Write_LUTFile writer(nullptr);
            writer.dataOrder = way / 24 % 2 == 0;
            writer.tableOrder = way / 48 == 0;
            float* cell = writer.tableOrder ? lut.data3D[0][1][1] : lut.data3D[1][1][0];
            const float values[] = {cell[writer.dataOrder ? 0 : 2], cell[1],
                                    cell[writer.dataOrder ? 2 : 0]};
            const auto put = [&](QTextStream& out, float value) -> QTextStream& {
                return scale < 2 ? out << value : out << static_cast<int>(value * float(scale));
            };
            const QByteArray expected = streamed([&](QTextStream& out) {
                prepare(out);
                for (const float value : {cell[0], values[0], values[1], values[2]}) {
                    put(out, value) << sep;
                }
                out.setRealNumberNotation(QTextStream::FixedNotation);
                for (const float value : values) {
                    out.setFieldWidth(scale < 2 ? 8 : 0);
                    put(out, value).setFieldWidth(0);
                    out << sep;
                }
            });
            const QByteArray found = streamed([&](QTextStream& out) {
                prepare(out);
                writer.WhiteGamma(&cell, out, 0, scale, sep);
                writer.White1D(&cell, out, 0, scale, sep);
                writer.White3D(lut.data3D, out, 0, 1, 1, scale, sep);
                out << (scale < 2 ? sep : QString());
            });
            QCOMPARE(found, expected);
        }
    }

    void scaledIntegers() {
        constexpr auto none = std::numeric_limits<std::int64_t>::min();
        QCOMPARE(tintwell::scaledInteger(-0.9999F, 1000), -999);
        QCOMPARE(tintwell::scaledInteger(0.9999999F, 1023), 1022);
        for (const float outside : {NAN, 3e38F, -INFINITY}) {
            QCOMPARE(tintwell::scaledInteger(outside, 2), none);
        }
    }
};

QTEST_GUILESS_MAIN(TestEmit)
#include "test_emit.moc"
