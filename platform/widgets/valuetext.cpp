// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/valuetext.h>

#include <platform/values/visit.h>
#include <platform/widgets/itexttranslation.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QLocale>
#include <QtCore/QStringList>

#include <limits>

namespace {

constexpr int MaxItems = 20;  // of a list: more would not be read
constexpr int SignificantDigits = 12;

const ITextTranslation* usedTranslation = nullptr;

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

void valuetext::SetTranslation(const ITextTranslation* translation) {
    usedTranslation = translation;
}

QString valuetext::Item(const QString& text) {
    return usedTranslation != nullptr ? usedTranslation->Item(text) : text;
}

QString valuetext::Reason(const QString& text) {
    return usedTranslation != nullptr ? usedTranslation->Reason(text) : text;
}

QString valuetext::Number(double number) {
    return QLocale().toString(number, 'g', SignificantDigits);
}

QString valuetext::Content(const values::ValueBase& value) {
    QString text;
    values::Visit(static_cast<const values::TreeItem&>(value),
                  values::Overloaded{
                      [](const values::Node& /*node*/) {},
                      [&text](const values::Value<QString>& plain) {
                          text =
                              usedTranslation != nullptr ? usedTranslation->Content(plain) : plain.GetValue();
                      },
                      [&text](const values::Value<bool>& flag) {
                          text = flag.GetValue() ? QCoreApplication::translate("valuetext", "Yes")
                                                 : QCoreApplication::translate("valuetext", "No");
                      },
                      [&text](const values::ValueSelection& choice) { text = Item(choice.GetCurrentText()); },
                      [&text](const values::ValueList<double>& list) { text = ListContent(list); },
                      [&text](const auto& number) { text = Text(number.GetValue()); },
                  });
    return text;
}

QString valuetext::Limits(const values::ValueBase& value) {
    QString text;
    values::Visit(static_cast<const values::TreeItem&>(value),
                  values::Overloaded{
                      [&text](const values::ValueNumeric<int>& number) { text = LimitsOf(number); },
                      [&text](const values::ValueNumeric<double>& number) { text = LimitsOf(number); },
                      [](const auto& /*other*/) {},
                  });
    return text;
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
