// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "SampleReplies.h"
#include "status/FieldMeaning.h"

#include <QtTest>

class FieldMeaningTest : public QObject
{
    Q_OBJECT

private slots:
    void namesAreComplete();
    void valuesOfAStandardReply();
    void repeatedRecords();
    void valuesOfAQZReply();
    void rejectedReply();
};

namespace {

// "key value" for each field that the decoder reads, in the order of the reply, and its explanation if it has one.
QStringList Explained(const DecodedReply& reply)
{
    QStringList lines;
    const QVector<FieldMeaning> meanings = MeaningsOf(reply);
    for (int i = 0; i < meanings.size(); ++i) {
        if (meanings.at(i).value.isValid()) {
            const QString value = meanings.at(i).value.toString();
            const QString line = QLatin1String(NameOf(reply.layout.fields.at(i).field).key) + QLatin1Char(' ') + value;
            lines.append(meanings.at(i).english.isEmpty() ? line
                                                          : line + QStringLiteral(": ") + meanings.at(i).english);
        }
    }
    return lines;
}

QStringList Lines(const char* text)
{
    return QString::fromUtf8(text).split(QLatin1Char('\n'));
}

} // namespace

void FieldMeaningTest::namesAreComplete()
{
    QSet<QString> keys;
    for (int i = 0; i < ReplyFieldCount; ++i) {
        const FieldName& name = NameOf(static_cast<ReplyField>(i));
        QVERIFY(*name.english != 0 && *name.chinese != 0);
        keys.insert(QString::fromLatin1(name.key));
    }
    QCOMPARE(keys.size(), ReplyFieldCount);
}

void FieldMeaningTest::valuesOfAStandardReply()
{
    const QStringList lines = Explained(DecodeReply(StandardFamily(), EncodeStandardReply(FullReply())));
    QCOMPARE(lines,
             Lines("head_7 0\nhead_8 0\nhead_10 0\nvendor_name_length 16\nvendor_name 托尔玛 Tolmar\n"
                   "product_name_length 9\nproduct_name QV K4510A\nserial_number_length 7\n"
                   "serial_number SN-0001\nreserved_1 0\nstatus 16: PS_PRINTING Printing\n"
                   "firmware_version_length 5\nfirmware_version 1.2.3\nextra_info_length 5\nextra_info extra\n"
                   "error_count 2\n"
                   "error_code 4358: 0x1106 ERR_FRONT_COVER_OPEN Front cover open (Close the front cover)\n"
                   "error_code 4512: 0x11A0 ERR_TRAY_EMPTY Paper tray is empty (Please insert the paper)\n"
                   "warning_count 3\n"
                   "warning_code 4365: 0x110D ERR_TONER_LOW Toner low (Replace the toner cartridge)\n"
                   "warning_code 4385: 0x1121 ERR_WASTE_TONER_NEAR_FULL The waste toner will be full "
                   "(Replace the toner cartridge)\n"
                   "warning_code 1: 0x0001 ERR_UNKNOWN Unknown error status\n"
                   "reserved_2 0\nreserved_3 0\nreserved_4 0\nsupply_count 10\nsupply_serial_number 墨粉-7\n"
                   "supply_type 3\nremaining_toner 7890: 78.90%\nwaste_toner 65535\ndrum_rotation 102\n"
                   "cartridge_pages 4294967295\ncartridge_prints 104\nprinted_dots 105\nprinter_pages 70000\n"
                   "printer_prints 107"));
}

// The reply keeps the last record of a type. A record without data has the first byte of the last record with data.
void FieldMeaningTest::repeatedRecords()
{
    StandardReply wire;
    wire.supplies = {{0x1000, QByteArray()},
                     SupplyValue(SupplyField::RemainingToner, 0x0102),
                     {0x1001, QByteArray()},
                     SupplyValue(SupplyField::RemainingToner, 500),
                     {0x2000, QByteArray(255, 'x')}};
    const DecodedReply reply = DecodeReply(StandardFamily(), EncodeStandardReply(wire));
    QVERIFY(reply.isAccepted);
    QCOMPARE(Explained(reply).mid(Explained(reply).indexOf(QStringLiteral("supply_count 5"))),
             Lines("supply_count 5\nremaining_toner 0: 0.00%\nremaining_toner 258: 2.58%\nwaste_toner 1\n"
                   "remaining_toner 500: 5.00%"));
    QCOMPARE(reply.state.dwWasteToner, 1UL);
}

void FieldMeaningTest::valuesOfAQZReply()
{
    QZReply wire;
    wire.items = {QZMachineState(2), QZError(0x11B0), QZJobState(3),    QZError(0),
                  QZWarning(0x110D), QZToner(64),     QZMachineState(9)};
    QCOMPARE(Explained(DecodeReply(QZFamily(), EncodeQZReply(wire))),
             Lines("item_count 7\nmachine_state 4: PS_INITIALIZE Initialize\n"
                   "error_item 4528: 0x11B0 ERR_JAM_INSIDE Paper jam inside (Pull out the paper)\n"
                   "job_state 9: PS_SCANNING Scanning\nerror_item 0: none\n"
                   "warning_item 4365: 0x110D ERR_TONER_LOW Toner low (Replace the toner cartridge)\n"
                   "toner_item 64: 64.00%\nmachine_state 9: PS_SCANNING Scanning"));
}

void FieldMeaningTest::rejectedReply()
{
    QByteArray bytes = EncodeStandardReply(FullReply());
    for (int size = 0; size < bytes.size(); ++size) {
        const DecodedReply reply = DecodeReply(StandardFamily(), bytes.left(size));
        QCOMPARE(MeaningsOf(reply).size(), reply.layout.fields.size());
    }
}

QTEST_GUILESS_MAIN(FieldMeaningTest)

#include "tst_fieldmeaning.moc"
