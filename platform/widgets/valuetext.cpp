// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/valuetext.h>

#include <platform/values/value.h>
#include <platform/values/valuelist.h>
#include <platform/values/valuenumeric.h>
#include <platform/values/valueselection.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QStringList>

#include <limits>

namespace {

constexpr int MaxItems = 20;  // of a list: more would not be read
constexpr int SignificantDigits = 12;

QString Text(double number) {
    return valuetext::Number(number);
}

QString Text(int number) {
    return QLocale().toString(number);
}

template <class T>
QString LimitsOf(const values::ValueNumeric<T>& value) {
    using Limits = std::numeric_limits<T>;
    if (value.GetMin() == Limits::lowest() && value.GetMax() == Limits::max()) return QString();
    return QCoreApplication::translate("valuetext", "%1 to %2", "Limits of a number")
        .arg(Text(value.GetMin()), Text(value.GetMax()));
}

QString ListContent(const values::ValueList<double>& list) {
    QStringList items;
    for (int i = 0; i < list.Count() && i < MaxItems; ++i)
        items << Text(list.GetItem(i));
    if (list.Count() > MaxItems) items << QString(QChar(0x2026));
    return items.join(QStringLiteral("; "));
}

}  // namespace

QString valuetext::Number(double number) {
    return QLocale().toString(number, 'g', SignificantDigits);
}

QString valuetext::Content(const values::ValueBase& value) {
    if (const auto* text = dynamic_cast<const values::Value<QString>*>(&value)) return text->GetValue();
    if (const auto* choice = dynamic_cast<const values::ValueSelection*>(&value))
        return choice->GetCurrentText();
    if (const auto* number = dynamic_cast<const values::ValueNumeric<int>*>(&value))
        return Text(number->GetValue());
    if (const auto* real = dynamic_cast<const values::ValueNumeric<double>*>(&value))
        return Text(real->GetValue());
    if (const auto* plain = dynamic_cast<const values::Value<int>*>(&value)) return Text(plain->GetValue());
    if (const auto* flag = dynamic_cast<const values::Value<bool>*>(&value))
        return flag->GetValue() ? QCoreApplication::translate("valuetext", "Yes")
                                : QCoreApplication::translate("valuetext", "No");
    if (const auto* list = dynamic_cast<const values::ValueList<double>*>(&value)) return ListContent(*list);
    return QString();
}

QString valuetext::Limits(const values::ValueBase& value) {
    if (const auto* number = dynamic_cast<const values::ValueNumeric<int>*>(&value)) return LimitsOf(*number);
    if (const auto* real = dynamic_cast<const values::ValueNumeric<double>*>(&value)) return LimitsOf(*real);
    return QString();
}

QString valuetext::Shortened(const QString& text, int length) {
    if (length > 0 && length < text.size() && text.at(length - 1).isHighSurrogate()) --length;
    QString shown = text.left(length);
    for (QChar& character : shown) {
        if (character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
            character == QChar::ParagraphSeparator)
            character = QLatin1Char(' ');
    }
    if (text.size() > length) shown += QChar(0x2026);
    return shown;
}
