// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/node.h>
#include <platform/values/valuebase.h>
#include <platform/vtclient/wire/itemkinds.h>

namespace vt {

class TreeMirror;

/// How a local item stands with the server. MirrorRecords has what leads from one to another.
enum class ERecord : std::uint8_t {
    Unused,   ///< no item
    Known,    ///< the server has it
    Own,      ///< the server has it because this client asked for it
    Offered,  ///< only this client has it, and asks the server for it
    Refused,  ///< only this client has it, and the server does not want it
    Awaited   ///< the server had it; stale, it goes unless it comes with the node asked for above it
};

/// What a mirror knows of one local item. Hears of the item's changes and passes them on to its mirror.
class MirrorRecord final : public IObserver {
  public:
    MirrorRecord() = default;
    bool IsUsed() const { return state != ERecord::Unused; }
    bool IsNode() const { return kind == EItemKind::Node; }
    bool IsAtServer() const { return state == ERecord::Known || state == ERecord::Own; }
    bool IsUnderWay() const { return HasRequests() || IsQueued(); }
    bool IsQueued() const { return lastQueued != 0; }
    bool HasRequests() const { return lastRequest != 0; }
    values::Node& Node() const { return static_cast<values::Node&>(*item); }
    values::ValueBase& Value() const { return static_cast<values::ValueBase&>(*item); }
    /// Shows the server's content. Whoever is told may end this record, and with it the content.
    void ShowServerContent() { Operations(kind)->set(Value(), server, this); }
    void Update(Observable* source, TChangeCode code) override;

    TreeMirror* mirror = nullptr;
    values::TreeItem* item = nullptr;
    MirrorRecord* parent = nullptr;
    values::TreeItem* lastChild = nullptr;  ///< of a node: the last child that has a record
    Content server;                         ///< the server's content, whatever is shown
    int pathLength = 0;                     ///< of the path at the server
    quint32 index = 0;                      ///< in the pool
    quint32 id = 0;                         ///< the server's number, once it has had one
    quint32 generation = 0;                 ///< of the snapshot that last held it
    quint32 series = 0;                     ///< in which it was made, aside; 0: in place
    quint32 lastQueued = 0;                 ///< the last edit that waits to be sent; 0: none does
    quint32 lastRequest = 0;  ///< the last write or creation without an answer; 0: there is none
    EItemKind kind = EItemKind::Node;
    ERecord state = ERecord::Unused;
    bool isEdited = false;     ///< was edited after its creation, or its last write, was sent
    bool isOccurring = false;  ///< every change counts
};

/// Tells whether a record still stands for its item after observers were told something: they may have
/// deleted the item or ended the mirror, and the record may be another's by now.
class RecordGuard {
  public:
    explicit RecordGuard(const MirrorRecord& record)
        : m_record(record), m_item(record.item), m_guard(*record.item->GetObservable()) {}
    bool IsAlive() const { return m_guard.IsAlive() && m_record.item == m_item; }

  private:
    const MirrorRecord& m_record;
    const values::TreeItem* m_item;
    ObservableGuard m_guard;
};

}  // namespace vt
