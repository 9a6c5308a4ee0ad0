// SPDX-License-Identifier: Apache-2.0
#include <fuzz/treeedits.h>

#include <fuzz/compose.h>
#include <fuzz/narration.h>

#include <platform/values/node.h>
#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/values/valueselection.h>
#include <platform/vtclient/wire/itemkinds.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <vector>

namespace treeedits {

namespace {

/// So many are looked through, or made at once.
constexpr std::size_t ManyItems = 64;
/// A tree does not grow beyond: more finds nothing new, only later.
constexpr std::size_t MaxItems = 4000;

enum EEdit { Set, Add, Delete, AddMany, Describe, AddBelow, Rename, Choices, Deliver, TurnStale, EditCount };

values::ValueBase* ChooseValue(const QString& base, Script& script) {
    values::TreeItem* const item = Choose(base, script);
    return item == nullptr || item->IsNode() ? nullptr : static_cast<values::ValueBase*>(item);
}

bool IsFull() {
    std::size_t count = 0;
    ForEach(values::Tree::Instance()->GetRoot(), [&count](values::TreeItem& /*item*/) { ++count; });
    return count >= MaxItems;
}

void SetContent(values::ValueBase& value, Script& script) {
    vt::EItemKind kind = vt::EItemKind::Node;
    vt::KindOf(value, &kind);
    vt::Content content = compose::ContentOf(kind, script);
    const vt::KindOperations& operations = *vt::Operations(kind);
    if (operations.Accept(&content)) operations.set(value, content, nullptr);
}

void DescribeValue(values::ValueBase& value, Script& script) {
    vt::ItemDescription item;
    vt::KindOf(value, &item.kind);
    const vt::KindOperations& operations = *vt::Operations(item.kind);
    if (!operations.hasLimits) return;
    item.minimum = compose::ContentOf(item.kind, script);
    item.maximum = compose::ContentOf(item.kind, script);
    if (operations.Accept(&item.minimum) && operations.Accept(&item.maximum))
        operations.describe(value, item, nullptr);
}

/// What is followed stays so: neither name is too long.
void RenameValue(values::ValueBase& value, const QString& name) {
    const int length = value.GetPathName().size() - value.GetName().size() + name.size();
    if (value.GetName().size() <= vtlimits::MaxNameLength && name.size() <= vtlimits::MaxNameLength &&
        length < vtlimits::MaxPathLength)
        value.SetName(name);
}

void ChangeChoices(values::ValueBase& value, Script& script) {
    auto* const selection = dynamic_cast<values::ValueSelection*>(&value);
    if (selection == nullptr) return;
    switch (script.Below(3)) {
        case 0:
            selection->AddItem(script.Text(), script.Real(), script.SignedNumber());
            break;
        case 1:
            selection->DeleteItem(selection->GetItemAt(static_cast<int>(script.Below(4))));
            break;
        default:
            selection->SetItems({{script.Text(), script.Real(), 1}, {script.Text(), script.Real(), 2}});
            break;
    }
}

void AddItem(const QString& parentPath, const QString& name, Script& script) {
    vt::ItemDescription item = compose::Item(script);
    if (IsFull() || !vt::AcceptItem(&item)) return;
    std::unique_ptr<values::TreeItem> added = vt::MakeItem(item, name);
    values::Tree::Instance()->AddItem(parentPath, added);
}

/// As one whole or one by one.
void AddManyItems(const QString& parentPath, Script& script) {
    if (IsFull()) return;
    // Fewer below a long path, which each of them goes along.
    constexpr std::size_t LongPath = 1000;
    const std::size_t length = 1 + static_cast<std::size_t>(parentPath.size()) / LongPath;
    const std::size_t count = ManyItems * script.Below(16) / length;
    const QString name = script.Name().left(8);  // a long one so often takes a gigabyte
    const bool isWhole = script.Flag();
    std::unique_ptr<values::TreeItem> top = std::make_unique<values::Node>(script.Name());
    for (std::size_t i = 0; i < count; ++i) {
        std::unique_ptr<values::TreeItem> item = std::make_unique<values::Value<int>>(static_cast<int>(i));
        static_cast<values::Value<int>&>(*item).SetName(name + QString::number(i));
        if (isWhole)
            static_cast<values::Node&>(*top).AddChild(item);
        else
            values::Tree::Instance()->AddItem(parentPath, item);
    }
    if (isWhole) values::Tree::Instance()->AddItem(parentPath, top);
}

}  // namespace

void ForEach(values::TreeItem* item, const std::function<void(values::TreeItem&)>& visit) {
    std::vector<values::TreeItem*> items{item};
    while (!items.empty()) {
        values::TreeItem* const next = items.back();
        items.pop_back();
        visit(*next);
        if (!next->IsNode()) continue;
        const std::vector<values::TreeItem*> children = static_cast<values::Node*>(next)->GetTreeItems();
        items.insert(items.end(), children.rbegin(), children.rend());
    }
}

values::TreeItem* Choose(const QString& base, Script& script) {
    values::TreeItem* const root = values::Tree::Instance()->FindItem(base);
    if (root == nullptr) return nullptr;
    std::vector<values::TreeItem*> items;
    ForEach(root, [&items](values::TreeItem& item) {
        if (items.size() < ManyItems) items.push_back(&item);
    });
    return items[script.Byte() % items.size()];
}

void Edit(const QString& base, Script& script) {
    const unsigned edit = script.Below(EditCount);
    Tell(QStringLiteral("edit %1").arg(edit));
    if (edit == Add) return AddItem(base, script.Name(), script);
    if (edit == AddBelow || edit == AddMany) {
        values::TreeItem* const parent = Choose(base, script);
        const QString path = parent != nullptr ? parent->GetPathName() : base;
        return edit == AddMany ? AddManyItems(path, script) : AddItem(path, script.Name(), script);
    }
    if (edit == Delete) return values::Tree::Instance()->Delete(Choose(base, script));
    values::ValueBase* const value = ChooseValue(base, script);
    if (value == nullptr) return;
    if (edit == Set) SetContent(*value, script);
    if (edit == Describe) DescribeValue(*value, script);
    if (edit == Rename) RenameValue(*value, script.Name());
    if (edit == Choices) ChangeChoices(*value, script);
    if (edit == Deliver)
        value->SetDelivery(script.Flag() ? values::EDelivery::EveryChange : values::EDelivery::LastValue);
    if (edit == TurnStale) value->SetState(script.Flag() ? values::Stale : values::Valid);
}

}  // namespace treeedits
