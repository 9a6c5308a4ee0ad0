// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/description.h>

#include <apps/common/safetext.h>
#include <apps/common/unit.h>
#include <apps/mctree/text/contenttext.h>
#include <platform/values/visit.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonValue>

namespace mctree {

namespace {

QJsonArray ItemsOf(const values::ValueSelection& selection) {
    QJsonArray items;
    for (int i = 0; i < selection.Count(); ++i) {
        const values::SelectionItem& item = *selection.GetItemAt(i);
        items.append(QJsonObject{{QStringLiteral("text"), item.GetName()},
                                 {QStringLiteral("number"), item.GetValue()},
                                 {QStringLiteral("key"), static_cast<qint64>(item.GetKey())}});
    }
    return items;
}

template <class T>
void DescribeLimits(const values::ValueNumeric<T>& value, QJsonObject& object) {
    object[QStringLiteral("min")] = value.GetMin();
    object[QStringLiteral("max")] = value.GetMax();
}

void DescribeTraits(const values::TreeItem& item, QJsonObject& object) {
    values::Visit(
        item,
        values::Overloaded{
            [&](const values::Node& node) { object[QStringLiteral("children")] = node.CountChildren(); },
            [&](const values::ValueNumeric<int>& value) { DescribeLimits(value, object); },
            [&](const values::ValueNumeric<double>& value) { DescribeLimits(value, object); },
            [&](const values::ValueSelection& value) { object[QStringLiteral("items")] = ItemsOf(value); },
            [](const auto&) {},
        });
}

}  // namespace

QString UnitOf(const values::TreeItem& item) {
    const Unit unit = Unit::Of(item.GetName());
    QString name;
    values::Visit(item, values::Overloaded{
                            [&](const values::Value<int>&) { name = unit.Name(); },
                            [&](const values::ValueNumeric<int>&) { name = unit.Name(); },
                            [&](const values::ValueNumeric<double>&) { name = unit.Name(); },
                            [&](const values::ValueList<double>&) { name = unit.Name(); },
                            [](const auto&) {},
                        });
    return name;
}

QJsonObject DescribeContent(const values::TreeItem& item) {
    QJsonObject object;
    values::Visit(item,
                  values::Overloaded{
                      [](const values::Node&) {},
                      [&](const values::ValueSelection& value) {
                          const bool isNone = value.GetCurrentIndex() == values::ValueSelection::NoIndex;
                          object[QStringLiteral("content")] =
                              isNone ? QJsonValue() : QJsonValue(value.GetCurrentText());
                          if (!isNone)
                              object[QStringLiteral("key")] = static_cast<qint64>(value.GetCurrentKey());
                      },
                      [&](const values::ValueList<double>& value) {
                          QJsonArray numbers;
                          for (const double number : value.GetItems())
                              numbers.append(number);
                          object[QStringLiteral("content")] = numbers;
                      },
                      [&](const auto& value) { object[QStringLiteral("content")] = value.GetValue(); },
                  });
    return object;
}

QJsonObject Describe(const values::TreeItem& item, const QString& path) {
    QJsonObject object = DescribeContent(item);
    object[QStringLiteral("path")] = path;
    object[QStringLiteral("kind")] = KindOf(item);
    DescribeTraits(item, object);
    const auto* const value = dynamic_cast<const values::ValueBase*>(&item);
    if (value == nullptr) return object;
    if (const QString unit = UnitOf(item); !unit.isEmpty()) object[QStringLiteral("unit")] = unit;
    object[QStringLiteral("writable")] = value->IsWritable();
    if (IsStale(item)) object[QStringLiteral("stale")] = true;
    if (value->GetDelivery() == values::EDelivery::EveryChange) object[QStringLiteral("everyChange")] = true;
    return object;
}

QString ToLine(const QJsonObject& object) {
    return safetext::EscapedJson(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
}

}  // namespace mctree
