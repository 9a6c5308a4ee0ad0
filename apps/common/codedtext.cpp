// SPDX-License-Identifier: Apache-2.0
#include <apps/common/codedtext.h>

#include <apps/common/policytext.h>
#include <apps/common/problemtext.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QLocale>

namespace {

// What devices are doing and how far they have booted, as they call it. Only so are the words translated.
[[maybe_unused]] constexpr const char* KnownWords[] = {
    QT_TRANSLATE_NOOP("CodedText", "Unknown"),     QT_TRANSLATE_NOOP("CodedText", "Power On"),
    QT_TRANSLATE_NOOP("CodedText", "Loading"),     QT_TRANSLATE_NOOP("CodedText", "Self Test"),
    QT_TRANSLATE_NOOP("CodedText", "Calibrating"), QT_TRANSLATE_NOOP("CodedText", "Ready"),
    QT_TRANSLATE_NOOP("CodedText", "Failed"),      QT_TRANSLATE_NOOP("CodedText", "Idle"),
    QT_TRANSLATE_NOOP("CodedText", "FFM"),         QT_TRANSLATE_NOOP("CodedText", "Audio"),
    QT_TRANSLATE_NOOP("CodedText", "Search"),      QT_TRANSLATE_NOOP("CodedText", "Scan"),
    QT_TRANSLATE_NOOP("CodedText", "Calibration"), QT_TRANSLATE_NOOP("CodedText", "Built-in Test"),
    QT_TRANSLATE_NOOP("CodedText", "Memory Scan"),
};

const QString& CodeKey() {
    static const auto& key = *new const QString(QStringLiteral("code"));
    return key;
}
const QString& ArgumentsKey() {
    static const auto& key = *new const QString(QStringLiteral("args"));
    return key;
}
const QString& TextKey() {
    static const auto& key = *new const QString(QStringLiteral("text"));
    return key;
}

/// "121.5 MHz" with the decimal point of the application's language; any other text as it is.
QString WithDecimalPoint(const QString& text) {
    int at = 0;
    int points = 0;
    for (; at < text.size() && text[at] != QLatin1Char(' '); ++at) {
        const QChar character = text[at];
        const bool isDigit = character >= QLatin1Char('0') && character <= QLatin1Char('9');
        if (character == QLatin1Char('.'))
            ++points;
        else if (!isDigit)
            return text;
    }
    if (points != 1 || text.startsWith(QLatin1Char('.'))) return text;
    for (int unit = at + 1; unit < text.size(); ++unit)
        if (!text[unit].isLetter()) return text;
    QString shown = text;
    return shown.replace(shown.indexOf(QLatin1Char('.')), 1, QLocale().decimalPoint());
}

/// Which argument of \a code names policies; -1: none does.
int PolicyArgumentOf(ECode code) {
    switch (code) {
        case ECode::NeedsPolicy:
        case ECode::RightTaken:
            return 0;
        case ECode::PolicyGiven:
        case ECode::PolicyTaken:
            return 1;
        default:
            return -1;
    }
}

/// Which argument of \a code the system or a library said; -1: none.
int ProblemArgumentOf(ECode code) {
    switch (code) {
        case ECode::FilesStay:
        case ECode::ConfigNotSaved:
        case ECode::EntriesWouldBeLost:
        case ECode::Further:
            return 0;
        case ECode::StationNotOffered:
            return 1;
        case ECode::ModuleFailed:
            return 2;
        default:
            return -1;
    }
}

/// Which argument of \a code is the number of what the one that ProblemArgumentOf() names says; -1: none.
int ProblemNumberArgumentOf(ECode code) {
    return code == ECode::ModuleFailed ? 3 : -1;
}

}  // namespace

CodedText::CodedText(ECode code, std::initializer_list<CodedText> arguments)
    : m_code(code), m_arguments(arguments) {}

CodedText CodedText::Word(const QString& word) {
    return CodedText(ECode::Word, {word});
}

QString CodedText::TranslatedWord(const QString& word) {
    return QCoreApplication::translate("CodedText", word.toUtf8().constData());
}

QString CodedText::Filled(const QString& format, const QStringList& arguments) {
    QString filled;
    filled.reserve(format.size());
    for (int at = 0; at < format.size(); ++at) {
        const int digit = at + 1 < format.size() ? format[at + 1].unicode() - u'0' : 0;
        if (format[at] != QLatin1Char('%') || digit < 1 || digit > MaxArguments) {
            filled += format[at];
            continue;
        }
        filled += arguments.value(digit - 1);
        ++at;
    }
    return filled;
}

QString CodedText::ToEnglish() const {
    if (m_code == ECode::Count) return m_text;
    QStringList arguments;
    for (const CodedText& argument : m_arguments)
        arguments += argument.ToEnglish();
    return Filled(QLatin1String(eventcodes::SentenceOf(m_code, arguments)), arguments);
}

QString CodedText::Translated() const {
    if (m_code == ECode::Count) return WithDecimalPoint(m_text);
    if (m_code == ECode::Word && !m_arguments.empty()) return TranslatedWord(m_arguments[0].m_text);
    QStringList arguments;
    for (const CodedText& argument : m_arguments) {
        const bool isText = argument.m_code == ECode::Count;
        if (isText && arguments.size() == PolicyArgumentOf(m_code))
            arguments += policytext::Mentioned(argument.m_text);
        else if (isText && arguments.size() == ProblemArgumentOf(m_code))
            arguments += problemtext::Translated(argument.m_text, NumberOfProblem());
        else
            arguments += argument.Translated();
    }
    return Filled(QCoreApplication::translate("CodedText", eventcodes::SentenceOf(m_code, arguments)),
                  arguments);
}

QString CodedText::NumberOfProblem() const {
    for (std::size_t at = 0; at < m_arguments.size(); ++at)
        if (static_cast<int>(at) == ProblemNumberArgumentOf(m_code)) return m_arguments[at].ToEnglish();
    return QString();
}

QJsonObject CodedText::ToObject() const {
    if (m_code == ECode::Count) return {};
    QJsonArray arguments;
    for (const CodedText& argument : m_arguments)
        arguments += argument.ToJson();
    return {{CodeKey(), QLatin1String(eventcodes::Of(m_code).code)}, {ArgumentsKey(), arguments}};
}

QJsonValue CodedText::ToJson() const {
    if (m_code == ECode::Count) return m_text;
    return ToObject();
}

QString CodedText::ToJsonText() const {
    QJsonObject object = ToObject();
    if (m_code == ECode::Count && !m_text.isEmpty()) object.insert(TextKey(), m_text);
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

QString CodedText::TranslatedBeside(const QString& english, const QString& json) {
    const std::optional<CodedText> said = FromJsonText(json);
    return said && said->ToEnglish() == english ? said->Translated() : english;
}

std::optional<CodedText> CodedText::FromJsonText(const QString& text) {
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    if (!document.isObject()) return std::nullopt;
    const QJsonObject object = document.object();
    if (!object.contains(CodeKey())) return CodedText(object.value(TextKey()).toString());
    return FromJson(object);
}

std::optional<CodedText> CodedText::FromJson(const QJsonValue& json, int depth) {
    if (json.isString()) return CodedText(json.toString());
    if (!json.isObject() || depth > MaxDepth) return std::nullopt;
    const QJsonObject object = json.toObject();
    CodedText read;
    read.m_code = eventcodes::Find(object.value(CodeKey()).toString());
    const QJsonArray arguments = object.value(ArgumentsKey()).toArray();
    if (read.m_code == ECode::Count || arguments.size() > MaxArguments) return std::nullopt;
    for (const QJsonValue& argument : arguments) {
        std::optional<CodedText> part = FromJson(argument, depth + 1);
        if (!part) return std::nullopt;
        read.m_arguments.push_back(std::move(*part));
    }
    return read;
}
