// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/observable.h>
#include <platform/values/treeitem.h>

#include <functional>
#include <unordered_map>
#include <vector>

namespace mctree {

/// What happened to an item; nothing yet where it is present.
enum class EEvent { Present, Content, Items, Description, Stale, Valid, Added, Removed };

/// Tells what happens in a subtree of the process's tree. Holds one entry for each of its items, and forgets
/// those that go.
class SubtreeWatch final : private IObserver {
  public:
    /// Called while the item still is where it was, also for Removed, which is told of the topmost item only.
    using Handler = std::function<void(EEvent, const values::TreeItem&)>;

    /// \a onUnsettled is called when there is something to settle (see SettleStates).
    SubtreeWatch(Handler handler, std::function<void()> onUnsettled);
    ~SubtreeWatch() override;
    SubtreeWatch(const SubtreeWatch&) = delete;
    SubtreeWatch& operator=(const SubtreeWatch&) = delete;

    /// Watches \a top and all that is below it, until it goes. Something that is watched already stays so.
    void Watch(values::TreeItem& top);
    /// The same, and tells that all of it was added.
    void WatchAdded(values::TreeItem& top);
    bool IsEmpty() const { return m_items.empty(); }

    /// States are told late, by this call, because a lost connection turns everything stale, and that is one
    /// event and not thousands: with \a areReal false whatever changed meanwhile is dropped.
    void SettleStates(bool areReal);

  private:
    struct Item {
        values::TreeItem* item;
        bool isShownStale;
        bool isUnsettled = false;
    };

    void Update(Observable* source, TChangeCode code) override;
    void UpdateNode(values::TreeItem& item, TChangeCode code);
    void UpdateValue(Observable* source, values::TreeItem& item, TChangeCode code);
    void NoteState(Observable* source);
    void AddChildren(values::TreeItem& item);
    void Forget(values::TreeItem& item);

    Handler m_handler;
    std::function<void()> m_onUnsettled;
    std::unordered_map<Observable*, Item> m_items;
    std::vector<Observable*> m_unsettled;
};

}  // namespace mctree
