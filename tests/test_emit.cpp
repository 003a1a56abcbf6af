#include "formats/text/emit.h"
#include "formats/text/text_file.h"
#include "samples.h"

#include <QTextStream>

#include <cmath>
#include <cstring>
#include <limits>

namespace {

QByteArray byQt(float value, QTextStream::RealNumberNotation notation, int width = 0) {
    QByteArray text;
    QTextStream stream(&text);
    stream.setRealNumberNotation(notation);
    stream.setFieldWidth(width);
    stream << value << Qt::flush;
    return text;
}

QByteArray printed(char* (*print)(char*, float), float value) {
    char text[tintwell::MaxNumberText];
    return QByteArray(text, static_cast<int>(print(text, value) - text));
}

float fromBits(std::uint32_t bits) {
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

} // namespace

class TestEmit : public QObject {
    Q_OBJECT

    float m_values[3] = {0.25F, 0.5F, 1.0F};
    float* m_cell = m_values;
    float** m_row = &m_cell;
    float*** m_plane = &m_row;
    float**** m_lattice = &m_plane;

private Q_SLOTS:
    void initTestCase() { samples::requireExpectedLocale(); }

    void printsAsQtDoes() {
        std::vector<float> values = {
            0.0F,        -0.0F,         1e-7F,         -1e-7F,      5e-7F,      0.0078125F,
            -0.0234375F, 1e-4F,         9.99999e-5F,   0.99999949F, 0.9999995F, 9.5F,
            99999.95F,   999999.0F,     999999.5F,     1e6F,        123456.5F,  1234567.0F,
            16777217.0F, 4294967040.0F, 4294967296.0F, 1e10F,       3.4e38F,    1e-45F,
            INFINITY,    -INFINITY,     NAN,           -NAN};
        for (int n = -300; n < 300; ++n) { // every tie at six decimals is an odd multiple of 1/128
            values.push_back(static_cast<float>(n) / 128.0F);
            values.push_back(static_cast<float>(n) * 2.5F);
        }
        for (std::uint64_t bits = 0; bits <= 0xFFFFFFFFU; bits += 40'009) {
            values.push_back(fromBits(static_cast<std::uint32_t>(bits)));
        }
        for (std::uint32_t bits = 0x35000000U; bits < 0x4A000000U; bits += 1'999) { // 5e-7 to 2e6
            values.push_back(fromBits(bits));
        }
        for (const float value : values) {
            QCOMPARE(printed(tintwell::printFixed, value), byQt(value, QTextStream::FixedNotation));
            QCOMPARE(printed(tintwell::printSmart, value), byQt(value, QTextStream::SmartNotation));
        }
    }

    void printsColumnsIntoFiles() {
        const samples::Folder folder;
        const QString path = folder.path(QStringLiteral("columns"));
        QByteArray expected;
        {
            QString error;
            tintwell::TextFile out(path, error);
            for (const float value : {0.5F, -0.5F, NAN, -INFINITY, 123.0F}) {
                out.fixedColumn(value);
                expected += byQt(value, QTextStream::FixedNotation, 8);
            }
        }
        QCOMPARE(folder.content(QStringLiteral("columns")), expected);
    }

    void failedWritesAreReported() {
        QString error;
        {
            tintwell::TextFile out(QStringLiteral("/dev/full"), error);
            out << "lost";
            QVERIFY(error.isEmpty());
        }
        QCOMPARE(error, QStringLiteral("No space left on device"));
        QString folderError;
        const tintwell::TextFile folder(QStringLiteral("/"), folderError);
        QVERIFY(!folder.isOpen() && !folderError.isEmpty());
    }

    void emitters_data() {
        QTest::addColumn<bool>("rgb");
        QTest::addColumn<int>("scale");
        QTest::addColumn<QString>("sep");
        QTest::addColumn<QByteArray>("cell3D");
        QTest::addColumn<QByteArray>("cell1D");
        QTest::addColumn<QByteArray>("curve");
        QTest::newRow("reals") << true << 1 << "," << QByteArray("0.250000,0.500000,1.000000")
                               << QByteArray("0.25,0.5,1,") << QByteArray("0.25,");
        QTest::newRow("reals at scale 0, reversed")
            << false << 0 << " " << QByteArray("1.000000 0.500000 0.250000")
            << QByteArray("1 0.5 0.25 ") << QByteArray("0.25 ");
        QTest::newRow("integers") << true << 1023 << " " << QByteArray("255 511 1023 ")
                                  << QByteArray("255 511 1023 ") << QByteArray("255 ");
        QTest::newRow("integers, reversed, wide separator")
            << false << 2 << QString::fromUtf8("→") << QByteArray("2→1→0→") << QByteArray("2→1→0→")
            << QByteArray("0→");
    }
    void emitters() {
        QFETCH(bool, rgb);
        QFETCH(int, scale);
        QFETCH(QString, sep);
        Write_LUTFile writer(nullptr);
        writer.dataOrder = rgb;
        const auto text = [](const std::function<void(QTextStream&)>& emitInto) {
            QByteArray bytes;
            QTextStream out(&bytes);
            out.setCodec("UTF-8");
            emitInto(out);
            out.flush();
            return bytes;
        };
        QTEST(text([&](QTextStream& out) {
                  out.setFieldWidth(20);
                  writer.White3D(m_lattice, out, 0, 0, 0, scale, sep);
                  QCOMPARE(out.realNumberNotation(), QTextStream::FixedNotation);
                  QCOMPARE(out.fieldWidth(), 0);
              }),
              "cell3D");
        QTEST(text([&](QTextStream& out) { writer.White1D(&m_cell, out, 0, scale, sep); }),
              "cell1D");
        QTEST(text([&](QTextStream& out) { writer.WhiteGamma(&m_cell, out, 0, scale, sep); }),
              "curve");
    }

    void latticeOrderChoosesTheCell() {
        Read_LUTFile lut(nullptr);
        samples::fill3D(lut, 2, [](int i, int j, int k) {
            return QVector<float>({float(i), float(j), float(k)});
        });
        Write_LUTFile writer(nullptr);
        for (const bool tableOrder : {true, false}) {
            writer.tableOrder = tableOrder;
            QByteArray text;
            QTextStream out(&text);
            writer.White3D(lut.data3D, out, 0, 1, 1, 2, QStringLiteral(" "));
            out.flush();
            QCOMPARE(text, QByteArray(tableOrder ? "0 2 2 " : "2 2 0 "));
        }
    }

    void streamStateIsHonoured() {
        // Whatever state the owner of the stream has set, Qt would print the same.
        const auto emitted = [&](const std::function<void(QTextStream&)>& prepare, bool direct) {
            QByteArray text;
            QTextStream out(&text);
            prepare(out);
            if (direct) {
                for (const float value : m_values) {
                    out << value << QStringLiteral(";");
                }
            } else {
                Write_LUTFile(nullptr).White1D(&m_cell, out, 0, 1, QStringLiteral(";"));
            }
            out.flush();
            return text;
        };
        const std::vector<std::function<void(QTextStream&)>> states = {
            [](QTextStream& out) { out.setRealNumberPrecision(2); },
            [](QTextStream& out) { out.setRealNumberNotation(QTextStream::ScientificNotation); },
            [](QTextStream& out) { out.setRealNumberNotation(QTextStream::FixedNotation); },
            [](QTextStream& out) { out.setNumberFlags(QTextStream::ForceSign); },
            [](QTextStream& out) { out.setLocale(QLocale(QLocale::German)); },
            [](QTextStream& out) {
                out.setFieldWidth(9);
                out.setPadChar(QLatin1Char('_'));
                out.setFieldAlignment(QTextStream::AlignLeft);
            },
        };
        for (const auto& prepare : states) {
            QCOMPARE(emitted(prepare, false), emitted(prepare, true));
        }
    }

    void scaledIntegers() {
        constexpr auto none = std::numeric_limits<std::int64_t>::min();
        QCOMPARE(tintwell::scaledInteger(-0.9999F, 1000), -999);
        QCOMPARE(tintwell::scaledInteger(0.9999999F, 1023), 1022);
        QCOMPARE(tintwell::scaledInteger(NAN, 2), none);
        QCOMPARE(tintwell::scaledInteger(3e38F, 2), none);
        QCOMPARE(tintwell::scaledInteger(-INFINITY, 2), none);
    }
};

QTEST_GUILESS_MAIN(TestEmit)
#include "test_emit.moc"
