// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "DecoderFields.h"

#include <QtTest>

#include <array>

// Tests replies of the standard family up to the number of supplies records, and truncated replies.
class StandardReplyTest : public QObject
{
    Q_OBJECT

private slots:
    void wholeReply();
    void wholeReplyRawFields_data();
    void wholeReplyRawFields();
    void cutReply_data();
    void cutReply();
    void bytesAfterTheLastRecordAreIgnored();
    void smallestReply();
    void textLengths_data();
    void textLengths();
    void textLengthBeyondTheEnd_data();
    void textLengthBeyondTheEnd();
    void textsKeepTheirBytes();
    void codeLists_data();
    void codeLists();
    void missingCodes_data();
    void missingCodes();
};

namespace {

constexpr int ReplyBytes = 66;
constexpr int HeaderBytes = 12;
constexpr int TextCapacity = 255; // without the terminating zero

// A standard reply with every field. Only the high bytes of lengths and record types are zero, so that every field that
// was read is visible.
QByteArray WholeReply()
{
    QByteArray reply = Hex("F0 F1 F2 F3 F4 F5 F6  17 1819 1A1B"); // 0: not read, 7: header bytes
    reply += Hex("0003") + "TOL"; // 12: vendor name
    reply += Hex("0004") + "K451"; // 17: product name
    reply += Hex("0005") + "SN-01"; // 23: serial number
    reply += Hex("2A2B 91"); // 30: reserved, status code
    reply += Hex("02") + "1f"; // 33: firmware version
    reply += Hex("03") + "xyz"; // 36: fifth text
    reply += Hex("02 1106 E100  01 110D"); // 40: errors, 45: warnings
    reply += Hex("3A 3B3C 3D3E"); // 48: reserved
    reply += Hex("02  0000 04") + "TN01" + Hex("1000 02 1F40"); // 53: supplies records
    return reply;
}

struct FieldsAtLength
{
    int bytes; // the least reply size for these fields to be read
    const char* names;
};

constexpr std::array<FieldsAtLength, 25> c_fieldsOfWholeReply{{
    {8, "byHead7"},
    {10, "byHead8"},
    {12, "byHead10"},
    {14, "byVenderNameLen dwVenderNameLen"},
    {17, "szVenderName"},
    {19, "byProductNameLen dwProductNameLen"},
    {23, "szProductName"},
    {25, "bySerialNumberLen dwSerialNumberLen"},
    {30, "szSerialNumber"},
    {32, "byReserved1"},
    {33, "byStatus dwStatus"},
    {34, "byFWVersionLen"},
    {36, "szFWVersion"},
    {37, "byExtraInfoLen dwExtraInfoLen"},
    {40, "szExtraInfo"},
    {41, "byErrorCount dwErrorCount"},
    {43, "byErrorCode"},
    {46, "byWarningCount dwWarningCount"},
    {48, "byWarningCode"},
    {49, "byReserved2"},
    {51, "byReserved3"},
    {53, "byReserved4"},
    {54, "bySupplyCount dwSupplyCount"},
    {61, "szSupplySerialNumber"},
    {66, "byRemainingToner dwRemainingToner"},
}};

QStringList FieldsWithin(int bytes)
{
    QStringList names;
    for (const FieldsAtLength& fields : c_fieldsOfWholeReply) {
        if (fields.bytes <= bytes) {
            names += Names(fields.names);
        }
    }
    names.sort();
    return names;
}

enum Text
{
    VENDOR,
    PRODUCT,
    SERIAL,
    FIRMWARE,
    EXTRA
};

constexpr std::array<const char*, 5> c_textFields{
    {"szVenderName", "szProductName", "szSerialNumber", "szFWVersion", "szExtraInfo"}};

using Texts = std::array<QByteArray, 5>;

// The three names have two-byte lengths, the other two texts one-byte lengths.
QByteArray WithLength(Text kind, const QByteArray& text)
{
    const char low = static_cast<char>(text.size() & 0xFF);
    const char high = static_cast<char>(text.size() >> 8);
    return kind <= SERIAL ? QByteArray(1, high) + low + text : QByteArray(1, low) + text;
}

// A reply with these texts, status code 0x13, one error 0x2102, no warnings and no supplies.
QByteArray ReplyWithTexts(const Texts& texts)
{
    return QByteArray(HeaderBytes, '\0') + WithLength(VENDOR, texts[VENDOR]) + WithLength(PRODUCT, texts[PRODUCT]) +
        WithLength(SERIAL, texts[SERIAL]) + Hex("0000 13") + WithLength(FIRMWARE, texts[FIRMWARE]) +
        WithLength(EXTRA, texts[EXTRA]) + Hex("01 2102  00  00 0000 0000  00");
}

// The start of a reply without texts, up to the number of errors.
QByteArray ReplyUpToCodes()
{
    return QByteArray(HeaderBytes, '\0') + Hex("0000 0000 0000 0000 00 00 00");
}

} // namespace

void StandardReplyTest::wholeReply()
{
    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, WholeReply()), 1U);

    QCOMPARE(status.szVenderName, "TOL");
    QCOMPARE(status.dwVenderNameLen, 3UL);
    QCOMPARE(status.szProductName, "K451");
    QCOMPARE(status.dwProductNameLen, 4UL);
    QCOMPARE(status.szSerialNumber, "SN-01");
    QCOMPARE(status.dwSerialNumberLen, 5UL);
    QCOMPARE(status.dwStatus, 0x91UL);
    QCOMPARE(status.szFWVersion, "1f");
    QCOMPARE(status.szExtraInfo, "xyz");
    QCOMPARE(status.dwExtraInfoLen, 3UL);
    QCOMPARE(status.dwErrorCount, 2UL);
    QCOMPARE(Codes(status.vecErrorCode), (QList<unsigned long>{0x1106, 0xE100}));
    QCOMPARE(status.dwWarningCount, 1UL);
    QCOMPARE(Codes(status.vecWarningCode), (QList<unsigned long>{0x110D}));
    QCOMPARE(status.dwSupplyCount, 2UL);
    QCOMPARE(status.szSupplySerialNumber, "TN01");
    QCOMPARE(status.dwRemainingToner, 8000UL);
}

void StandardReplyTest::wholeReplyRawFields_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("byHead7") << Hex("17 00");
    QTest::newRow("byHead8") << Hex("18 19 00");
    QTest::newRow("byHead10") << Hex("1A 1B 00");
    QTest::newRow("byVenderNameLen") << Hex("00 03 00");
    QTest::newRow("byProductNameLen") << Hex("00 04 00");
    QTest::newRow("bySerialNumberLen") << Hex("00 05 00");
    QTest::newRow("byReserved1") << Hex("2A 2B 00");
    QTest::newRow("byStatus") << Hex("91 00");
    QTest::newRow("byFWVersionLen") << Hex("02 00");
    QTest::newRow("byExtraInfoLen") << Hex("03 00");
    QTest::newRow("byErrorCount") << Hex("02 00");
    QTest::newRow("byErrorCode") << Hex("E1 00 00");
    QTest::newRow("byWarningCount") << Hex("01 00");
    QTest::newRow("byWarningCode") << Hex("11 0D 00");
    QTest::newRow("byReserved2") << Hex("3A 00");
    QTest::newRow("byReserved3") << Hex("3B 3C 00");
    QTest::newRow("byReserved4") << Hex("3D 3E 00");
    QTest::newRow("bySupplyCount") << Hex("02 00");
    QTest::newRow("byRemainingToner") << Hex("1F 40 00");
}

void StandardReplyTest::wholeReplyRawFields()
{
    QFETCH(const QByteArray, bytes);

    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, WholeReply()), 1U);
    QCOMPARE(RawField(status, QString::fromLatin1(QTest::currentDataTag())), bytes);
}

void StandardReplyTest::cutReply_data()
{
    QTest::addColumn<int>("bytes");

    QCOMPARE(WholeReply().size(), ReplyBytes);
    for (int bytes = 0; bytes <= ReplyBytes; ++bytes) {
        QTest::addRow("%d bytes", bytes) << bytes;
    }
}

// Only the whole reply is accepted, but every field that is complete is read, and no other.
void StandardReplyTest::cutReply()
{
    QFETCH(const int, bytes);
    const QList<unsigned long> errors{0x1106, 0xE100};
    const int wholeErrors = bytes < 43 ? 0 : bytes < 45 ? 1 : 2;

    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, WholeReply().left(bytes)), bytes == ReplyBytes ? 1U : 0U);
    QStringList filled = FilledFields(status);
    filled.sort();
    QCOMPARE(filled, FieldsWithin(bytes));
    QCOMPARE(Codes(status.vecErrorCode), errors.mid(0, wholeErrors));
    QCOMPARE(Codes(status.vecWarningCode), bytes < 48 ? QList<unsigned long>{} : QList<unsigned long>{0x110D});

    UtilPrinterStatus inPlace;
    QCOMPARE(ParseStandardCut(inPlace, WholeReply(), bytes), bytes == ReplyBytes ? 1U : 0U);
    QCOMPARE(FilledFields(inPlace), FilledFields(status));
}

void StandardReplyTest::bytesAfterTheLastRecordAreIgnored()
{
    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, WholeReply() + Hex("1000 02 0001")), 1U);
    QCOMPARE(status.dwSupplyCount, 2UL);
    QCOMPARE(status.dwRemainingToner, 8000UL);
}

void StandardReplyTest::smallestReply()
{
    const QByteArray reply(31, '\0');
    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, reply), 1U);
    QCOMPARE(FilledFields(status), QStringList());
    QVERIFY(status.vecErrorCode.empty());
    QVERIFY(status.vecWarningCode.empty());
    UtilPrinterStatus cut;
    QCOMPARE(ParseStandard(cut, reply.left(30)), 0U);
}

void StandardReplyTest::textLengths_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("length");

    for (const Text kind : {VENDOR, PRODUCT, SERIAL, FIRMWARE, EXTRA}) {
        for (const int length : {0, 1, 254, 255}) {
            QTest::addRow("%s of %d", c_textFields[kind], length) << static_cast<int>(kind) << length;
        }
    }
    for (const Text kind : {VENDOR, PRODUCT, SERIAL}) {
        for (const int length : {256, 257, 300, 512, 65535}) {
            QTest::addRow("%s of %d", c_textFields[kind], length) << static_cast<int>(kind) << length;
        }
    }
}

// A text longer than its field is cut. Neighbouring members and later fields are unaffected.
void StandardReplyTest::textLengths()
{
    QFETCH(const int, kind);
    QFETCH(const int, length);
    Texts texts{{"vendor", "product", "serial", "firmware", "extra"}};
    texts[kind] = QByteArray(length, 'x');

    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, ReplyWithTexts(texts)), 1U);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const QByteArray expected = texts[i].left(TextCapacity);
        QCOMPARE(RawField(status, QLatin1String(c_textFields[i])),
                 expected + QByteArray(TextCapacity + 1 - expected.size(), '\0'));
    }
    QCOMPARE(status.dwVenderNameLen, static_cast<unsigned long>(texts[VENDOR].size()));
    QCOMPARE(status.dwProductNameLen, static_cast<unsigned long>(texts[PRODUCT].size()));
    QCOMPARE(status.dwSerialNumberLen, static_cast<unsigned long>(texts[SERIAL].size()));
    QCOMPARE(RawField(status, QStringLiteral("byFWVersionLen")), QByteArray(1, char(texts[FIRMWARE].size())) + '\0');
    QCOMPARE(status.dwExtraInfoLen, static_cast<unsigned long>(texts[EXTRA].size()));
    QCOMPARE(status.dwStatus, 0x13UL);
    QCOMPARE(Codes(status.vecErrorCode), (QList<unsigned long>{0x2102}));
}

void StandardReplyTest::textLengthBeyondTheEnd_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("field");
    const QByteArray header(HeaderBytes, '\0');
    const QByteArray namesAndStatus = header + Hex("0000 0000 0000 0000 13");

    QTest::newRow("vendor name") << header + Hex("0005 41424344") << "szVenderName";
    QTest::newRow("vendor name of 65535") << header + Hex("FFFF 41424344") << "szVenderName";
    QTest::newRow("product name") << header + Hex("0000 0005 41424344") << "szProductName";
    QTest::newRow("serial number") << header + Hex("0000 0000 0005 41424344") << "szSerialNumber";
    QTest::newRow("firmware version") << namesAndStatus + Hex("05 41424344") << "szFWVersion";
    QTest::newRow("firmware version of 255") << namesAndStatus + Hex("FF 41424344") << "szFWVersion";
    QTest::newRow("fifth text") << namesAndStatus + Hex("00 05 41424344") << "szExtraInfo";
}

void StandardReplyTest::textLengthBeyondTheEnd()
{
    QFETCH(const QByteArray, reply);
    QFETCH(const QString, field);

    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, reply), 0U);
    QVERIFY(!FilledFields(status).contains(field));
}

void StandardReplyTest::textsKeepTheirBytes()
{
    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, ReplyWithTexts({{"拓玛", Hex("41 00 42"), Hex("FF FE 80"), "", ""}})), 1U);
    QCOMPARE(QString::fromUtf8(status.szVenderName), QStringLiteral("拓玛"));
    QCOMPARE(status.szProductName, "A");
    QCOMPARE(RawField(status, QStringLiteral("szProductName")).left(4), Hex("41 00 42 00"));
    QCOMPARE(RawField(status, QStringLiteral("szSerialNumber")).left(4), Hex("FF FE 80 00"));
}

void StandardReplyTest::codeLists_data()
{
    QTest::addColumn<int>("errors");
    QTest::addColumn<int>("warnings");

    QTest::newRow("none") << 0 << 0;
    QTest::newRow("errors alone") << 3 << 0;
    QTest::newRow("warnings alone") << 0 << 2;
    QTest::newRow("as many as fit") << 255 << 255;
}

void StandardReplyTest::codeLists()
{
    QFETCH(const int, errors);
    QFETCH(const int, warnings);
    QByteArray reply = ReplyUpToCodes() + static_cast<char>(errors);
    QList<unsigned long> expectedErrors;
    for (int i = 0; i < errors; ++i) {
        reply += Hex("F1") + static_cast<char>(i);
        expectedErrors.append(0xF100UL + static_cast<unsigned long>(i));
    }
    reply += static_cast<char>(warnings);
    QList<unsigned long> expectedWarnings;
    for (int i = 0; i < warnings; ++i) {
        reply += static_cast<char>(i) + Hex("0C");
        expectedWarnings.append(static_cast<unsigned long>(i) * 0x100UL + 0x0C);
    }

    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, reply + Hex("00 0000 0000 00")), 1U);
    QCOMPARE(status.dwErrorCount, static_cast<unsigned long>(errors));
    QCOMPARE(Codes(status.vecErrorCode), expectedErrors);
    QCOMPARE(status.dwWarningCount, static_cast<unsigned long>(warnings));
    QCOMPARE(Codes(status.vecWarningCode), expectedWarnings);
}

void StandardReplyTest::missingCodes_data()
{
    QTest::addColumn<QByteArray>("codes");
    QTest::addColumn<QList<unsigned long>>("errors");
    QTest::addColumn<QList<unsigned long>>("warnings");
    using List = QList<unsigned long>;

    QTest::newRow("two errors of three") << Hex("03 1106 110D") << List{0x1106, 0x110D} << List{};
    QTest::newRow("half an error") << Hex("02 1106 11") << List{0x1106} << List{};
    QTest::newRow("no error of 255") << Hex("FF") << List{} << List{};
    QTest::newRow("two warnings of three") << Hex("00 03 1106 110D") << List{} << List{0x1106, 0x110D};
    QTest::newRow("half a warning") << Hex("01 1200 01 11") << List{0x1200} << List{};
}

void StandardReplyTest::missingCodes()
{
    QFETCH(const QByteArray, codes);
    QFETCH(const QList<unsigned long>, errors);
    QFETCH(const QList<unsigned long>, warnings);

    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, ReplyUpToCodes() + codes), 0U);
    QCOMPARE(Codes(status.vecErrorCode), errors);
    QCOMPARE(Codes(status.vecWarningCode), warnings);
    QCOMPARE(status.dwErrorCount, static_cast<unsigned long>(static_cast<unsigned char>(codes.at(0))));
}

QTEST_GUILESS_MAIN(StandardReplyTest)

#include "tst_standardreply.moc"
