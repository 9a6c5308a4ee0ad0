// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/wire/itemkinds.h>

#include <platform/values/node.h>
#include <platform/values/value.h>
#include <platform/values/valueselection.h>
#include <platform/vtclient/wire/cboroutput.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>
#include <typeinfo>

namespace vt {

namespace {

using values::SelectionItem;
using values::ValueBase;
using values::ValueList;
using values::ValueNumeric;
using values::ValueSelection;

/// How one type of content travels.
template <class T>
struct Traits;

template <>
struct Traits<bool> {
    static void Write(bool content, CborOutput& output) { output.Boolean(content); }
    static Content ToContent(bool content) { return content; }
    static bool FromContent(const Content& content) { return std::get<bool>(content); }
    static bool Take(const Content& from, Content* content) {
        const bool* const flag = std::get_if<bool>(&from);
        if (flag == nullptr) return false;
        *content = *flag;
        return true;
    }
};

template <>
struct Traits<int> {
    static void Write(int content, CborOutput& output) { output.Integer(content); }
    static Content ToContent(int content) { return qint64{content}; }
    static int FromContent(const Content& content) { return static_cast<int>(std::get<qint64>(content)); }
    static bool Take(const Content& from, Content* content) {
        const qint64* const number = std::get_if<qint64>(&from);
        if (number == nullptr || *number < std::numeric_limits<int>::min() ||
            *number > std::numeric_limits<int>::max())
            return false;
        *content = *number;
        return true;
    }
};

template <>
struct Traits<double> {
    static void Write(double content, CborOutput& output) { output.Double(content); }
    static Content ToContent(double content) { return content; }
    static double FromContent(const Content& content) { return std::get<double>(content); }
    static bool Take(const Content& from, Content* content) {
        double number = 0.0;
        if (const double* const real = std::get_if<double>(&from))
            number = *real;
        else if (const qint64* const integer = std::get_if<qint64>(&from))
            number = static_cast<double>(*integer);
        else
            return false;
        if (std::isnan(number)) return false;
        *content = number;
        return true;
    }
};

template <>
struct Traits<QString> {
    static void Write(const QString& content, CborOutput& output) { output.Text(content); }
    static Content ToContent(const QString& content) { return content; }
    static const QString& FromContent(const Content& content) { return std::get<QString>(content); }
    static bool Take(const Content& from, Content* content) {
        const QString* const text = std::get_if<QString>(&from);
        if (text == nullptr) return false;
        *content = *text;
        return true;
    }
};

/// What Value<T> and ValueNumeric<T> have in common: a content of one type.
template <class V, class T>
struct Scalar {
    static const V& Of(const ValueBase& value) { return static_cast<const V&>(value); }
    static V& Of(ValueBase& value) { return static_cast<V&>(value); }

    static std::unique_ptr<ValueBase> Create() { return std::make_unique<V>(); }
    static void WriteContent(const ValueBase& value, CborOutput& output) {
        Traits<T>::Write(Of(value).GetValue(), output);
    }
    static void WriteChange(quint32 id, const ValueBase& value, CborOutput& output) {
        if constexpr (std::is_arithmetic_v<T>) {
            output.UnsignedAndThen(id, Of(value).GetValue());
        } else {
            output.Unsigned(id);
            WriteContent(value, output);
        }
    }
    static Content GetContent(const ValueBase& value) { return Traits<T>::ToContent(Of(value).GetValue()); }
    static void Set(ValueBase& value, const Content& content, IObserver* originator) {
        Of(value).SetValue(Traits<T>::FromContent(content), originator);
    }
    static bool Write(ValueBase& value, const Content& content, IObserver* originator) {
        Set(value, content, originator);
        return true;
    }
};

template <class T>
struct Limited : Scalar<ValueNumeric<T>, T> {
    using Base = Scalar<ValueNumeric<T>, T>;
    static void WriteLimits(const ValueBase& value, CborOutput& output) {
        Traits<T>::Write(Base::Of(value).GetMin(), output);
        Traits<T>::Write(Base::Of(value).GetMax(), output);
    }
    static void ReadLimits(const ValueBase& value, ItemDescription* item) {
        item->minimum = Traits<T>::ToContent(Base::Of(value).GetMin());
        item->maximum = Traits<T>::ToContent(Base::Of(value).GetMax());
    }
    static void Describe(ValueBase& value, const ItemDescription& item, IObserver* originator) {
        ValueNumeric<T>& number = Base::Of(value);
        const ObservableGuard guard(number);
        number.SetMin(Traits<T>::FromContent(item.minimum), originator);
        if (guard.IsAlive()) number.SetMax(Traits<T>::FromContent(item.maximum), originator);
    }
};

struct Selection {
    static const ValueSelection& Of(const ValueBase& value) {
        return static_cast<const ValueSelection&>(value);
    }
    static ValueSelection& Of(ValueBase& value) { return static_cast<ValueSelection&>(value); }

    static std::unique_ptr<ValueBase> Create() { return std::make_unique<ValueSelection>(); }
    static void WriteContent(const ValueBase& value, CborOutput& output) {
        const int index = Of(value).GetCurrentIndex();
        if (index == ValueSelection::NoIndex)
            output.Null();
        else
            output.Integer(index);
    }
    static void WriteChoices(const ValueBase& value, CborOutput& output) {
        const ValueSelection& selection = Of(value);
        output.Array(static_cast<quint64>(selection.Count()) * 3);
        for (int i = 0; i < selection.Count(); ++i) {
            const SelectionItem* const item = selection.GetItemAt(i);
            output.Text(item->GetName());
            output.Double(item->GetValue());
            output.Integer(item->GetKey());
        }
    }
    static void ReadChoices(const ValueBase& value, ItemDescription* item) {
        const ValueSelection& selection = Of(value);
        for (int i = 0; i < selection.Count(); ++i) {
            const SelectionItem* const choice = selection.GetItemAt(i);
            item->choices.push_back({choice->GetName(), choice->GetValue(), choice->GetKey()});
        }
    }
    static Content GetContent(const ValueBase& value) {
        const int index = Of(value).GetCurrentIndex();
        return index == ValueSelection::NoIndex ? Content() : Content(qint64{index});
    }
    static bool Take(const Content& from, Content* content) {
        if (const qint64* const index = std::get_if<qint64>(&from))
            *content = *index;
        else if (std::holds_alternative<std::monostate>(from))
            *content = std::monostate();
        else
            return false;
        return true;
    }
    static void Set(ValueBase& value, const Content& content, IObserver* originator) {
        const qint64* const index = std::get_if<qint64>(&content);
        const bool isThere = index != nullptr && *index >= 0 && *index < Of(value).Count();
        Of(value).SelectIndex(isThere ? static_cast<int>(*index) : ValueSelection::NoIndex, originator);
    }
    static bool Write(ValueBase& value, const Content& content, IObserver* originator) {
        ValueSelection& selection = Of(value);
        const qint64* const key = std::get_if<qint64>(&content);
        if (key == nullptr) {
            selection.SelectIndex(ValueSelection::NoIndex, originator);
            return true;
        }
        if (selection.GetItem(*key) == nullptr) return false;
        selection.Select(*key, originator);
        return true;
    }
    static bool IsEqual(const SelectionItem& item, const Choice& choice) {
        return item.GetKey() == choice.key && item.GetValue() == choice.number &&
               item.GetName() == choice.text;
    }
    /// How many items at the front are the choices at the front.
    static int CountEqual(const ValueSelection& selection, const std::vector<Choice>& choices) {
        int i = 0;
        while (i < selection.Count() && static_cast<std::size_t>(i) < choices.size() &&
               IsEqual(*selection.GetItemAt(i), choices[static_cast<std::size_t>(i)]))
            ++i;
        return i;
    }
    // An item that came at the end, or one that went, is told as that: observers may care which.
    static void Describe(ValueBase& value, const ItemDescription& item, IObserver* originator) {
        ValueSelection& selection = Of(value);
        const int had = selection.Count();
        const int equal = CountEqual(selection, item.choices);
        const int has = static_cast<int>(item.choices.size());
        if (equal == had && has == had) return;
        if (equal == had && has == had + 1) {
            const Choice& added = item.choices.back();
            selection.AddItem(added.text, added.number, added.key, originator);
            return;
        }
        if (has == had - 1) {
            int i = equal;
            while (i < has && IsEqual(*selection.GetItemAt(i + 1), item.choices[static_cast<std::size_t>(i)]))
                ++i;
            if (i == has) return selection.DeleteItem(selection.GetItemAt(equal), originator);
        }
        std::vector<SelectionItem> items;
        items.reserve(item.choices.size());
        for (const Choice& choice : item.choices)
            items.emplace_back(choice.text, choice.number, choice.key);
        selection.SetItems(items, originator);
    }
};

struct List {
    static const ValueList<double>& Of(const ValueBase& value) {
        return static_cast<const ValueList<double>&>(value);
    }
    static std::unique_ptr<ValueBase> Create() { return std::make_unique<ValueList<double>>(); }
    static void WriteContent(const ValueBase& value, CborOutput& output) {
        const std::vector<double>& items = Of(value).GetItems();
        output.Array(static_cast<quint64>(items.size()));
        for (const double item : items)
            output.Double(item);
    }
    static Content GetContent(const ValueBase& value) {
        const std::vector<double>& items = Of(value).GetItems();
        return QVector<double>(items.begin(), items.end());
    }
    static bool Take(const Content& from, Content* content) {
        const auto* const items = std::get_if<QVector<double>>(&from);
        const auto isNan = [](double item) { return std::isnan(item); };
        if (items == nullptr || std::any_of(items->begin(), items->end(), isNan)) return false;
        *content = *items;
        return true;
    }
    static void Set(ValueBase& value, const Content& content, IObserver* originator) {
        const auto& items = std::get<QVector<double>>(content);
        static_cast<ValueList<double>&>(value).SetItems({items.begin(), items.end()}, originator);
    }
    static bool Write(ValueBase& value, const Content& content, IObserver* originator) {
        Set(value, content, originator);
        return true;
    }
};

void NoExtra(const ValueBase& /*value*/, CborOutput& /*output*/) {}
void NoLimits(const ValueBase& /*value*/, ItemDescription* /*item*/) {}
void NoDescription(ValueBase& /*value*/, const ItemDescription& /*item*/, IObserver* /*originator*/) {}

/// The change of a value, by whatever writes the content of its kind.
template <void (*WriteContent)(const ValueBase& value, CborOutput& output)>
void WriteChange(quint32 id, const ValueBase& value, CborOutput& output) {
    output.Unsigned(id);
    WriteContent(value, output);
}

template <class T>
constexpr KindOperations Plain(EItemKind kind, const char* name) {
    using S = Scalar<values::Value<T>, T>;
    return {kind,           false,         false,   name,          S::Create,       S::WriteContent,
            S::WriteChange, NoExtra,       NoExtra, S::GetContent, Traits<T>::Take, S::Set,
            S::Write,       NoDescription, NoLimits};
}

template <class T>
constexpr KindOperations Numeric(EItemKind kind, const char* name) {
    using L = Limited<T>;
    return {kind,           true,           false,        name,          L::Create,       L::WriteContent,
            L::WriteChange, L::WriteLimits, NoExtra,      L::GetContent, Traits<T>::Take, L::Set,
            L::Write,       L::Describe,    L::ReadLimits};
}

constexpr KindOperations OfSelections = {EItemKind::Selection,
                                         false,
                                         true,
                                         "selection",
                                         Selection::Create,
                                         Selection::WriteContent,
                                         WriteChange<Selection::WriteContent>,
                                         NoExtra,
                                         Selection::WriteChoices,
                                         Selection::GetContent,
                                         Selection::Take,
                                         Selection::Set,
                                         Selection::Write,
                                         Selection::Describe,
                                         Selection::ReadChoices};

constexpr KindOperations OfLists = {EItemKind::List,
                                    false,
                                    false,
                                    "list",
                                    List::Create,
                                    List::WriteContent,
                                    WriteChange<List::WriteContent>,
                                    NoExtra,
                                    NoExtra,
                                    List::GetContent,
                                    List::Take,
                                    List::Set,
                                    List::Write,
                                    NoDescription,
                                    NoLimits};

}  // namespace

const std::array<KindOperations, ItemKindCount - 1> ValueKinds = {{
    Plain<bool>(EItemKind::Bool, "bool"),
    Plain<int>(EItemKind::Int, "int"),
    Plain<QString>(EItemKind::Text, "text"),
    Numeric<int>(EItemKind::NumericInt, "int"),
    Numeric<double>(EItemKind::NumericDouble, "double"),
    OfSelections,
    OfLists,
}};

bool KindOf(const values::TreeItem& item, EItemKind* kind) {
    const std::type_info& type = typeid(item);
    if (type == typeid(ValueNumeric<int>)) return *kind = EItemKind::NumericInt, true;
    if (type == typeid(ValueNumeric<double>)) return *kind = EItemKind::NumericDouble, true;
    if (type == typeid(values::Value<QString>)) return *kind = EItemKind::Text, true;
    if (type == typeid(values::Value<bool>)) return *kind = EItemKind::Bool, true;
    if (type == typeid(values::Value<int>)) return *kind = EItemKind::Int, true;
    if (type == typeid(ValueSelection)) return *kind = EItemKind::Selection, true;
    if (type == typeid(ValueList<double>)) return *kind = EItemKind::List, true;
    if (item.IsNode()) return *kind = EItemKind::Node, true;
    return false;
}

bool AcceptItem(ItemDescription* item) {
    const KindOperations* const operations = Operations(item->kind);
    if (operations == nullptr) return true;
    if (!operations->Accept(&item->content)) return false;
    if (!operations->hasLimits) return true;
    return operations->Accept(&item->minimum) && operations->Accept(&item->maximum);
}

std::unique_ptr<values::TreeItem> MakeItem(const ItemDescription& item, const QString& name) {
    const KindOperations* const operations = Operations(item.kind);
    if (operations == nullptr) return std::make_unique<values::Node>(name);
    std::unique_ptr<ValueBase> value = operations->create();
    value->SetName(name);
    operations->describe(*value, item, nullptr);
    operations->set(*value, item.content, nullptr);
    if ((item.flags & ItemDescription::EveryChange) != 0) value->SetDelivery(values::EDelivery::EveryChange);
    if ((item.flags & ItemDescription::Stale) != 0) value->SetState(values::Stale);
    return value;
}

void DescribeItem(const values::TreeItem& item, ItemDescription* description) {
    *description = ItemDescription();
    if (!KindOf(item, &description->kind) || description->kind == EItemKind::Node) return;
    const auto& value = static_cast<const ValueBase&>(item);
    const KindOperations& operations = *Operations(description->kind);
    description->flags = FlagsOf(value);
    description->content = operations.content(value);
    operations.limits(value, description);
}

unsigned FlagsOf(const values::ValueBase& value) {
    return (value.GetDelivery() == values::EDelivery::EveryChange ? ItemDescription::EveryChange : 0U) |
           (value.GetState() == values::Stale ? ItemDescription::Stale : 0U);
}

}  // namespace vt
