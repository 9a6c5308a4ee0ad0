// SPDX-License-Identifier: Apache-2.0
#include <tests/platform/vtclient/randomedits.h>

#include <platform/values/tree.h>
#include <platform/values/valueselection.h>

using values::Value;
using values::ValueList;
using values::ValueNumeric;
using values::ValueSelection;

namespace {

constexpr int OfEach = 5;      ///< values of each frequent type
constexpr int MaxItems = 20;   ///< that come and go
constexpr int MaxChoices = 8;  ///< of the selection

}  // namespace

RandomEdits::RandomEdits(QString root, ERole role, unsigned seed)
    : m_root(std::move(root)), m_role(role), m_random(seed) {}

template <class V>
void RandomEdits::Make(const QString& name) {
    auto value = std::make_unique<V>();
    value->SetName(name);
    if (values::Tree::Instance()->AddValue(m_root, value.get())) value.release();
}

void RandomEdits::MakeTree() {
    for (int i = 0; i < OfEach; ++i) {
        Make<ValueNumeric<int>>(QStringLiteral("n%1").arg(i));
        Make<ValueNumeric<double>>(QStringLiteral("d%1").arg(i));
        Make<Value<QString>>(QStringLiteral("t%1").arg(i));
    }
    Make<Value<bool>>(QStringLiteral("b"));
    Make<Value<int>>(QStringLiteral("i"));
    Make<ValueSelection>(QStringLiteral("s"));
    Make<ValueList<double>>(QStringLiteral("l"));
    values::Tree::Instance()->ProvideNode(m_root + QStringLiteral("/items"));
    for (const QString& name : {QStringLiteral("log"), QStringLiteral("notes")}) {
        Make<Value<QString>>(name);
        Find<Value<QString>>(name)->SetDelivery(values::EDelivery::EveryChange);
    }
}

values::TreeItem* RandomEdits::Item(const QString& name) const {
    return values::Tree::Instance()->FindItem(m_root + QLatin1Char('/') + name);
}

QString RandomEdits::Text() {
    return QString(Chance(40), QLatin1Char('x')) + QString::number(Chance(1000));
}

void RandomEdits::Step() {
    const int kind = Chance(m_role == ERole::Device ? 16 : 10);
    if (kind < 6) return EditContent();
    if (kind == 6) return EditSelection();
    if (kind == 7) return EditList();
    if (kind < 10) return Create();
    if (kind == 10) return Describe();
    if (kind == 11) return DescribeSelection();
    if (kind == 12) return RenameOne();
    DeleteOne();
}

void RandomEdits::EditContent() {
    const int which = Chance(OfEach);
    switch (Chance(5)) {
        case 0:
            if (auto* const number = Find<ValueNumeric<int>>(QStringLiteral("n%1").arg(which)))
                number->SetValue(Chance(1000));
            break;
        case 1:
            if (auto* const number = Find<ValueNumeric<double>>(QStringLiteral("d%1").arg(which)))
                number->SetValue(Chance(1000) / 8.0);
            break;
        case 2:
            if (auto* const text = Find<Value<QString>>(QStringLiteral("t%1").arg(which)))
                text->SetValue(Text());
            break;
        case 3:
            if (auto* const flag = Find<Value<bool>>(QStringLiteral("b"))) flag->SetValue(!flag->GetValue());
            break;
        default:
            if (auto* const number = Find<Value<int>>(QStringLiteral("i"))) number->SetValue(Chance(1000));
            break;
    }
}

void RandomEdits::EditSelection() {
    auto* const selection = Find<ValueSelection>(QStringLiteral("s"));
    if (selection != nullptr) selection->SelectIndex(Chance(selection->Count() + 1) - 1);
}

void RandomEdits::EditList() {
    auto* const list = Find<ValueList<double>>(QStringLiteral("l"));
    if (list == nullptr) return;
    std::vector<double> items(static_cast<std::size_t>(Chance(20)));
    for (double& item : items)
        item = Chance(100);
    list->SetItems(items);
}

// A value, or a small subtree that is attached whole.
void RandomEdits::Create() {
    auto* const parent = Find<values::Node>(QStringLiteral("items"));
    if (parent == nullptr || parent->CountChildren() >= MaxItems) return;
    const QString side = m_role == ERole::Device ? QStringLiteral("device") : QStringLiteral("operator");
    const QString name = side + QString::number(m_made++);
    std::unique_ptr<values::TreeItem> item;
    if (Chance(2) == 0) {
        auto value = std::make_unique<ValueNumeric<int>>(Chance(100), 0, 100);
        value->SetName(name);
        item = std::move(value);
    } else {
        auto node = std::make_unique<values::Node>(name);
        for (int i = Chance(4); i > 0; --i)
            node->CreateChild(Value<QString>(Text()), QString::number(i));
        item = std::move(node);
    }
    parent->AddChild(item);
}

void RandomEdits::Describe() {
    auto* const number = Find<ValueNumeric<int>>(QStringLiteral("n%1").arg(Chance(OfEach)));
    if (number == nullptr) return;
    switch (Chance(3)) {
        case 0:
            return number->SetMin(Chance(500));
        case 1:
            return number->SetMax(500 + Chance(500));
        default:
            return number->SetState(number->GetState() == values::Stale ? values::Valid : values::Stale);
    }
}

void RandomEdits::DescribeSelection() {
    auto* const selection = Find<ValueSelection>(QStringLiteral("s"));
    if (selection == nullptr) return;
    if (selection->Count() == 0 || (Chance(2) == 0 && selection->Count() < MaxChoices))
        selection->AddItem(Text(), Chance(10), m_made++);
    else
        selection->DeleteItem(selection->GetItemAt(Chance(selection->Count())));
}

values::TreeItem* RandomEdits::AnyChild() const {
    const auto* const parent = Find<values::Node>(QStringLiteral("items"));
    if (parent == nullptr || parent->CountChildren() == 0) return nullptr;
    const std::vector<values::TreeItem*> children = parent->GetTreeItems();
    return children[m_random() % children.size()];
}

void RandomEdits::DeleteOne() {
    values::Tree::Instance()->Delete(AnyChild());
}

void RandomEdits::RenameOne() {
    values::TreeItem* const item = AnyChild();
    if (item != nullptr && !item->IsNode())
        static_cast<values::ValueBase*>(item)->SetName(QStringLiteral("renamed%1").arg(m_made++));
}
