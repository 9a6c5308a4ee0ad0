// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/contentinput.h>

#include <apps/common/frequencytext.h>
#include <apps/common/unit.h>
#include <apps/mctree/text/contenttext.h>
#include <platform/values/visit.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

namespace mctree {

namespace {

/// What a text means for a value: a content, or what is wrong with it.
template <class T>
struct Meaning {
    std::optional<T> content;
    QString error;
};

template <class T>
Meaning<T> Wrong(const QString& text, const QString& expected) {
    return {std::nullopt, QStringLiteral("\"%1\" is no %2").arg(text, expected)};
}

Meaning<bool> Parse(const values::Value<bool>&, const QString& text) {
    const QString word = text.trimmed().toLower();
    for (const char* yes : {"true", "on", "yes", "1"})
        if (word == QLatin1String(yes)) return {true, QString()};
    for (const char* no : {"false", "off", "no", "0"})
        if (word == QLatin1String(no)) return {false, QString()};
    return Wrong<bool>(text, QStringLiteral("boolean: true or false"));
}

/// What is expected of a value named \a name, for people.
QString Expected(const QString& name, const char* kind) {
    const Unit unit = Unit::Of(name);
    const QString plain = QLatin1String(kind);
    return unit.IsEmpty() ? plain : plain + QStringLiteral(", alone or with ") + unit.Accepted();
}

Meaning<double> ParseFrequency(const QString& name, const QString& text) {
    const FrequencyText frequency(text, FrequencyText::EPlainNumber::Hertz);
    switch (frequency.GetProblem()) {
        case FrequencyText::EProblem::None:
            return {frequency.GetHz(), QString()};
        case FrequencyText::EProblem::Negative:
            return {std::nullopt, QStringLiteral("\"%1\" is negative, which no frequency is").arg(text)};
        case FrequencyText::EProblem::TooGreat:
            return {std::nullopt, QStringLiteral("\"%1\" is too great").arg(text)};
        default:
            return Wrong<double>(text, Expected(name, "number"));
    }
}

Meaning<double> ParseNumber(const QString& name, const QString& text) {
    if (Unit::Of(name).IsHertz()) return ParseFrequency(name, text);
    bool isNumber = false;
    const double number = Unit::Of(name).WithoutUnit(text.trimmed()).toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number)) return Wrong<double>(text, Expected(name, "number"));
    return {number, QString()};
}

Meaning<int> ParseInteger(const QString& name, const QString& text) {
    const QString word = text.trimmed();
    bool isHexadecimal = false;
    if (word.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)) {
        const int number = word.midRef(2).toInt(&isHexadecimal, 16);
        if (isHexadecimal) return {number, QString()};
    }
    const Meaning<double> number = ParseNumber(name, text);
    if (!number.content || std::trunc(*number.content) != *number.content)
        return Wrong<int>(text, Expected(name, "whole number"));
    if (*number.content < std::numeric_limits<int>::lowest() ||
        *number.content > (std::numeric_limits<int>::max)())
        return {std::nullopt, QStringLiteral("%1 does not fit into 32 bits").arg(text)};
    return {static_cast<int>(*number.content), QString()};
}

Meaning<int> Parse(const values::Value<int>& value, const QString& text) {
    return ParseInteger(value.GetName(), text);
}

Meaning<int> Parse(const values::ValueNumeric<int>& value, const QString& text) {
    return ParseInteger(value.GetName(), text);
}

Meaning<double> Parse(const values::ValueNumeric<double>& value, const QString& text) {
    return ParseNumber(value.GetName(), text);
}

Meaning<QString> Parse(const values::Value<QString>&, const QString& text) {
    return {text, QString()};
}

/// The index of the item that \a text names, by key, by text, or by text in another case if only one fits.
int FindItem(const values::ValueSelection& value, const QString& text) {
    bool isKey = false;
    const qlonglong key = text.toLongLong(&isKey);
    int similar = values::ValueSelection::NoIndex;
    int similarCount = 0;
    for (int i = 0; isKey && i < value.Count(); ++i)
        if (value.GetItemAt(i)->GetKey() == key) return i;
    for (int i = 0; i < value.Count(); ++i) {
        const QString name = value.GetItemAt(i)->GetName();
        if (name == text) return i;
        if (name.compare(text, Qt::CaseInsensitive) != 0) continue;
        similar = i;
        ++similarCount;
    }
    return similarCount == 1 ? similar : values::ValueSelection::NoIndex;
}

/// The content is an index of the selection; with NoIndex no item is selected, which is asked for in so many
/// words: an empty text is what a script has whose variable is not set.
Meaning<int> Parse(const values::ValueSelection& value, const QString& text) {
    const int index = FindItem(value, text);
    if (index != values::ValueSelection::NoIndex || text == NoSelection()) return {index, QString()};
    return {std::nullopt, QStringLiteral("\"%1\" is none of %2").arg(text, ShowItems(value))};
}

Meaning<std::vector<double>> Parse(const values::ValueList<double>& value, const QString& text) {
    std::vector<double> numbers;
    if (text.trimmed().isEmpty()) return {numbers, QString()};
    for (const QString& part : text.split(QLatin1Char(','))) {
        const Meaning<double> number = ParseNumber(value.GetName(), part);
        if (!number.content) return {std::nullopt, number.error};
        numbers.push_back(*number.content);
    }
    return {std::move(numbers), QString()};
}

template <class V, class T>
void Set(V& value, const T& content) {
    value.SetValue(content);
}

void Set(values::ValueSelection& value, int index) {
    value.SelectIndex(index);
}

void Set(values::ValueList<double>& value, const std::vector<double>& numbers) {
    value.SetItems(numbers);
}

template <class V, class T>
bool Holds(const V& value, const T& content) {
    return value.GetValue() == content;
}

bool Holds(const values::ValueSelection& value, int index) {
    return value.GetCurrentIndex() == index;
}

bool Holds(const values::ValueList<double>& value, const std::vector<double>& numbers) {
    return value.GetItems() == numbers;
}

/// A setting takes the limit for what lies beyond it; what is asked for is not to become something else that
/// is done, such as another frequency that is tuned.
template <class V, class T>
QString WhyNotAskedFor(const V&, const T&, const QString&) {
    return QString();
}

template <class T>
QString WhyNotAskedFor(const values::ValueNumeric<T>& value, const T& content, const QString& text) {
    const bool isOccurrence = value.GetDelivery() == values::EDelivery::EveryChange;
    if (!isOccurrence || (content >= value.GetMin() && content <= value.GetMax())) return QString();
    return QStringLiteral("\"%1\" lies outside the limits (%2)").arg(text, ShowTraits(value));
}

/// Whether the content is less than \a content; none where that means nothing.
template <class V, class T>
std::optional<bool> IsLess(const V&, const T&) {
    return std::nullopt;
}

template <class T>
std::optional<bool> IsLess(const values::ValueNumeric<T>& value, const T& content) {
    return value.GetValue() < content;
}

std::optional<bool> IsLess(const values::Value<int>& value, const int& content) {
    return value.GetValue() < content;
}

}  // namespace

QString SetFromText(values::TreeItem& item, const QString& text) {
    QString error = QStringLiteral("this kind of item cannot be set");
    values::Visit(item, values::Overloaded{
                            [&](values::Node&) { error = QStringLiteral("is a node, which has no content"); },
                            [&](auto& value) {
                                const auto meaning = Parse(value, text);
                                error = meaning.content ? WhyNotAskedFor(value, *meaning.content, text)
                                                        : meaning.error;
                                if (error.isEmpty()) Set(value, *meaning.content);
                            },
                        });
    return error;
}

Comparison CompareWithText(const values::TreeItem& item, const QString& text) {
    Comparison comparison;
    comparison.error = QStringLiteral("this kind of item has no content");
    values::Visit(item, values::Overloaded{
                            [](const values::Node&) {},
                            [&](const auto& value) {
                                const auto meaning = Parse(value, text);
                                comparison.error = meaning.error;
                                if (!meaning.content) return;
                                comparison.isEqual = Holds(value, *meaning.content);
                                comparison.isLess = IsLess(value, *meaning.content);
                            },
                        });
    return comparison;
}

bool IsAsAsked(const values::TreeItem& item, const QString& text) {
    const Comparison comparison = CompareWithText(item, text);
    return comparison.error.isEmpty() && comparison.isEqual;
}

}  // namespace mctree
