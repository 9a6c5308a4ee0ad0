// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/eventcodes.h>

#include <QtCore/QJsonObject>
#include <QtCore/QJsonValue>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <initializer_list>
#include <optional>
#include <vector>

/// What the server says, as a code with arguments, so that a window can say it in the language of whoever
/// looks at it. An argument is a text that is the same in every language (a name, a number with its unit), or
/// says something by a code itself. Arguments are shown as they are, also with a "%1" in them.
///
/// As JSON {"code":"tuned-to","args":["121.5 MHz"]}; an argument that is a text is a text, else such an
/// object.
class CodedText {
  public:
    static constexpr int MaxArguments = 9;
    static constexpr int MaxDepth = 6;  ///< of arguments within arguments, of what is read

    /// Says nothing.
    CodedText() = default;
    // Implicit: what is the same in every language stands between what is not.
    CodedText(const QString& text) : m_text(text) {}  // NOLINT(google-explicit-constructor)
    CodedText(QLatin1String text) : m_text(text) {}   // NOLINT(google-explicit-constructor)
    CodedText(const char* text) = delete;
    CodedText(ECode code, std::initializer_list<CodedText> arguments = {});

    /// A word of a device that is in the list of known words: "Self Test".
    static CodedText Word(const QString& word);
    /// Such a word in the language of the application.
    static QString TranslatedWord(const QString& word);
    static CodedText Number(qint64 number) { return QString::number(number); }

    /// Whether it says nothing.
    bool IsEmpty() const { return m_code == ECode::Count && m_text.isEmpty(); }
    /// ECode::Count if it is a mere text.
    ECode GetCode() const { return m_code; }
    const std::vector<CodedText>& GetArguments() const { return m_arguments; }

    QString ToEnglish() const;
    /// In the language of the application, with its decimal point.
    QString Translated() const;

    /// A text, or an object as above.
    QJsonValue ToJson() const;
    /// Only "code" and "args", empty for a mere text.
    QJsonObject ToObject() const;
    /// As compact JSON: always an object, {} where nothing is said, {"text":...} for a mere text.
    QString ToJsonText() const;
    /// None where \a json is no such value, or has a code that is not known here: it came from a newer
    /// server.
    static std::optional<CodedText> FromJson(const QJsonValue& json) { return FromJson(json, 0); }
    static std::optional<CodedText> FromJsonText(const QString& text);
    /// \a english in the language of the application if \a json says the same; as it is if that is of another
    /// text, or is not known here.
    static QString TranslatedBeside(const QString& english, const QString& json);

    friend bool operator==(const CodedText& a, const CodedText& b) {
        return a.m_code == b.m_code && a.m_text == b.m_text && a.m_arguments == b.m_arguments;
    }
    friend bool operator!=(const CodedText& a, const CodedText& b) { return !(a == b); }

    /// \a format with \a arguments for %1 to %9, each as it is; what there is no argument for is left out.
    static QString Filled(const QString& format, const QStringList& arguments);

  private:
    static std::optional<CodedText> FromJson(const QJsonValue& json, int depth);
    /// The number of the error that one of the arguments tells in words; empty: there is none.
    QString NumberOfProblem() const;

    ECode m_code = ECode::Count;
    QString m_text;
    std::vector<CodedText> m_arguments;
};
