#include "formats/hex_float.h"
#include "one_format.h"

#include <QtEndian>

#include <bit>

namespace {

QByteArray hex(float value) {
    const auto bits = qToLittleEndian(std::bit_cast<quint32>(value));
    return QByteArray(reinterpret_cast<const char*>(&bits), sizeof bits).toHex().toUpper();
}

/// Samples numbered by their red.
QByteArray points(int from, int to) {
    QByteArray digits;
    for (int n = from; n < to; ++n) {
        digits += hex(float(n) / 32) + hex(0.5F) + hex(0.25F);
    }
    return digits;
}

QByteArray table(const QByteArray& size, const QByteArray& data, const QByteArray& name = "LUT") {
    return '<' + name + "><size>" + size + "</size><data>" + data + "</data></" + name + '>';
}

QByteArray look(const QByteArray& content) {
    return "<?xml version=\"1.0\"?>\n<look>" + content + "</look>\n";
}

const QByteArray plain = table("2", points(0, 8));
const QByteArray unread = table("7", "");
const char* const second = "2^3: 0.03125 0.5 0.25";

} // namespace

class TestLook : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{tintwell::FormatCode::Look};

    void expect(const char* outcome, const QByteArrayList& texts) const {
        m_format.expect(outcome, texts);
    }

private Q_SLOTS:
    void digits() {
        const QByteArray all = "0123456789abcdefABCDEF";
        for (int c = 0; c < 256; ++c) {
            char value = 1;
            const int at = all.indexOf(char(c));
            QCOMPARE(hexasciitoint(value, char(c)), at >= 0);
            QCOMPARE(int(value), at < 16 ? std::max(at, 0) : at - 6);
        }
        float value = 7;
        QVERIFY(hexasciitofloat(value, "cdcc4c3d") && value == 0.05F);
        for (const char* bad : {"0000803G", "", "0000803", "00 0803F", "-000803F"}) {
            QVERIFY(!hexasciitofloat(value, bad));
            QCOMPARE(value, 0.05F);
        }
    }

    void tables() {
        QByteArray spread = points(0, 8).toLower();
        for (int at = spread.size() - 5; at > 0; at -= 5) {
            spread.insert(at, "\" \r\n\t\xC2\xA0&quot;");
        }
        expect(second,
               {plain, "\xEF\xBB\xBF" + look(table("\" 2\"\r\n", spread)),
                table("2", points(0, 9) + "xyz"), // more than the table needs
                look(table("2", points(5, 13)) + "<LUT><data>" + points(0, 8) + "</data></LUT>")});
        expect("3^3: 0.03125 0.5 0.25", {look(plain + table("3", points(0, 27)))});
        expect("2^3: 0.5 0.25 0", // each channel is divided by its own maximum
               {table("2", points(0, 1) + hex(2) + hex(0.5F) + hex(-1) + points(2, 7) + hex(4) +
                               hex(2) + hex(0))});
        expect("2^3: 0 0 0", {"<LUT><size>2</size></LUT>", table("2", "\" \""),
                              "<LUT><data>" + points(0, 8) + "</data><size>2</size></LUT>"});
        expect("1^3: 0 0.5 0.25", {look(plain + table("1", points(0, 1)))});
        expect("fails, 2^3", {table("2", points(0, 8).chopped(1)),
                              table("2", points(0, 7) + "0000803G" + points(0, 1))});
        expect("fails", {table("two", points(0, 8)), ""});
        expect("fails, -2^3", {table("-2", points(0, 8))});
        expect("fails, 257^3", {table("257", points(0, 8))});
        expect("fails, 256^3", {table("256", points(0, 8)), "<LUT><size>256</size></LUT>"});

        const QByteArray two = hex(0) + hex(0.5F) + hex(1) + hex(4) + hex(1) + hex(-1);
        expect("2: 1 0.5 0 0 1 1", {table("2", two, "LUT1D")}); // stored as B, G, R
        expect("2^3: 0.03125 0.5 0.25, 2: 1 0.5 0 0 1 1", {look(table("2", two, "LUT1D") + plain)});
        expect("1: 0 0 0", {"<LUT1D><size>1</size></LUT1D>"});
        expect("fails, 3", {table("3", two, "LUT1D")});
        expect("fails, 99999999", {table("99999999", two, "LUT1D")});
    }

    /// Tables are read at any depth, but not inside shaders and colour corrections.
    void places() {
        expect(second, {look("<shaders>" + unread + "</shaders><ASC>" + unread + "</ASC><x>" +
                             unread + "<y>" + plain + "</y></x>"),
                        look("<LUT a='1'>text<x><size>9</size></x><size>2</size><!-- c --><data>" +
                             points(0, 1) + "<x>77</x><!-- 7 --><![CDATA[" + points(1, 8) +
                             "]]></data></LUT>"),
                        "<p:LUT xmlns:p='u'><p:size>2</p:size><p:data>" + points(0, 8) +
                            "</p:data></p:LUT>"});
        expect("fails", {"<shaders>" + plain + "</shaders>", "<ASC>" + plain + "</ASC>"});
    }

    /// What is complete counts; an element that the document breaks off in does not.
    void brokenDocuments() {
        expect(second, {plain.chopped(6), "<x>" + plain + table("2", "00", "LUT1D").chopped(15),
                        plain + look("<LUT><data>00").chopped(15), "<x>" + plain + "<LUT><size>3",
                        look(plain + "</x>" + table("1", ""))});
        expect("fails", {plain.chopped(7), plain.chopped(40), "<look><LUT><size>3",
                         "<LUT><size>3&am", "<LUT><size>3</x>"});
        Read_LUTFile lut(nullptr); // of what does not decode, nothing is kept
        QVERIFY(!m_format.read(lut, table("2", (hex(4) + points(0, 8)).left(191) + 'g')));
        QCOMPARE(lut.domainMax3D[0], 1.0F);
        QVERIFY(!m_format.read(lut, table("2", (hex(4) + points(0, 2)).left(47) + 'g', "LUT1D")));
        QCOMPARE(lut.domainMax1D[0], 1.0F);
    }

    /// Markup within markup, encodings, and tags beyond the limits, which end the reading.
    void markup() {
        const QByteArray noTags = QByteArray("if (a<b) x=1; <y xmlns=' ").repeated(300);
        const QString wide = QChar(QChar::ByteOrderMark) + QString::fromLatin1(look(plain));
        const QByteArray deep = QByteArray("<x>").repeated(300);
        expect(second,
               {"<!DOCTYPE LUT [<!-- ]' --><?x ]\" ?><!ELEMENT LUT ANY>\n"
                "<!ATTLIST LUT a CDATA ']>'>\n<!ENTITY e \"]>\">]>" +
                    plain,
                QByteArray(reinterpret_cast<const char*>(wide.utf16()), 2 * wide.size()),
                "<?xml version='1.0' encoding='ISO-8859-1'?><gr\xFCn>" + plain + "</gr\xFCn>",
                look("<shaders><![CDATA[" + noTags + "]]></shaders><!-- " + noTags + " --><?x " +
                     noTags + "?>" + plain),
                look(plain) + deep}); // where nobody reads
        expect("fails",
               {"<!DOCTYPE LUT [<!ENTITY e \"" + points(0, 8) + "\">]>" + table("2", "&e;"),
                "<!DOCTYPE LUT SYSTEM 'e'>" + table("2", "&e;"), look(deep + plain)});
    }

    void ordersAndProbes() {
        const QByteArray text = look(plain + table("1", points(0, 1), "LUT1D"));
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.readInOrders(lut, text, true, true));
        QCOMPARE(samples::cell(lut.data3D[0][1][1]), QVector<float>({3 / 32.0F, 0.5F, 0.25F}));
        QCOMPARE(samples::curve(lut), QVector<float>({0, 0.5F, 0.25F}));
        QVERIFY(m_format.read(lut, look(table("33", "no digits") + table("\"9\"", "x", "LUT1D")),
                              true));
        QCOMPARE(lut.size3D, 33);
        QCOMPARE(lut.size1D, 9);
    }
};

QTEST_GUILESS_MAIN(TestLook)
#include "test_look.moc"
