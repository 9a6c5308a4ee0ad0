// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/contenttext.h>

#include <apps/common/safetext.h>
#include <apps/common/unit.h>
#include <platform/values/visit.h>

#include <QtCore/QLocale>

#include <cmath>
#include <limits>

namespace mctree {

namespace {

QString Decimal(int number) {
    return QString::number(number);
}

QString Decimal(double number) {
    return DecimalText(number);
}

template <class T>
QString ShownNumber(T number, const Unit& unit) {
    QString name;
    const QString text = unit.Scaled(Decimal(number), &name);
    return ShownContent{text, name}.Joined();
}

/// "0 .. 100 ms"; a limit that is the type's own is none: ".. 100 ms".
template <class T>
QString ShownLimits(const values::ValueNumeric<T>& value) {
    const Unit unit = Unit::Of(value.GetName());
    const bool hasMin = value.GetMin() > std::numeric_limits<T>::lowest();
    const bool hasMax = value.GetMax() < (std::numeric_limits<T>::max)();
    if (!hasMin && !hasMax) return QString();
    const QString from = hasMin ? ShownNumber(value.GetMin(), unit) + QLatin1Char(' ') : QString();
    const QString to = hasMax ? QLatin1Char(' ') + ShownNumber(value.GetMax(), unit) : QString();
    return from + QStringLiteral("..") + to;
}

QString JoinedNumbers(const values::ValueList<double>& list, const QString& separator) {
    QStringList numbers;
    numbers.reserve(list.Count());
    for (const double number : list.GetItems())
        numbers.append(DecimalText(number));
    return numbers.join(separator);
}

}  // namespace

QString KindOf(const values::TreeItem& item) {
    QString kind = QStringLiteral("unknown");
    values::Visit(item, values::Overloaded{
                            [&](const values::Node&) { kind = QStringLiteral("node"); },
                            [&](const values::Value<bool>&) { kind = QStringLiteral("boolean"); },
                            [&](const values::Value<int>&) { kind = QStringLiteral("integer"); },
                            [&](const values::Value<QString>&) { kind = QStringLiteral("text"); },
                            [&](const values::ValueNumeric<int>&) { kind = QStringLiteral("integer"); },
                            [&](const values::ValueNumeric<double>&) { kind = QStringLiteral("number"); },
                            [&](const values::ValueSelection&) { kind = QStringLiteral("selection"); },
                            [&](const values::ValueList<double>&) { kind = QStringLiteral("list"); },
                        });
    return kind;
}

QString NoSelection() {
    return QStringLiteral("(none)");
}

QString DecimalText(double number) {
    constexpr double Smallest = 1e-6;
    constexpr double Greatest = 1e16;
    const double magnitude = std::fabs(number);
    const bool isPlain = number == 0 || (magnitude >= Smallest && magnitude < Greatest);
    return QString::number(number, isPlain ? 'f' : 'g', QLocale::FloatingPointShortest);
}

QString PlainContent(const values::TreeItem& item) {
    QString text;
    values::Visit(item, values::Overloaded{
                            [](const values::Node&) {},
                            [&](const values::Value<bool>& value) {
                                text = value.GetValue() ? QStringLiteral("true") : QStringLiteral("false");
                            },
                            [&](const values::Value<QString>& value) { text = value.GetValue(); },
                            [&](const values::ValueSelection& value) { text = value.GetCurrentText(); },
                            [&](const values::ValueList<double>& value) {
                                text = JoinedNumbers(value, QStringLiteral(","));
                            },
                            [&](const auto& number) { text = Decimal(number.GetValue()); },
                        });
    return text;
}

ShownContent ShowContent(const values::TreeItem& item) {
    ShownContent shown{safetext::Escaped(PlainContent(item)), QString()};
    const Unit unit = Unit::Of(item.GetName());
    const auto scale = [&](const auto& number) {
        shown.text = unit.Scaled(Decimal(number.GetValue()), &shown.unit);
    };
    values::Visit(item, values::Overloaded{
                            [&](const values::Node& node) {
                                const int count = node.CountChildren();
                                shown.text = count == 1 ? QStringLiteral("1 item")
                                                        : QStringLiteral("%1 items").arg(count);
                            },
                            [&](const values::Value<int>& value) { scale(value); },
                            [&](const values::ValueNumeric<int>& value) { scale(value); },
                            [&](const values::ValueNumeric<double>& value) { scale(value); },
                            [&](const values::ValueSelection& value) {
                                if (value.GetCurrentIndex() == values::ValueSelection::NoIndex)
                                    shown.text = NoSelection();
                            },
                            [&](const values::ValueList<double>& value) {
                                shown = {JoinedNumbers(value, QStringLiteral(", ")), unit.Name()};
                            },
                            [](const auto&) {},
                        });
    return shown;
}

QString ShowTraits(const values::TreeItem& item) {
    QStringList traits;
    values::Visit(item, values::Overloaded{
                            [&](const values::ValueNumeric<int>& value) { traits += ShownLimits(value); },
                            [&](const values::ValueNumeric<double>& value) { traits += ShownLimits(value); },
                            [](const auto&) {},
                        });
    if (const auto* const value = dynamic_cast<const values::ValueBase*>(&item)) {
        if (!value->IsWritable()) traits += QStringLiteral("read-only");
        if (value->GetDelivery() == values::EDelivery::EveryChange) traits += QStringLiteral("every change");
    }
    traits.removeAll(QString());
    return traits.join(QStringLiteral(", "));
}

QString ShowItems(const values::ValueSelection& selection, int most) {
    QStringList items;
    for (int i = 0; i < selection.Count() && i < most; ++i) {
        const values::SelectionItem& item = *selection.GetItemAt(i);
        items += QStringLiteral("%1 (%2)").arg(safetext::Escaped(item.GetName())).arg(item.GetKey());
    }
    if (selection.Count() > most) items += QStringLiteral("...");
    return items.join(QStringLiteral(", "));
}

bool IsStale(const values::TreeItem& item) {
    return item.GetState() == values::Stale;
}

}  // namespace mctree
