// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/CommandLine.h"

#include "infrastructure/FixedPaths.h"
#include "status/Commands.h"
#include "status/ReportFields.h"

#include <QCommandLineParser>

#include <algorithm>

namespace {

constexpr int HelpColumns = 18;

constexpr char EnglishHelp[] = R"(Usage: tolmar-q727-status [COMMAND] [OPTION]...
Prints what the printers of the Tolmar Q727 family say about themselves.

%1
Options:
  --format FORMAT   table (default), terse (for scripts) or json (--json)
  --fields A,B,...  the fields of table and terse; a wrong one lists all
  --lang LANGUAGE   zh or en; default: by the locale
  --color WHEN      auto (default), always or never
  --no-serial       without serial numbers
  --directory DIR   another folder than the driver package's
  --help, --version

Exit code: 0 done, 1 something could not be read, 2 wrong use.
)";

constexpr char ChineseHelp[] = R"(用法：tolmar-q727-status [命令] [选项]...
显示拓玛 Q727 系列打印机自身报告的状态。

%1
选项：
  --format 格式     table（默认）、terse（供脚本使用）或 json（--json）
  --fields A,B,...  table 和 terse 的字段；写错时列出全部字段
  --lang 语言       zh 或 en，默认随系统语言
  --color 何时      auto（默认）、always 或 never
  --no-serial       不显示序列号
  --directory 目录  代替驱动程序包的目录
  --help, --version

退出码：0 完成，1 有内容无法读取，2 用法错误。
)";

QList<QCommandLineOption> CommonOptions()
{
    const auto valued = [](const char* name) {
        return QCommandLineOption(QString::fromLatin1(name), {}, QStringLiteral("value"));
    };
    return {valued("format"),
            valued("lang"),
            valued("color"),
            valued("directory"),
            valued("fields"),
            QCommandLineOption(QStringLiteral("json")),
            QCommandLineOption(QStringLiteral("no-serial")),
            QCommandLineOption(QStringList{QStringLiteral("h"), QStringLiteral("help")}),
            QCommandLineOption(QStringList{QStringLiteral("v"), QStringLiteral("version")})};
}

QList<QCommandLineOption> CommandOptions()
{
    QList<QCommandLineOption> options;
    QStringList names;
    for (const Command& command : Commands()) {
        for (const CommandOption& option : command.options) {
            const QString name = QString::fromLatin1(option.name);
            if (!names.contains(name)) {
                options.append(QCommandLineOption(name, {}, QString::fromLatin1(option.value)));
                names.append(name);
            }
        }
    }
    return options;
}

// Checks the options one after the other. Each check returns the error, or an empty text.
class Reader
{
public:
    Reader(const QCommandLineParser& parser, CommandLine& line)
        : m_parser(parser)
        , m_line(line)
    {
    }

    QString read(bool isTerminal, const QProcessEnvironment& environment)
    {
        m_line.hidesSerialNumbers = m_parser.isSet(QStringLiteral("no-serial"));
        QString error = readLanguage();
        if (!error.isEmpty() || readSpecial()) {
            return error;
        }
        QString problem = readCommand();
        // Each check needs those before it.
        for (const auto check :
             {&Reader::readFormat, &Reader::readFields, &Reader::readDirectory, &Reader::readOwnOptions}) {
            problem = problem.isEmpty() ? (this->*check)() : problem;
        }
        return problem.isEmpty() ? readColour(isTerminal, environment) : problem;
    }

private:
    // Returns the value's place in `valid`, or -1 with the error text.
    int choice(const char* option, const QStringList& valid, QString& error) const
    {
        const QString value = m_parser.value(QString::fromLatin1(option));
        const int place = valid.indexOf(value);
        if (place < 0) {
            error = Filled(QStringLiteral("--%1 cannot be \"%2\"; valid: %3"),
                           {QString::fromLatin1(option), value, valid.join(QStringLiteral(", "))});
        }
        return place;
    }

    QString readLanguage()
    {
        QString error;
        if (m_parser.isSet(QStringLiteral("lang"))) {
            const int place = choice("lang", {QStringLiteral("en"), QStringLiteral("zh")}, error);
            m_line.language = static_cast<Language>(std::max(place, 0));
        }
        return error;
    }

    bool readSpecial()
    {
        if (m_parser.isSet(QStringLiteral("help"))) {
            m_line.special = CommandLine::Special::Help;
        } else if (m_parser.isSet(QStringLiteral("version"))) {
            m_line.special = CommandLine::Special::Version;
        }
        return m_line.special != CommandLine::Special::None;
    }

    QString readCommand()
    {
        m_line.arguments = m_parser.positionalArguments();
        if (!m_line.arguments.isEmpty()) {
            m_line.command = m_line.arguments.takeFirst();
        }
        m_command = FindCommand(m_line.command);
        if (m_command == nullptr) {
            QStringList names;
            for (const Command& command : Commands()) {
                names.append(QString::fromLatin1(command.name));
            }
            return Filled(QStringLiteral("there is no command \"%1\"; valid: %2"),
                          {m_line.command, names.join(QStringLiteral(", "))});
        }
        const int count = m_line.arguments.size();
        if (count < m_command->fewestArguments || count > m_command->mostArguments) {
            return m_command->mostArguments == 0 ? QStringLiteral("%1 takes no arguments").arg(m_line.command)
                                                 : Filled(QStringLiteral("usage: tolmar-q727-status %1 %2"),
                                                          {m_line.command, QString::fromLatin1(m_command->arguments)});
        }
        return {};
    }

    QString readFormat()
    {
        static const QStringList names{QStringLiteral("table"), QStringLiteral("terse"), QStringLiteral("json")};
        const QStringList valid = SplitAtCommas(QString::fromLatin1(m_command->formats));
        QString format = valid.first();
        if (m_parser.isSet(QStringLiteral("json"))) {
            format = QStringLiteral("json");
        } else if (m_parser.isSet(QStringLiteral("format"))) {
            format = m_parser.value(QStringLiteral("format"));
        }
        if (!valid.contains(format)) {
            return Filled(QStringLiteral("%1 has no format \"%2\"; valid: %3"),
                          {m_line.command, format, valid.join(QStringLiteral(", "))});
        }
        m_line.format = static_cast<OutputFormat>(names.indexOf(format));
        return {};
    }

    QString readColour(bool isTerminal, const QProcessEnvironment& environment)
    {
        const bool isWanted = isTerminal && environment.value(QStringLiteral("NO_COLOR")).isEmpty() &&
            environment.value(QStringLiteral("TERM")) != QLatin1String("dumb");
        QString error;
        int place = 0;
        if (m_parser.isSet(QStringLiteral("color"))) {
            place = choice("color", {QStringLiteral("auto"), QStringLiteral("always"), QStringLiteral("never")}, error);
        }
        m_line.isColoured = place == 1 || (place == 0 && isWanted);
        return error;
    }

    QString readFields()
    {
        if (!m_parser.isSet(QStringLiteral("fields"))) {
            return {};
        }
        if (!m_command->hasFields) {
            return QStringLiteral("%1 has no --fields").arg(m_line.command);
        }
        if (m_line.format == OutputFormat::Json) {
            return QStringLiteral("--fields is for table and terse; JSON always has all members");
        }
        m_line.fields = SplitAtCommas(m_parser.value(QStringLiteral("fields")));
        const QStringList valid = ReportFieldNames();
        for (const QString& field : qAsConst(m_line.fields)) {
            if (!valid.contains(field)) {
                return Filled(QStringLiteral("there is no field \"%1\"; valid: %2"),
                              {field, valid.join(QLatin1Char(','))});
            }
        }
        return {};
    }

    QString readDirectory()
    {
        const QString option = QStringLiteral("directory");
        m_line.directory =
            m_parser.isSet(option) ? m_parser.value(option) : QString::fromLatin1(FixedPaths::ConfigurationDirectory);
        return m_line.directory.isEmpty() ? QStringLiteral("--directory needs a folder") : QString();
    }

    QString readOwnOptions()
    {
        const QList<QCommandLineOption> options = CommandOptions();
        for (const QCommandLineOption& option : options) {
            const QString name = option.names().constFirst();
            if (!m_parser.isSet(name)) {
                continue;
            }
            const QVector<CommandOption>::const_iterator own =
                std::find_if(m_command->options.begin(), m_command->options.end(),
                             [&name](const CommandOption& candidate) { return name == QLatin1String(candidate.name); });
            if (own == m_command->options.end()) {
                return Filled(QStringLiteral("%1 has no --%2"), {m_line.command, name});
            }
            QString error;
            if (own->valid != nullptr) {
                choice(own->name, SplitAtCommas(QString::fromLatin1(own->valid)), error);
            }
            if (!error.isEmpty()) {
                return error;
            }
            m_line.options.insert(name, m_parser.value(name));
        }
        return {};
    }

    const QCommandLineParser& m_parser;
    CommandLine& m_line;
    const Command* m_command = nullptr;
};

} // namespace

CommandLine ParseCommandLine(const QStringList& arguments, const QProcessEnvironment& environment, bool isTerminal)
{
    CommandLine line;
    line.language = LanguageOf(environment);
    QCommandLineParser parser;
    parser.addOptions(CommonOptions());
    parser.addOptions(CommandOptions());
    const bool isParsed = parser.parse(QStringList(QStringLiteral("tolmar-q727-status")) + arguments);
    line.command = parser.positionalArguments().value(0, line.command);
    line.error = isParsed ? Reader(parser, line).read(isTerminal, environment)
                          : parser.errorText() + QStringLiteral(" See --help.");
    return line;
}

// LANGUAGE is a list of preferences, which counts unless the locale is C.
Language LanguageOf(const QProcessEnvironment& environment)
{
    QString locale;
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (locale.isEmpty()) {
            locale = environment.value(QString::fromLatin1(name));
        }
    }
    const QString preferred = environment.value(QStringLiteral("LANGUAGE"));
    const bool isC = locale == QLatin1String("POSIX") || locale.section(QLatin1Char('.'), 0, 0) == QLatin1String("C");
    if (!preferred.isEmpty() && !locale.isEmpty() && !isC) {
        locale = preferred;
    }
    return locale.isEmpty() || locale.startsWith(QLatin1String("zh")) ? Language::Chinese : Language::English;
}

QString HelpText(Language language)
{
    QString commands;
    for (const Command& command : Commands()) {
        const QString usage =
            QString::fromLatin1(command.name) + QLatin1Char(' ') + QString::fromLatin1(command.arguments);
        commands += QStringLiteral("  ") + usage.trimmed().leftJustified(HelpColumns) +
            Pick(language, command.english, command.chinese) + QLatin1Char('\n');
    }
    return Pick(language, EnglishHelp, ChineseHelp).arg(commands);
}
