// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "decoding/StatusCodeMapping.h"
#include "texts/UtilLanguageCtrl.h"

#include <QFile>
#include <QSet>
#include <QStringList>

#include <cstdio>
#include <type_traits>

// Generates the tables of the user's page from the program's texts, so that page and program cannot differ.

namespace {

constexpr int Chinese = 1;
constexpr unsigned long StatusCodes = 0x100; // a status code is one byte
constexpr unsigned long ConditionCodes = 0x10000; // an error or warning code is two

// The switch has no default, so that a new status does not compile until it is explained here.
QString Meaning(enPrinterStatus status)
{
    switch (status) {
    case PS_UNKNOWN:
        return QStringLiteral("打印机报告了本程序不认识的状态。");
    case PS_VERSION_MISMATCH:
        return QStringLiteral("收到的状态数据无法识别。");
    case PS_OFFLINE:
        return QStringLiteral("暂时读不到打印机的状态。请检查电源和连接线；网络打印机请检查网络。恢复后会自动更新。");
    case PS_READY:
        return QStringLiteral("可以打印。");
    case PS_INITIALIZE:
        return QStringLiteral("打印机正在启动，请稍候。");
    case PS_BUSY:
        return QStringLiteral("打印机正在处理其他工作，请稍候。");
    case PS_CANCELING_JOB:
        return QStringLiteral("打印机正在取消任务；电脑上的打印队列也会取消一个任务。");
    case PS_ERROR:
        return QStringLiteral("打印机出现错误。");
    case PS_PRINTING:
        return QStringLiteral("打印机正在打印。");
    case PS_SCANNING:
        return QStringLiteral("打印机正在扫描。");
    case PS_COPYING:
        return QStringLiteral("打印机正在复印。");
    case PS_REPORTING:
        return QStringLiteral("打印机正在打印自己的报告页。");
    }
    return {};
}

QString Row(const QString& text, const QString& explanation)
{
    return QStringLiteral("| %1 | %2 |\n").arg(text, explanation);
}

// Lists only statuses that a printer of either family can report or that the program sets.
QString StatusTable()
{
    QSet<int> shown{PS_OFFLINE};
    for (unsigned long code = 0; code < StatusCodes; ++code) {
        shown << GetPrinterStatusEnum(code) << GetPrinterStatusEnum_QZ(code);
    }
    QString table = QStringLiteral("| 状态 | 含义 |\n|---|---|\n");
    for (int status = 0; status < static_cast<int>(std::extent_v<decltype(c_strStatusLanguageText)>); ++status) {
        if (shown.contains(status)) {
            table += Row(c_strStatusLanguageText[status][Chinese], Meaning(static_cast<enPrinterStatus>(status)));
        }
    }
    return table;
}

// Conditions with equal description and remedy share a row.
QString ConditionTable()
{
    QSet<int> shown;
    for (unsigned long code = 0; code < ConditionCodes; ++code) {
        shown << GetErrorStatusEnum(code);
    }
    QStringList rows;
    for (int condition = 0; condition < static_cast<int>(std::extent_v<decltype(c_strErrorDescText)>); ++condition) {
        const QString& remedy = c_strErrorSolutionText[condition][Chinese];
        if (shown.contains(condition)) {
            rows << Row(c_strErrorDescText[condition][Chinese],
                        remedy.isEmpty() ? QStringLiteral("见“仍然解决不了”") : remedy);
        }
    }
    rows.removeDuplicates();
    return QStringLiteral("| 提示 | 处理办法 |\n|---|---|\n") + rows.join(QString());
}

// Replaces the text between the two marks of a table. Returns false if a mark is missing.
bool ReplaceTable(QString& page, const QString& name, const QString& table)
{
    const QString begin = QStringLiteral("<!-- begin %1 -->\n").arg(name);
    const int from = page.indexOf(begin) + begin.size();
    const int to = page.indexOf(QStringLiteral("<!-- end %1 -->").arg(name));
    if (!page.contains(begin) || to < from) {
        return false;
    }
    page.replace(from, to - from, QLatin1Char('\n') + table + QLatin1Char('\n'));
    return true;
}

int Fail(const char* reason, const QString& path)
{
    fprintf(stderr, "users-page: %s: %s\n", qPrintable(path), reason);
    return 1;
}

int UpdatePage(const QString& path, bool isCheck)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return Fail("cannot be read", path);
    }
    const QByteArray before = file.readAll();
    file.close();
    QString page = QString::fromUtf8(before);
    if (!ReplaceTable(page, QStringLiteral("statuses"), StatusTable()) ||
        !ReplaceTable(page, QStringLiteral("conditions"), ConditionTable())) {
        return Fail("lacks the marks of a table", path);
    }
    const QByteArray after = page.toUtf8();
    if (after == before) {
        return 0;
    }
    if (isCheck) {
        return Fail("differs from the program's texts; run build/tools/users-page/users-page on it", path);
    }
    return file.open(QIODevice::WriteOnly) && file.write(after) == after.size() ? 0 : Fail("cannot be written", path);
}

} // namespace

int main(int argc, char** argv)
{
    const bool isCheck = argc == 3 && qstrcmp(argv[1], "--check") == 0;
    if (!isCheck && argc != 2) {
        fputs("Usage: users-page [--check] PAGE\n"
              "Writes the tables of the user's page, or only checks them.\n",
              stderr);
        return 2;
    }
    return UpdatePage(QFile::decodeName(argv[argc - 1]), isCheck);
}
