#include "formats/hex_float.h"
#include "one_format.h"

#include <sys/stat.h>

namespace {

QByteArray hex(float value) {
    return QByteArray(reinterpret_cast<const char*>(&value), sizeof value).toHex().toUpper();
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

QByteArray attributes(int count) {
    QByteArray text;
    for (int n = 0; n < count; ++n) {
        text += 'a' + QByteArray::number(n) + "='>' ";
    }
    return text;
}

QByteArray utf16(const QByteArray& text) {
    const QString wide = QString::fromLatin1(text);
    return QByteArray(reinterpret_cast<const char*>(wide.utf16()), 2 * wide.size());
}

QByteArray look(const QByteArray& content) {
    return "<?xml version=\"1.0\"?>\n<look>" + content + "</look>\n";
}

} // namespace

class TestLook : public QObject {
    Q_OBJECT

    const samples::OneFormat m_format{5};

private Q_SLOTS:
    void digits() {
        char value = 1;
        for (const char c : {'g', ' ', '"', '/', ':', '@', 'G', '`', '\0', '\xB2'}) {
            value = 1;
            QVERIFY(!hexasciitoint(value, c));
            QCOMPARE(int(value), 0);
        }
        const QByteArray all = "0123456789abcdefABCDEF";
        for (int n = 0; n < all.size(); ++n) {
            QVERIFY(hexasciitoint(value, all[n]));
            QCOMPARE(int(value), n < 16 ? n : n - 6);
        }
    }

    void floats() {
        float value = 7;
        QVERIFY(hexasciitofloat(value, "0000803F") && value == 1.0F);
        QVERIFY(hexasciitofloat(value, "cdcc4c3d") && value == 0.05F);
        for (const char* bad : {"0000803G", "", "0000803", "00 0803F", "-000803F"}) {
            QVERIFY(!hexasciitofloat(value, bad));
            QCOMPARE(value, 0.05F);
        }
    }

    /// The expected size and sample (0, 1, 1), which is number 1 + size.
    void lattice_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("reads");
        QTest::addColumn<int>("size");
        QTest::addColumn<QVector<float>>("sample");
        const auto row = [](const char* name, const QByteArray& text, bool reads, int size,
                            const QVector<float>& sample = {}) {
            QTest::newRow(name) << text << reads << size << sample;
        };
        const QByteArray plain = table("2", points(0, 8));
        const QVector<float> third = {3 / 32.0F, 0.5F, 0.25F};
        const QVector<float> none = {0, 0, 0};
        QByteArray spread = points(0, 8).toLower();
        for (int at = spread.size() - 5; at > 0; at -= 5) {
            spread.insert(at, "\" \r\n\t\xC2\xA0&quot;");
        }

        row("two points", look(plain), true, 2, third);
        row("three points", look(table("3", points(0, 27))), true, 3, {4 / 32.0F, 0.5F, 0.25F});
        row("nothing around the table", plain, true, 2, third);
        row("blanks, quotes, lower case", "\xEF\xBB\xBF" + look(table("\" 2\"\r\n", spread)), true,
            2, third);
        row("shaders and more",
            look("<shaders>" + table("9", "00") + "</shaders><ASC>" + table("8", "") + "</ASC><x>" +
                 table("7", "") + "<y>" + plain + "</y></x>"),
            true, 2, third);
        row("shaders alone", "<shaders>" + plain + "</shaders>", false, 0);
        row("ASC alone", "<ASC>" + plain + "</ASC>", false, 0);
        row("other children",
            look("<LUT a='1'>text<x><size>9</size></x><size>2</size><!-- c -->"
                 "<data>" +
                 points(0, 1) + "<x>77</x><!-- 7 --><![CDATA[" + points(1, 8) + "]]></data></LUT>"),
            true, 2, third);
        row("names without their prefix",
            "<p:LUT xmlns:p='u'><p:size>2</p:size><p:data>" + points(0, 8) + "</p:data></p:LUT>",
            true, 2, third);
        row("each channel by its own maximum",
            look(table("2", points(0, 3) + hex(2) + hex(0.5F) + hex(-1) + points(3, 6) + hex(4) +
                                hex(1) + hex(0))),
            true, 2, {0.5F, 0.5F, 0});
        row("digits beyond the table", look(table("2", points(0, 9) + "xyz")), true, 2, third);
        row("a digit is missing", look(table("2", points(0, 8).chopped(1))), false, 2);
        row("not a digit", look(table("2", points(0, 7) + "0000803G" + points(0, 1))), false, 2);
        row("no data", look("<LUT><size>2</size></LUT>"), true, 2, none);
        row("empty data", look(table("2", "\" \"")), true, 2, none);
        row("data before its size",
            look("<LUT><data>" + points(0, 8) + "</data><size>2</size></LUT>"), true, 2, none);
        row("last size wins", look(plain + table("1", points(0, 1))), true, 1);
        row("last data wins",
            look(table("2", points(5, 13)) + "<LUT><data>" + points(0, 8) + "</data></LUT>"), true,
            2, third);
        row("size not a number", look(table("two", points(0, 8))), false, 0);
        row("size negative", look(table("-2", points(0, 8))), false, -2);
        row("too large", look(table("257", points(0, 8))), false, 257);
        row("more than the text holds", look(table("256", points(0, 8))), false, 256);
        row("much of nothing", look("<LUT><size>256</size></LUT>"), false, 256);
        row("breaks off after the data", plain.chopped(6), true, 2, third);
        row("in the end tag of the data", plain.chopped(7), false, 0);
        row("in the data", plain.chopped(40), false, 0);
        row("in the data of a curve", "<x>" + plain + table("2", "00", "LUT1D").chopped(20), true,
            2, third);
        row("in a second one", plain + look("<LUT><data>00").chopped(15), true, 2, third);
        row("in the size", "<look><LUT><size>3", false, 0);
        row("in an entity of the size", "<LUT><size>3&am", false, 0);
        row("by a tag in the size", "<LUT><size>3</x>", false, 0);
        row("in a second size", "<x>" + plain + "<LUT><size>3", true, 2, third);
        row("malformed after the table", look(plain + "</x>" + table("1", "")), true, 2, third);
        row("entities of its own",
            "<!DOCTYPE LUT [<!ENTITY e \"" + points(0, 8) + "\">]>" + table("2", "&e;"), false, 0);
        row("entities of others", "<!DOCTYPE LUT SYSTEM 'e'>" + table("2", "&e;"), false, 0);
        row("document type of its own", "<!DOCTYPE look SYSTEM 'look.dtd'>" + plain, true, 2,
            third);
        row("declarations of its own",
            "<!DOCTYPE LUT [<!-- ]' --><?x ]\" ?><!ELEMENT LUT ANY>\n<!ATTLIST LUT a CDATA ']>'>\n"
            "<!ENTITY e \"]>\">]>" +
                plain,
            true, 2, third);
        row("in UTF-16", QByteArray("\xFF\xFE") + utf16(look(plain)), true, 2, third);
        row("in the encoding it declares",
            "<?xml version='1.0' encoding='ISO-8859-1'?><gr\xFCn>" + plain + "</gr\xFCn>", true, 2,
            third);
        row("many attributes", look("<x " + attributes(64) + "/>" + plain), true, 2, third);
        row("too many", look("<x " + attributes(65) + "/>" + plain), false, 0);
        row("deep elements",
            look(QByteArray("<x>").repeated(255) + QByteArray("</x>").repeated(255) + plain), true,
            2, third);
        row("too deep",
            look(QByteArray("<x>").repeated(256) + QByteArray("</x>").repeated(256) + plain), false,
            0);
        row("many elements", look(QByteArray("<x/><y b='/'></y>").repeated(999) + plain), true, 2,
            third);
        const QByteArray noTags = QByteArray("if (a<b) x=1; <y xmlns=' ").repeated(300);
        row("text like tags",
            look("<shaders><![CDATA[" + noTags + "]]></shaders><!-- " + noTags + " --><?x " +
                 noTags + "?>" + plain),
            true, 2, third);
        row("too many where nobody reads", look(plain) + "<x " + attributes(65) + "/>", true, 2,
            third);
        row("nothing", "", false, 0);
    }
    void lattice() {
        QFETCH(QByteArray, text);
        QFETCH(QVector<float>, sample);
        Read_LUTFile lut(nullptr);
        QTEST(m_format.read(lut, text), "reads");
        QTEST(lut.size3D, "size");
        QCOMPARE(samples::cell(lut.domainMax3D), QVector<float>({1, 1, 1}));
        if (!sample.isEmpty()) {
            QCOMPARE(samples::cell(lut.data3D[1][1][0]), sample); // stored as [k][j][i]
        }
    }

    void curves_data() {
        samples::textColumns();
        const QByteArray two = hex(0) + hex(0.5F) + hex(1) + hex(4) + hex(1) + hex(-1);
        const QVector<float> asBgr = {1, 0.5F, 0, 0, 1, 1};
        samples::textRow("alone", look(table("2", two, "LUT1D")), true, 2, asBgr);
        samples::textRow("before a lattice",
                         look(table("2", two, "LUT1D") + table("1", points(0, 1))), true, 2, asBgr);
        samples::textRow("without data", look("<LUT1D><size>1</size></LUT1D>"), true, 1, {0, 0, 0});
        samples::textRow("short", look(table("3", two, "LUT1D")), false, 3);
        samples::textRow("too long", look(table("99999999", two, "LUT1D")), false, 99999999);
    }
    void curves() { samples::compareCurve(m_format); }

    /// Nothing is kept of a table that does not decode, including the end of its domain.
    void domainAfterBadDigits() {
        Read_LUTFile lut(nullptr);
        QVERIFY(!m_format.read(lut, look(table("2", (hex(4) + points(0, 8)).left(191) + 'g'))));
        QCOMPARE(samples::cell(lut.domainMax3D), QVector<float>({1, 1, 1}));
        QVERIFY(
            !m_format.read(lut, look(table("2", (hex(4) + points(0, 2)).left(47) + 'g', "LUT1D"))));
        QCOMPARE(samples::cell(lut.domainMax1D), QVector<float>({1, 1, 1}));
    }

    void givenOrders() {
        const QByteArray text = look(table("2", points(0, 8)) + table("1", points(0, 1), "LUT1D"));
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.readInOrders(lut, text, true, true));
        QCOMPARE(samples::cell(lut.data3D[0][1][1]), QVector<float>({3 / 32.0F, 0.5F, 0.25F}));
        QCOMPARE(samples::curve(lut), QVector<float>({0, 0.5F, 0.25F}));
    }

    void probeDecodesNothing() {
        Read_LUTFile lut(nullptr);
        QVERIFY(m_format.read(lut, look(table("33", "no digits") + table("\"9\"", "x", "LUT1D")),
                              true));
        QCOMPARE(lut.size3D, 33);
        QCOMPARE(lut.size1D, 9);
        QVERIFY(lut.data3D == nullptr && lut.data1D == nullptr);
    }

    void refusesPipes() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("pipe"));
        QCOMPARE(mkfifo(qPrintable(path), 0600), 0);
        Read_LUTFile lut(nullptr);
        QVERIFY(!lut.ReadFile(samples::request(path, 5), false));
    }
};

QTEST_GUILESS_MAIN(TestLook)
#include "test_look.moc"
