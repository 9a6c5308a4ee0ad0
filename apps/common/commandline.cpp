// SPDX-License-Identifier: Apache-2.0
#include <apps/common/commandline.h>

#include <QtCore/QCoreApplication>

CommandLine::CommandLine(const char* program, const char* description, ProgramOptions* asked)
    : m_program(QString::fromUtf8(program)), m_asked(*asked) {
    m_parser.setApplicationDescription(QString::fromUtf8(description));
    m_parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    m_parser.addHelpOption();
    m_parser.addVersionOption();
}

void CommandLine::Add(const Option& option) {
    QCommandLineOption described(QString::fromUtf8(option.name), QString::fromUtf8(option.description));
    if (option.value != nullptr) described.setValueName(QString::fromUtf8(option.value));
    m_parser.addOption(described);
}

void CommandLine::AddWord(const char* name, const char* description, const char* syntax) {
    m_takesWords = true;
    m_parser.addPositionalArgument(QString::fromUtf8(name), QString::fromUtf8(description),
                                   QString::fromUtf8(syntax));
}

bool CommandLine::Parse(const QStringList& arguments) {
    if (!m_parser.parse(arguments))
        Refuse(m_parser.errorText());
    else if (IsSet("help") || IsSet("help-all"))
        return Print(m_parser.helpText() + m_helpEnd);
    else if (IsSet("version"))
        return Print(QStringLiteral("%1 %2\n").arg(m_program, QCoreApplication::applicationVersion()));
    else if (!m_takesWords && !GetWords().isEmpty())
        RefuseWord(GetWords().first());
    return m_asked.action == ProgramOptions::EAction::Run;
}

bool CommandLine::Print(const QString& text) {
    m_asked.action = ProgramOptions::EAction::Print;
    m_asked.text = text;
    return false;
}

void CommandLine::TakeText(const char* name, QString* text) {
    if (!IsSet(name)) return;
    *text = GetValue(name);
    if (text->isEmpty()) Refuse(QStringLiteral("--%1 needs a value").arg(QString::fromUtf8(name)));
}

void CommandLine::TakeNumber(const char* name, int lowest, int highest, int* number) {
    if (!IsSet(name)) return;
    const QString text = GetValue(name);
    bool isNumber = false;
    const int read = text.toInt(&isNumber);
    if (isNumber && read >= lowest && read <= highest)
        *number = read;
    else
        Refuse(name, QStringLiteral("'%1' is no number from %2 to %3").arg(text).arg(lowest).arg(highest));
}

void CommandLine::Refuse(const QString& what) {
    if (what.isEmpty() || m_asked.action == ProgramOptions::EAction::Complain) return;
    m_asked.action = ProgramOptions::EAction::Complain;
    m_asked.text = what;
}

void CommandLine::Refuse(const char* option, const QString& reason) {
    if (!reason.isEmpty()) Refuse(QStringLiteral("--%1: %2").arg(QString::fromUtf8(option), reason));
}

void CommandLine::RefuseWord(const QString& word) {
    Refuse(QStringLiteral("'%1' is not understood").arg(word));
}
