// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "SampleReplies.h"
#include "status/PrinterReport.h"
#include "status/ReportJson.h"

#include <QDir>
#include <QJsonArray>
#include <QtTest>

class PrinterReportTest : public QObject
{
    Q_OBJECT

private slots:
    void everyFieldOfAStandardReply();
    void everyFieldOfAQZReply();
    void missingFieldsAreUnknown();
    void tonerOutOfRangeIsUnknown_data();
    void tonerOutOfRangeIsUnknown();
    void rejectedReplySaysWhereItEnds();
    void layoutAgreesWithTheDecoder_data();
    void layoutAgreesWithTheDecoder();
    void noErrorCodeOfTheQZFamily();
    void hiddenSerialNumbers();
};

namespace {

QJsonArray Codes(const QJsonValue& conditions)
{
    QJsonArray codes;
    const QJsonArray all = conditions.toArray();
    for (const QJsonValue& condition : all) {
        codes.append(condition.toObject().value(QStringLiteral("code")));
    }
    return codes;
}

QJsonValue Member(const QJsonObject& json, const char* object, const char* member)
{
    return json.value(QLatin1String(object)).toObject().value(QLatin1String(member));
}

// Checks a layout as far as it can be checked without decoding: the fields follow each other and fill the reply.
void CheckLayout(const PrinterFamily& family, const QByteArray& bytes)
{
    const DecodedReply reply = DecodeReply(family, bytes);
    QCOMPARE(reply.isAccepted, !reply.layout.fault.has_value());
    int end = 0;
    for (const PlacedField& placed : reply.layout.fields) {
        QCOMPARE(placed.offset, end);
        QVERIFY(placed.size >= 0);
        end += placed.size;
    }
    if (reply.isAccepted) {
        QCOMPARE(end, reply.bytes.size());
    } else {
        QCOMPARE(reply.layout.fault->offset, end);
        QCOMPARE(reply.layout.fault->left, reply.bytes.size() - end);
        QVERIFY(reply.layout.fault->needed > reply.layout.fault->left);
    }
}

} // namespace

void PrinterReportTest::everyFieldOfAStandardReply()
{
    const DecodedReply reply = DecodeReply(StandardFamily(), EncodeStandardReply(FullReply()));
    QVERIFY(reply.isAccepted);
    const QJsonObject json = ReplyJson(reply);
    QCOMPARE(json.value(QStringLiteral("family")).toString(), QStringLiteral("standard"));
    QCOMPARE(Member(json, "status", "name").toString(), QStringLiteral("PS_PRINTING"));
    QCOMPARE(Member(json, "status", "raw").toInt(), 16);
    QCOMPARE(Member(json, "toner", "ratio").toDouble(), 0.789);
    QCOMPARE(Member(json, "toner", "raw").toInt(), 7890);
    QCOMPARE(Codes(json.value(QStringLiteral("errors"))), (QJsonArray{0x1106, 0x11A0}));
    QCOMPARE(Codes(json.value(QStringLiteral("warnings"))), (QJsonArray{0x110D, 0x1121, 0x0001}));
    QCOMPARE(json.value(QStringLiteral("vendor")).toString(), QStringLiteral("托尔玛 Tolmar"));
    QCOMPARE(json.value(QStringLiteral("product")).toString(), QStringLiteral("QV K4510A"));
    QCOMPARE(json.value(QStringLiteral("firmware")).toString(), QStringLiteral("1.2.3"));
    QCOMPARE(json.value(QStringLiteral("serial")).toString(), QStringLiteral("SN-0001"));
    QCOMPARE(Member(json, "cartridge", "serial").toString(), QStringLiteral("墨粉-7"));
    QCOMPARE(Member(json, "cartridge", "type").toInt(), 3);
    QCOMPARE(Member(json, "cartridge", "waste_toner").toInt(), 65535);
    QCOMPARE(Member(json, "cartridge", "drum_rotation").toInt(), 102);
    QCOMPARE(Member(json, "cartridge", "pages").toDouble(), 4294967295.0);
    QCOMPARE(Member(json, "cartridge", "prints").toInt(), 104);
    QCOMPARE(Member(json, "counters", "dots").toInt(), 105);
    QCOMPARE(Member(json, "counters", "pages").toInt(), 70000);
    QCOMPARE(Member(json, "counters", "prints").toInt(), 107);
}

void PrinterReportTest::everyFieldOfAQZReply()
{
    QZReply wire;
    wire.items = {QZJobState(2), QZError(0x11B0), QZError(0x1106), QZWarning(0x110D), QZToner(64)};
    const QJsonObject json = ReplyJson(DecodeReply(QZFamily(), EncodeQZReply(wire)));
    QCOMPARE(json.value(QStringLiteral("family")).toString(), QStringLiteral("qz"));
    QCOMPARE(Member(json, "status", "name").toString(), QStringLiteral("PS_PRINTING"));
    QCOMPARE(Member(json, "status", "raw").toInt(), 8);
    QCOMPARE(Member(json, "toner", "ratio").toDouble(), 0.64);
    QCOMPARE(Member(json, "toner", "raw").toInt(), 64);
    QCOMPARE(Codes(json.value(QStringLiteral("errors"))), (QJsonArray{0x11B0, 0x1106}));
    QCOMPARE(Codes(json.value(QStringLiteral("warnings"))), (QJsonArray{0x110D}));
}

void PrinterReportTest::missingFieldsAreUnknown()
{
    const DecodedReply reply = DecodeReply(StandardFamily(), EncodeStandardReply(StandardReply()));
    QVERIFY(reply.isAccepted);
    const QJsonObject json = ReplyJson(reply);
    QVERIFY(Member(json, "toner", "ratio").isNull());
    QVERIFY(Member(json, "toner", "raw").isNull());
    QVERIFY(Member(json, "cartridge", "prints").isNull());
    QVERIFY(Member(json, "counters", "pages").isNull());
    QVERIFY(json.value(QStringLiteral("serial")).isNull());
    QCOMPARE(Member(json, "status", "raw").toInt(-1), 0);
    // This reply is valid but says nothing.
    const QJsonObject silent = ReplyJson(DecodeReply(QZFamily(), QByteArray()));
    QVERIFY(Member(silent, "status", "raw").isNull());
    QCOMPARE(Member(silent, "status", "name").toString(), QStringLiteral("PS_UNKNOWN"));
}

void PrinterReportTest::tonerOutOfRangeIsUnknown_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isQZ");
    QTest::addColumn<int>("raw");
    QTest::addColumn<double>("ratio"); // -1: unknown
    QTest::newRow("standard, full") << StandardBytes(RawReady, 10000) << false << 10000 << 1.0;
    QTest::newRow("standard, too much") << StandardBytes(RawReady, 10001) << false << 10001 << -1.0;
    QTest::newRow("standard, empty") << StandardBytes(RawReady, 0) << false << 0 << 0.0;
    QTest::newRow("qz, full") << QZBytes(100) << true << 100 << 1.0;
    QTest::newRow("qz, too much") << QZBytes(255) << true << 255 << -1.0;
}

void PrinterReportTest::tonerOutOfRangeIsUnknown()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isQZ);
    QFETCH(int, raw);
    QFETCH(double, ratio);
    const DecodedReply reply = DecodeReply(isQZ ? QZFamily() : StandardFamily(), bytes);
    QCOMPARE(static_cast<int>(reply.rawToner().value_or(0)), raw);
    QCOMPARE(reply.tonerRatio().value_or(-1), ratio);
}

void PrinterReportTest::rejectedReplySaysWhereItEnds()
{
    StandardReply wire;
    wire.vendorName = "abc";
    wire.announced.vendorName = quint16(500);
    const QByteArray bytes = EncodeStandardReply(wire);
    const DecodedReply reply = DecodeReply(StandardFamily(), bytes);
    QVERIFY(!reply.isAccepted);
    QVERIFY(reply.layout.fault.has_value());
    QCOMPARE(reply.layout.fault->field, ReplyField::VendorName);
    QCOMPARE(reply.layout.fault->offset, 14);
    QCOMPARE(reply.layout.fault->needed, 500);
    QCOMPARE(reply.layout.fault->left, bytes.size() - 14);
    QVERIFY(!reply.contains(ReplyField::VendorNameLength));
    QCOMPARE(reply.state.enCurrentStatus, static_cast<int>(PS_OFFLINE));
}

void PrinterReportTest::layoutAgreesWithTheDecoder_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("full standard reply") << EncodeStandardReply(FullReply());
    QZReply wire;
    wire.items = {
        QZMachineState(1), {0x0006, QByteArray(2, '\1')}, {0x0020, QByteArray(2, '\0')},  {0x0009, QByteArray()},
        QZWarning(0x110D), {0x001D, QByteArray(1, '\0')}, {0x0007, QByteArray(255, '\0')}};
    QTest::newRow("odd QZ reply") << EncodeQZReply(wire);
    for (const char* folder : {"/standard-reply", "/qz-reply"}) {
        const QDir directory(QStringLiteral(REPLY_CORPUS) + QLatin1String(folder));
        const QFileInfoList files = directory.entryInfoList(QDir::Files);
        QVERIFY(!files.isEmpty());
        for (const QFileInfo& info : files) {
            QFile file(info.filePath());
            QVERIFY(file.open(QIODevice::ReadOnly));
            QTest::newRow(qPrintable(info.fileName())) << file.readAll();
        }
    }
}

// Every beginning of a reply, decoded as a reply of either family.
void PrinterReportTest::layoutAgreesWithTheDecoder()
{
    QFETCH(QByteArray, bytes);
    for (int size = 0; size <= bytes.size(); ++size) {
        CheckLayout(StandardFamily(), bytes.left(size));
        CheckLayout(QZFamily(), bytes.left(size));
        if (QTest::currentTestFailed()) {
            qWarning("the first %d bytes", size);
            return;
        }
    }
}

// The codes of a reply whose last code is 0000 do not count: neither list may be longer than the other.
void PrinterReportTest::noErrorCodeOfTheQZFamily()
{
    QZReply wire;
    wire.items = {QZMachineState(1), QZError(0x11B0), QZError(0), QZWarning(0)};
    const DecodedReply reply = DecodeReply(QZFamily(), EncodeQZReply(wire));
    QVERIFY(reply.isAccepted);
    QVERIFY(reply.errorCodes().empty());
    QVERIFY(reply.warningCodes().empty());
    QVERIFY(ReplyJson(reply).value(QStringLiteral("errors")).toArray().isEmpty());
}

void PrinterReportTest::hiddenSerialNumbers()
{
    PrinterReport report;
    report.info.strURI = QStringLiteral("usb://Tolmar/K4510A?serial=SN-0001&interface=1");
    report.reply = DecodeReply(StandardFamily(), EncodeStandardReply(FullReply()));
    HideSerialNumbers(report);
    const QByteArray text = JsonText(PrinterJson(report), false);
    QVERIFY(!text.contains("SN-0001"));
    QVERIFY(!text.contains("墨粉-7"));
    QVERIFY(!report.reply.bytes.contains("SN-0001"));
    QVERIFY(!report.reply.bytes.contains("墨粉-7"));
    QCOMPARE(QByteArray(report.reply.fields->szSerialNumber), QByteArray());
    QCOMPARE(report.info.strURI, QStringLiteral("usb://Tolmar/K4510A?serial=&interface=1"));
}

QTEST_GUILESS_MAIN(PrinterReportTest)

#include "tst_printerreport.moc"
