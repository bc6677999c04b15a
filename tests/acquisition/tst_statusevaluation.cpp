// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "decoding/StatusCodeMapping.h"
#include "SampleRecords.h"
#include "SampleReplies.h"
#include "StatusWorker.h"

#include <QtTest>

// Tests the evaluation of replies: bytes in, state out.
class StatusEvaluationTest : public QObject
{
    Q_OBJECT

private slots:
    void standardReplyFillsEveryField();
    void standardStatus_data();
    void standardStatus();
    void standardConditions_data();
    void standardConditions();
    void texts_data();
    void texts();
    void equalValuesAreNotTouched();
    void similarTextsAreReplaced();
    void nothingOfAnEarlierReplyRemains();
    void qzReplyReplacesEveryField();
    void qzStatusItems_data();
    void qzStatusItems();
    void qzConditions_data();
    void qzConditions();
    void qzLenientStart_data();
    void qzLenientStart();
    void printerIsNotTouched();
    void bytesAreNotModified();
};

using Conditions = QList<enErrorStatus>;
Q_DECLARE_METATYPE(Conditions)

namespace {

using Evaluation = StatusWorker::Evaluation;
constexpr Evaluation Standard = &TrdGetPrinterStatus::CheckPrinterStatus;
constexpr Evaluation QZ = &TrdGetPrinterStatus::CheckPrinterStatus_QZ;

stPrinterState StateAfter(Evaluation evaluation, const QByteArray& bytes)
{
    StatusWorker worker;
    worker.stCurrent.stState = FilledState();
    if (worker.evaluate(evaluation, bytes) != 0) {
        qFatal("the reply was rejected");
    }
    return worker.stCurrent.stState;
}

} // namespace

void StatusEvaluationTest::standardReplyFillsEveryField()
{
    QCOMPARE(Words(StateAfter(Standard, EncodeStandardReply(FullReply()))), Words(FullReplyState()));
}

void StatusEvaluationTest::standardStatus_data()
{
    QTest::addColumn<int>("raw");
    QTest::addColumn<int>("status");

    QTest::newRow("ready") << 0 << 3;
    QTest::newRow("initialize") << 1 << 4;
    QTest::newRow("busy") << 2 << 5;
    QTest::newRow("cancelling") << 3 << 6;
    QTest::newRow("4") << 4 << 0;
    QTest::newRow("15") << 15 << 0;
    QTest::newRow("printing") << 16 << 8;
    QTest::newRow("scanning") << 17 << 9;
    QTest::newRow("copying") << 18 << 10;
    QTest::newRow("reporting") << 19 << 11;
    QTest::newRow("20") << 20 << 0;
    QTest::newRow("255") << 255 << 0;
}

void StatusEvaluationTest::standardStatus()
{
    QFETCH(int, raw);
    StandardReply reply;
    reply.status = static_cast<quint8>(raw);
    QTEST(StateAfter(Standard, EncodeStandardReply(reply)).enCurrentStatus, "status");
}

void StatusEvaluationTest::standardConditions_data()
{
    QTest::addColumn<QVector<quint16>>("codes");
    QTest::addColumn<Conditions>("conditions");

    QTest::newRow("none") << QVector<quint16>{} << Conditions{};
    QTest::newRow("one") << QVector<quint16>{0x1106} << Conditions{ERR_FRONT_COVER_OPEN};
    QTest::newRow("two, in order") << QVector<quint16>{0x11A0, 0x1106}
                                   << Conditions{ERR_TRAY_EMPTY, ERR_FRONT_COVER_OPEN};
    QTest::newRow("the same twice") << QVector<quint16>{0x1106, 0x1106}
                                    << Conditions{ERR_FRONT_COVER_OPEN, ERR_FRONT_COVER_OPEN};
    QTest::newRow("unknown") << QVector<quint16>{0x1107, 0xFFFF} << Conditions{ERR_UNKNOWN, ERR_UNKNOWN};
    QTest::newRow("no code") << QVector<quint16>{0} << Conditions{ERR_UNKNOWN};
    Conditions many;
    for (int i = 0; i < 255; ++i) {
        many.append(ERR_COOLING);
    }
    QTest::newRow("255") << QVector<quint16>(255, 0x1140) << many;
}

void StatusEvaluationTest::standardConditions()
{
    QFETCH(QVector<quint16>, codes);
    QFETCH(Conditions, conditions);
    StandardReply reply;
    reply.errorCodes = codes;
    stPrinterState state = StateAfter(Standard, EncodeStandardReply(reply));
    QCOMPARE(state.listError, conditions);
    QCOMPARE(state.iNumberOfError, conditions.size());
    QCOMPARE(state.listWarning, Conditions{});
    QCOMPARE(state.iNumberOfWarning, 0);

    // Warnings are treated like errors.
    std::swap(reply.errorCodes, reply.warningCodes);
    state = StateAfter(Standard, EncodeStandardReply(reply));
    QCOMPARE(state.listWarning, conditions);
    QCOMPARE(state.iNumberOfWarning, conditions.size());
    QCOMPARE(state.listError, Conditions{});
    QCOMPARE(state.iNumberOfError, 0);
}

void StatusEvaluationTest::texts_data()
{
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<QString>("text");

    QTest::newRow("empty") << QByteArray() << "";
    QTest::newRow("ASCII") << QByteArray("QV K4510A") << "QV K4510A";
    QTest::newRow("UTF-8") << QByteArray("打印机") << "打印机";
    QTest::newRow("zero byte ends it") << QByteArray("ab\0cd", 5) << "ab";
    QTest::newRow("zero byte first") << QByteArray("\0cd", 3) << "";
    QTest::newRow("percent sign") << QByteArray("100%s%n") << "100%s%n";
    QTest::newRow("fills the supply's field") << QByteArray(64, 's') << QString(64, QLatin1Char('s'));
}

void StatusEvaluationTest::texts()
{
    QFETCH(QByteArray, sent);
    QFETCH(QString, text);
    StandardReply reply;
    reply.vendorName = sent;
    reply.productName = sent;
    reply.serialNumber = sent;
    reply.firmwareVersion = sent;
    reply.supplies = {SupplySerialNumber(sent)};
    const stPrinterState state = StateAfter(Standard, EncodeStandardReply(reply));
    QCOMPARE(state.strVenderName, text);
    QCOMPARE(state.strProductName, text);
    QCOMPARE(state.strPrinterSerialNumber, text);
    QCOMPARE(state.strFWVersion, text);
    QCOMPARE(state.strSupplySerialNumber, text);
}

// Tests every pair of consecutive replies. The texts begin alike, and some have bytes that mean another text in
// Latin-1.
void StatusEvaluationTest::equalValuesAreNotTouched()
{
    const QByteArray bytes = EncodeStandardReply(FullReply());
    StatusWorker worker;
    QCOMPARE(worker.evaluate(Standard, bytes), 0);
    const stPrinterState& state = worker.stCurrent.stState;
    const QChar* const characters = state.strPrinterSerialNumber.constData();
    const auto conditions = state.listError.cbegin();
    QCOMPARE(worker.evaluate(Standard, bytes), 0);
    QCOMPARE(state.strPrinterSerialNumber.constData(), characters);
    QVERIFY(!state.listError.isEmpty() && state.listError.cbegin() == conditions);
}

// Equal codes, but not equal texts: a reply's text ends at its first zero, and a byte above 0x7F is no character.
void StatusEvaluationTest::similarTextsAreReplaced()
{
    StandardReply reply = FullReply();
    StatusWorker worker;
    QString& text = worker.stCurrent.stState.strPrinterSerialNumber;
    text = QString::fromUtf8(reply.serialNumber) + QChar::Null;
    QCOMPARE(worker.evaluate(Standard, EncodeStandardReply(reply)), 0);
    QCOMPARE(text, QString::fromUtf8(reply.serialNumber));
    reply.serialNumber = "\x80";
    text = QChar(0x80);
    QCOMPARE(worker.evaluate(Standard, EncodeStandardReply(reply)), 0);
    QCOMPARE(text, QString(QChar::ReplacementCharacter));
}

void StatusEvaluationTest::nothingOfAnEarlierReplyRemains()
{
    const QVector<QString> texts{QString(),
                                 QStringLiteral("a"),
                                 QStringLiteral("ab"),
                                 QStringLiteral("b"),
                                 QStringLiteral("aé"),
                                 QStringLiteral("aÃ©"),
                                 QStringLiteral("打印机"),
                                 QStringLiteral("打印"),
                                 QString(64, QLatin1Char('a'))};
    const QVector<QVector<quint16>> codes{{}, {0x1106}, {0x1106, 0x11A0}, {0x11A0, 0x1106}, {0x1107}};
    StatusWorker worker;
    const auto evaluate = [&](int i) {
        StandardReply reply;
        reply.vendorName = texts.at(i % texts.size()).toUtf8();
        reply.supplies = {SupplySerialNumber(reply.vendorName)};
        reply.errorCodes = codes.at(i % codes.size());
        QCOMPARE(worker.evaluate(Standard, EncodeStandardReply(reply)), 0);
    };
    const int combinations = texts.size() * codes.size(); // the sizes have no common divisor
    for (int before = 0; before < combinations; ++before) {
        for (int i = 0; i < combinations; ++i) {
            evaluate(before);
            evaluate(i);
            const stPrinterState& state = worker.stCurrent.stState;
            QCOMPARE(state.strVenderName, texts.at(i % texts.size()));
            QCOMPARE(state.strSupplySerialNumber, texts.at(i % texts.size()));
            Conditions expected;
            for (const quint16 code : codes.at(i % codes.size())) {
                expected.append(GetErrorStatusEnum(code));
            }
            QCOMPARE(state.listError, expected);
        }
    }
}

// The texts of an earlier reply are erased, and the counts are constant.
void StatusEvaluationTest::qzReplyReplacesEveryField()
{
    stPrinterState expected;
    expected.enCurrentStatus = PS_READY;
    expected.iNumberOfError = 1;
    expected.iNumberOfWarning = 1;
    expected.dwRemainingToner = 80;
    QCOMPARE(Words(StateAfter(QZ, QZBytes(80))), Words(expected));
}

void StatusEvaluationTest::qzStatusItems_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("status");

    QTest::newRow("machine 1") << QZItems({QZMachineState(1)}) << 3;
    QTest::newRow("machine 2") << QZItems({QZMachineState(2)}) << 4;
    QTest::newRow("machine 3") << QZItems({QZMachineState(3)}) << 5;
    QTest::newRow("machine 4") << QZItems({QZMachineState(4)}) << 0;
    QTest::newRow("machine 5") << QZItems({QZMachineState(5)}) << 0;
    QTest::newRow("job 1") << QZItems({QZJobState(1)}) << 10;
    QTest::newRow("job 2") << QZItems({QZJobState(2)}) << 8;
    QTest::newRow("job 3") << QZItems({QZJobState(3)}) << 9;
    QTest::newRow("none") << QZItems({QZToner(80)}) << 0;
    QTest::newRow("the last one counts") << QZItems({QZMachineState(1), QZJobState(2)}) << 8;
}

void StatusEvaluationTest::qzStatusItems()
{
    QFETCH(QByteArray, bytes);
    QTEST(StateAfter(QZ, bytes).enCurrentStatus, "status");
}

void StatusEvaluationTest::qzConditions_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Conditions>("errors");
    QTest::addColumn<Conditions>("warnings");

    const Conditions none;
    QTest::newRow("none") << QZItems({QZToner(80)}) << none << none;
    QTest::newRow("an error") << QZItems({QZError(0x1106)}) << Conditions{ERR_FRONT_COVER_OPEN} << none;
    QTest::newRow("two errors") << QZItems({QZError(0x11A0), QZError(0x1106)})
                                << Conditions{ERR_TRAY_EMPTY, ERR_FRONT_COVER_OPEN} << none;
    QTest::newRow("no error, said so") << QZItems({QZError(0)}) << none << none;
    QTest::newRow("an error, then none") << QZItems({QZError(0x1106), QZError(0)}) << none << none;
    QTest::newRow("none, then an error") << QZItems({QZError(0), QZError(0x1106)})
                                         << Conditions{ERR_UNKNOWN, ERR_FRONT_COVER_OPEN} << none;
    QTest::newRow("an unknown error") << QZItems({QZError(0x1107)}) << Conditions{ERR_UNKNOWN} << none;
    QTest::newRow("a warning") << QZItems({QZWarning(0x110D)}) << none << Conditions{ERR_TONER_LOW};
    QTest::newRow("two warnings") << QZItems({QZWarning(0x110D), QZWarning(0x1121)}) << none
                                  << Conditions{ERR_TONER_LOW, ERR_WASTE_TONER_NEAR_FULL};
    QTest::newRow("no warning, said so") << QZItems({QZWarning(0)}) << none << none;
    QTest::newRow("an error and no warning")
        << QZItems({QZError(0x1106), QZWarning(0)}) << Conditions{ERR_FRONT_COVER_OPEN} << none;
    QTest::newRow("both") << QZItems({QZWarning(0x110D), QZError(0x1106)}) << Conditions{ERR_FRONT_COVER_OPEN}
                          << Conditions{ERR_TONER_LOW};
}

void StatusEvaluationTest::qzConditions()
{
    QFETCH(QByteArray, bytes);
    const stPrinterState state = StateAfter(QZ, bytes);
    QTEST(state.listError, "errors");
    QTEST(state.listWarning, "warnings");
    QCOMPARE(state.iNumberOfError, 1);
    QCOMPARE(state.iNumberOfWarning, 1);
}

void StatusEvaluationTest::qzLenientStart_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("36 bytes") << QByteArray(36, '\x01');
    QTest::newRow("39 bytes") << QByteArray(39, '\x01');
    QTest::newRow("no items") << QZItems({}) + QByteArray(10, '\x01');
}

void StatusEvaluationTest::qzLenientStart()
{
    QFETCH(QByteArray, bytes);
    stPrinterState expected;
    expected.enCurrentStatus = PS_UNKNOWN;
    expected.iNumberOfError = 1;
    expected.iNumberOfWarning = 1;
    QCOMPARE(Words(StateAfter(QZ, bytes)), Words(expected));
}

void StatusEvaluationTest::printerIsNotTouched()
{
    StatusWorker worker;
    worker.stCurrent = FilledPrinter(QStringLiteral("Office"));
    const QString before = Words(worker.stCurrent.stInfo);
    QCOMPARE(worker.evaluate(Standard, EncodeStandardReply(FullReply())), 0);
    QCOMPARE(Words(worker.stCurrent.stInfo), before);
    QCOMPARE(worker.evaluate(QZ, QZBytes()), 0);
    QCOMPARE(Words(worker.stCurrent.stInfo), before);
}

void StatusEvaluationTest::bytesAreNotModified()
{
    StatusWorker worker;
    for (const QByteArray& bytes : {EncodeStandardReply(FullReply()), QZBytes()}) {
        for (const Evaluation evaluation : {Standard, QZ}) {
            QByteArray buffer = bytes;
            (worker.*evaluation)(reinterpret_cast<unsigned char*>(buffer.data()),
                                 static_cast<unsigned long>(buffer.size()));
            QCOMPARE(buffer.toHex(' '), bytes.toHex(' '));
        }
    }
}

QTEST_GUILESS_MAIN(StatusEvaluationTest)
#include "tst_statusevaluation.moc"
