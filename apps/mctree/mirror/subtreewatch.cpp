// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/mirror/subtreewatch.h>

#include <apps/mctree/mirror/walk.h>

#include <platform/values/visit.h>

#include <utility>

namespace mctree {

SubtreeWatch::SubtreeWatch(Handler handler, std::function<void()> onUnsettled)
    : m_handler(std::move(handler)), m_onUnsettled(std::move(onUnsettled)) {}

SubtreeWatch::~SubtreeWatch() {
    for (const auto& [observable, item] : m_items)
        observable->DeleteObserver(this);
}

void SubtreeWatch::Watch(values::TreeItem& top) {
    Walk(top, [this](values::TreeItem& item, int) {
        Observable* const observable = item.GetObservable();
        if (observable == nullptr) return;
        const bool isNew =
            m_items.try_emplace(observable, Item{&item, item.GetState() == values::Stale}).second;
        if (isNew) observable->AddObserver(this);
    });
}

void SubtreeWatch::WatchAdded(values::TreeItem& top) {
    Watch(top);
    Walk(top, [this](const values::TreeItem& item, int) { m_handler(EEvent::Added, item); });
}

void SubtreeWatch::SettleStates(bool areReal) {
    const std::vector<Observable*> unsettled = std::exchange(m_unsettled, {});
    for (Observable* const observable : unsettled) {
        const auto found = m_items.find(observable);
        if (found == m_items.end()) continue;
        Item& watched = found->second;
        watched.isUnsettled = false;
        const bool isStale = watched.item->GetState() == values::Stale;
        if (!areReal || isStale == watched.isShownStale) continue;
        watched.isShownStale = isStale;
        m_handler(isStale ? EEvent::Stale : EEvent::Valid, *watched.item);
    }
}

void SubtreeWatch::Update(Observable* source, TChangeCode code) {
    const auto found = m_items.find(source);
    if (found == m_items.end()) return;
    values::TreeItem& item = *found->second.item;
    if (item.IsNode())
        UpdateNode(item, code);
    else
        UpdateValue(source, item, code);
}

void SubtreeWatch::UpdateNode(values::TreeItem& item, TChangeCode code) {
    if (code == changecode::ChildrenAdded) AddChildren(item);
    if (code == changecode::GoingAway) Forget(item);
}

void SubtreeWatch::UpdateValue(Observable* source, values::TreeItem& item, TChangeCode code) {
    switch (code) {
        case changecode::StateChanged:
            if (item.GetState() == values::GoingAway)
                Forget(item);
            else
                NoteState(source);
            break;
        case changecode::ContentChanged:
            m_handler(EEvent::Content, item);
            break;
        case changecode::DescriptionChanged:
            m_handler(EEvent::Description, item);
            break;
        case changecode::ItemsChanged:
        case changecode::ItemAdded:
        case changecode::ItemRemoved: {
            // The items of a list are its content.
            const bool isList = values::Is<values::ValueList<double>>(item);
            m_handler(isList ? EEvent::Content : EEvent::Items, item);
            break;
        }
        default:
            break;
    }
}

void SubtreeWatch::NoteState(Observable* source) {
    if (std::exchange(m_items.at(source).isUnsettled, true)) return;
    m_unsettled.push_back(source);
    m_onUnsettled();
}

void SubtreeWatch::AddChildren(values::TreeItem& item) {
    auto& node = static_cast<values::Node&>(item);
    // New children stand at the end.
    std::vector<values::TreeItem*> added;
    const auto children = node.GetTreeItems();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        if (m_items.count((*child)->GetObservable()) != 0) break;
        added.push_back(*child);
    }
    for (auto child = added.rbegin(); child != added.rend(); ++child)
        WatchAdded(**child);
}

void SubtreeWatch::Forget(values::TreeItem& item) {
    // When a node goes, its line stands for all that is below it.
    const values::Node* const parent = item.GetParent();
    const bool isTopmost = parent == nullptr || parent->GetState() != values::GoingAway;
    if (isTopmost) m_handler(EEvent::Removed, item);
    item.GetObservable()->DeleteObserver(this);
    m_items.erase(item.GetObservable());
}

}  // namespace mctree
