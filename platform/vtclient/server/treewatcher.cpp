// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/server/treewatcher.h>

#include <platform/app/trace.h>
#include <platform/values/node.h>
#include <platform/values/valuebase.h>
#include <platform/vtclient/wire/itemkinds.h>
#include <platform/vtclient/wire/vtlimits.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace vt {

namespace {

/// What is added at once by the watched program is mostly small, and is numbered at once, so that nothing
/// that happens to it is missed.
constexpr int TakenInAtOnce = 1000;

/// Entries in one part, at most.
constexpr std::size_t MaxEntries = 8192;

/// Room for so many is kept, and for so many bytes of a part.
constexpr std::size_t KeptEntries = 2048;
constexpr int KeptBytes = 4096;

void ClearEntries(std::vector<TreeWatcher::Entry>* entries) {
    entries->clear();
    if (entries->capacity() > KeptEntries) entries->shrink_to_fit();
}

const values::ValueBase& ValueOf(const values::TreeItem* item) {
    return static_cast<const values::ValueBase&>(*item);
}

}  // namespace

TreeWatcher::IListener::~IListener() = default;

TreeWatcher::WriteScope::WriteScope(TreeWatcher& watcher, quint32 id, int session)
    : m_watcher(&watcher), m_outer(std::exchange(watcher.m_write, this)), m_id(id), m_session(session) {}

TreeWatcher::WriteScope::~WriteScope() {
    if (m_watcher != nullptr) m_watcher->m_write = m_outer;
}

TreeWatcher::TreeWatcher(values::TreeItem* root, IListener& listener)
    : m_listener(listener), m_rootName(root->GetName()) {
    PushAdded(Take(root, 0).id);
}

TreeWatcher::~TreeWatcher() {
    for (WriteScope* write = m_write; write != nullptr; write = write->m_outer)
        write->m_watcher = nullptr;
    DropAll();
}

void TreeWatcher::DropAll() {
    m_records.ForEach([](Record& record) { record.item->GetObservable()->DeleteObserver(&record); });
    m_records.Clear();
    m_unfinished.clear();
}

values::TreeItem* TreeWatcher::Find(quint32 id) {
    const Record* const record = m_records.Find(id);
    return record != nullptr && !record->isUnsent ? record->item : nullptr;
}

EItemKind TreeWatcher::KindOfItem(quint32 id) {
    return m_records.Find(id)->kind;
}

// What clients cannot be told of gets a record, too: it may be the last child, and go.
bool TreeWatcher::MaySend(const values::TreeItem& item, Record* record) {
    if (!KindOf(item, &record->kind)) return false;
    const int length = item.GetName().size();
    const Record* const parent = m_records.Find(record->parent);
    const bool isRoot = record->id == 0;  // whose path somebody asked for
    record->pathLength = isRoot ? item.GetPathName().size() : parent->pathLength + 1 + length;
    const bool fits = length <= vtlimits::MaxNameLength && record->pathLength <= vtlimits::MaxPathLength;
    if (!isRoot && !fits) TraceUnsent("name or the path", item);
    return isRoot || fits;
}

// The watcher goes first among the observers: what they do in answer to a change comes after it.
const TreeWatcher::Record& TreeWatcher::Take(values::TreeItem* item, quint32 parent) {
    const quint32 id = m_nextId++;
    Record& record = m_records.Provide(id);
    m_records.Retain(id);
    record.watcher = this;
    record.item = item;
    record.id = id;
    record.parent = parent;
    record.isUnsent = !MaySend(*item, &record);
    Observable* const observable = item->GetObservable();
    observable->AddObserver(&record);
    observable->MakeFirstObserver(&record);
    if (record.isUnsent) return record;
    if (record.kind != EItemKind::Node) {
        record.isOccurring = ValueOf(item).GetDelivery() == values::EDelivery::EveryChange;
    } else if (static_cast<values::Node*>(item)->CountChildren() != 0) {
        record.isUnfinished = true;
        m_unfinished.push_back(id);
    }
    return record;
}

void TreeWatcher::Drop(Record& record) {
    record.item->GetObservable()->DeleteObserver(&record);
    const quint32 id = record.id;
    record = Record();
    m_records.Release(id);
}

bool TreeWatcher::TakeIn(const std::function<bool()>& isTimeUp) {
    while (!m_unfinished.empty()) {
        Record* const record = m_records.Find(m_unfinished.front());
        if (record != nullptr && record->IsUsed()) {
            if (!TakeInChildren(*record, isTimeUp)) return false;
            record->isUnfinished = false;
        }
        m_unfinished.pop_front();
    }
    return true;
}

bool TreeWatcher::TakeInChildren(Record& record, const std::function<bool()>& isTimeUp) {
    const auto* const node = static_cast<const values::Node*>(record.item);
    values::TreeItem* child =
        record.lastChild != nullptr ? record.lastChild->GetNextSibling() : node->GetFirstChild();
    int untilCheck = vtlimits::CheckInterval;
    for (; child != nullptr; child = child->GetNextSibling()) {
        if (--untilCheck == 0) {
            if (isTimeUp()) return false;
            untilCheck = vtlimits::CheckInterval;
        }
        record.lastChild = child;
        PushAdded(Take(child, record.id).id);
    }
    return true;
}

void TreeWatcher::OnUpdate(Record& record, TChangeCode code) {
    if (record.isUnsent) {
        if (record.item->GetState() == values::GoingAway) OnGoingAway(record);
        return;
    }
    if (record.kind == EItemKind::Node) {
        if (code == changecode::GoingAway)
            OnGoingAway(record);
        else if (code == changecode::ChildrenAdded)
            OnChildrenAdded(record);
        return;
    }
    switch (code) {
        case changecode::ContentChanged:
            OnContent(record);
            break;
        case changecode::ItemsChanged:
        case changecode::ItemAdded:
        case changecode::ItemRemoved:
            if (record.kind == EItemKind::List)
                OnContent(record);
            else
                OnDirty(record, EChange::Items, &record.areItemsDirty);
            break;
        case changecode::StateChanged:
            if (record.item->GetState() == values::GoingAway) {
                OnGoingAway(record);
                break;
            }
            [[fallthrough]];
        case changecode::DescriptionChanged:
            // Under another name it is not what is watched.
            if (record.id == 0 && record.item->GetName() != m_rootName) return OnGoingAway(record);
            record.isOccurring = ValueOf(record.item).GetDelivery() == values::EDelivery::EveryChange;
            OnDirty(record, EChange::Described, &record.isDescriptionDirty);
            break;
        default:
            break;
    }
}

// What has not been announced is written as it is when its turn comes.
void TreeWatcher::OnDirty(const Record& record, EChange change, bool* flag) {
    if (*flag || record.id >= m_announced) return;
    *flag = true;
    Push(change, record.id);
}

void TreeWatcher::OnContent(Record& record) {
    if (record.isOccurring)
        OnOccurrence(record);
    else
        OnDirty(record, EChange::Changed, &record.isContentDirty);
}

// This runs for each change of values of which every change counts. So what is rare is left to others.
void TreeWatcher::OnOccurrence(Record& record) {
    if (m_write != nullptr) return OnWritten(record);
    const int before = m_occurrences.Size();
    m_occurrences.Changed(record.id, ValueOf(record.item), record.kind);
    const int size = m_occurrences.Size() - before;
    const bool isPlain = m_isTold && size <= vtlimits::MaxChange && !record.isOversized;
    if (!isPlain || m_entries.size() == m_entries.capacity()) return FinishOccurrence(record, before);
    m_entries.emplace_back(EChange::Changed, record.id, static_cast<quint32>(size), true);
}

void TreeWatcher::OnWritten(Record& record) {
    const int before = m_occurrences.Size();
    const values::ValueBase& value = ValueOf(record.item);
    if (m_write->m_id == record.id && !std::exchange(m_write->m_isTold, true))
        m_occurrences.Own(record.id, m_write->m_session, value, record.kind);
    else
        m_occurrences.Changed(record.id, value, record.kind);
    FinishOccurrence(record, before);
}

void TreeWatcher::FinishOccurrence(Record& record, int before) {
    const int size = m_occurrences.Size() - before;
    if (size > vtlimits::MaxChange) return LoseOccurrence(record, before);
    m_entries.emplace_back(EChange::Changed, record.id, static_cast<quint32>(size), true);
    if (!m_isTold) TellChanges();
    if (record.isOversized) OnOversized(record, false);
}

void TreeWatcher::LoseOccurrence(Record& record, int before) {
    m_occurrences.Truncate(before);
    if (record.isOversized) return TraceOversized(record);  // each of them is lost
    OnOversized(record, true);
}

void TreeWatcher::OnOversized(Record& record, bool isOversized) {
    SetOversized(record, isOversized);
    OnDirty(record, EChange::Described, &record.isDescriptionDirty);
}

void TreeWatcher::OnChildrenAdded(Record& record) {
    if (record.isUnfinished) return;  // its turn comes
    int left = TakenInAtOnce;
    const auto isEnough = [&left] { return (left -= vtlimits::CheckInterval) <= 0; };
    const std::size_t before = m_unfinished.size();
    if (!TakeInChildren(record, isEnough)) {
        record.isUnfinished = true;
        m_unfinished.push_back(record.id);
    } else if (before == 0) {
        TakeIn(isEnough);
    }
    if (!m_unfinished.empty()) m_listener.OnChanges(*this);
}

void TreeWatcher::OnGoingAway(Record& record) {
    if (record.id == 0) {
        m_isGone = true;
        DropAll();
        m_entries.clear();
        m_read = m_others = 0;
        m_isTold = false;
        m_listener.OnRootGone(*this);
        return;
    }
    // What is below tells as well, after its parent: then the parent has no record any more.
    Record* const parent = m_records.Find(record.parent);
    const bool isTopmost = parent != nullptr && parent->IsUsed();
    if (isTopmost && parent->lastChild == record.item) parent->lastChild = record.item->GetPreviousSibling();
    const quint32 id = record.id;
    const bool wasTold = !record.isUnsent && id < m_announced;
    Drop(record);
    if (!isTopmost || !wasTold) return;
    Push(EChange::Removed, id);
}

/// What is no occurrence.
void TreeWatcher::Push(EChange change, quint32 id, quint32 size) {
    ++m_others;
    m_entries.emplace_back(change, id, size);
    if (!m_isTold) TellChanges();
}

void TreeWatcher::TellChanges() {
    m_isTold = true;
    m_listener.OnChanges(*this);
}

// Numbers follow one another, so that a large tree that is taken in is one entry.
void TreeWatcher::PushAdded(quint32 id) {
    if (HasChanges() && m_entries.back().change == EChange::Added) {
        ++m_entries.back().size;
        return;
    }
    Push(EChange::Added, id, 1);
}

unsigned TreeWatcher::FlagsOf(const Record& record) const {
    return vt::FlagsOf(ValueOf(record.item)) | (record.isOversized ? ItemDescription::Stale : 0U);
}

void TreeWatcher::TraceUnsent(const char* what, const values::TreeItem& item) {
    // Some client most likely, whichever.
    MCS_TRACE_OF(QStringLiteral("the tree"), QStringLiteral("The %1 of '%2' is too large to be sent")
                                                 .arg(QLatin1String(what), item.GetPathName()));
}

void TreeWatcher::TraceOversized(const Record& record) {
    TraceUnsent("content", *record.item);
}

bool TreeWatcher::WriteAdded(quint32 id, ChangeWriter* writer) {
    Record* const record = m_records.Find(id);
    if (record == nullptr || !record->IsUsed() || record->isUnsent) return false;
    const int before = writer->Size();
    const unsigned flags = record->kind == EItemKind::Node ? 0U : vt::FlagsOf(ValueOf(record->item));
    writer->Added(id, record->parent, *record->item, record->kind, flags);
    SetOversized(*record, writer->Size() - before > vtlimits::MaxChange);
    if (!record->isOversized) return true;
    writer->Truncate(before);
    const std::unique_ptr<values::ValueBase> empty = Operations(record->kind)->create();
    empty->SetName(record->item->GetName());
    writer->Added(id, record->parent, *empty, record->kind, FlagsOf(*record));
    return true;
}

// A content that does not fit is described as stale until it fits again.
void TreeWatcher::WriteContentOf(Record& record, EChange change, ChangeWriter* writer) {
    const int before = writer->Size();
    const values::ValueBase& value = ValueOf(record.item);
    // An index says nothing to whoever could not be sent the choices.
    const bool isAll =
        change == EChange::Items || (record.isOversized && Operations(record.kind)->hasChoices);
    if (isAll)
        writer->Items(record.id, value, record.kind);
    else
        writer->Changed(record.id, value, record.kind);
    const bool isOversized = writer->Size() - before > vtlimits::MaxChange;
    if (isOversized) writer->Truncate(before);
    SetOversized(record, isOversized);
    // One client may have been told before, another not.
    if (record.wasOversized) writer->Described(record.id, value, record.kind, FlagsOf(record));
}

void TreeWatcher::SetOversized(Record& record, bool isOversized) {
    if (isOversized && !record.isOversized) TraceOversized(record);
    record.isOversized = isOversized;
    record.wasOversized = record.wasOversized || isOversized;
}

bool TreeWatcher::WriteNow(EChange change, quint32 id, ChangeWriter* writer) {
    if (change == EChange::Added) return WriteAdded(id, writer);
    if (change == EChange::Removed) {
        writer->Removed(id);
        return true;
    }
    Record* const record = m_records.Find(id);
    if (record == nullptr || !record->IsUsed()) return false;
    if (change == EChange::Described)
        writer->Described(id, ValueOf(record->item), record->kind, FlagsOf(*record));
    else
        WriteContentOf(*record, change, writer);
    return true;
}

void TreeWatcher::ClearFlag(const Entry& entry) {
    Record* const record = m_records.Find(entry.id);
    if (record == nullptr) return;
    if (entry.change == EChange::Changed && !entry.isOccurrence) record->isContentDirty = false;
    if (entry.change == EChange::Described) record->isDescriptionDirty = false;
    if (entry.change == EChange::Items) record->areItemsDirty = false;
}

// As much of the range as fits the part.
void TreeWatcher::FetchAdded(Entry* range, bool isWritten) {
    if (!isWritten) {
        m_announced = range->id + range->size;
        range->size = 0;
        return;
    }
    while (range->size != 0 && m_writer.Size() < vtlimits::BatchTarget) {
        WriteAdded(range->id, &m_writer);
        m_announced = ++range->id;
        --range->size;
    }
}

void TreeWatcher::FetchEntry(const Entry& entry, bool isWritten) {
    ClearFlag(entry);
    if (isWritten) WriteNow(entry.change, entry.id, &m_writer);
}

// All that follow one another and fit the part, as one copy.
void TreeWatcher::FetchOccurrences(bool isWritten, Part* part) {
    const std::size_t first = m_read;
    const std::size_t last = std::min(m_entries.size(), first + MaxEntries - part->entries.size());
    const int room = isWritten ? vtlimits::BatchTarget - m_writer.Size() : std::numeric_limits<int>::max();
    int size = m_occurrences.Size() - m_occurrenceRead;
    if (m_others == 0 && last == m_entries.size() && size <= room) {
        m_read = last;
    } else {
        size = 0;
        while (m_read < last && m_entries[m_read].isOccurrence && size < room)
            size += static_cast<int>(m_entries[m_read++].size);
    }
    if (isWritten) m_writer.AppendRaw(m_occurrences.Data() + m_occurrenceRead, size);
    m_occurrenceRead += size;
    const auto begin = m_entries.begin();
    part->entries.insert(part->entries.end(), begin + static_cast<std::ptrdiff_t>(first),
                         begin + static_cast<std::ptrdiff_t>(m_read));
}

void TreeWatcher::Part::Clear() {
    occurrences.clear();
    if (changes.size() > KeptBytes) changes.clear();
    ClearEntries(&entries);
}

// The usual case of a busy server: nothing but occurrences, which fit one part. False if it is not that.
bool TreeWatcher::FetchAll(bool isWritten, Part* part) {
    const bool isWhole =
        m_others == 0 && m_read == 0 && m_occurrenceRead == 0 && m_entries.size() <= MaxEntries;
    if (!isWhole || (isWritten && m_occurrences.Size() > vtlimits::BatchTarget)) return false;
    part->entries.swap(m_entries);
    part->occurrences.clear();  // which may be the same bytes
    m_occurrences.TakeInto(&part->changes);
    part->occurrences = part->changes;
    if (!isWritten) part->changes.clear();
    part->firstNew = part->endNew = m_announced;
    part->hasMore = !IsTakenIn();
    m_isTold = false;
    return true;
}

bool TreeWatcher::NextPart(bool isWritten, Part* part) {
    part->entries.clear();
    if (!HasChanges()) return false;
    if (FetchAll(isWritten, part)) return true;
    part->firstNew = m_announced;
    const int firstOccurrence = m_occurrenceRead;
    // Entries that are not written are counted, so that a part stays small in time too.
    while (HasChanges() && part->entries.size() < MaxEntries && m_writer.Size() < vtlimits::BatchTarget) {
        Entry& entry = m_entries[m_read];
        if (entry.isOccurrence) {
            FetchOccurrences(isWritten, part);
            continue;
        }
        if (entry.change == EChange::Added) {
            FetchAdded(&entry, isWritten);
            if (entry.size != 0) break;
        } else {
            FetchEntry(entry, isWritten);
            part->entries.push_back(entry);
        }
        --m_others;
        ++m_read;
    }
    part->occurrences.clear();  // which may be the same bytes
    m_writer.TakeInto(&part->changes);
    const int size = m_occurrenceRead - firstOccurrence;
    // Where there was nothing else, these are the same bytes.
    part->occurrences = size == part->changes.size()
                            ? part->changes
                            : QByteArray(m_occurrences.Data() + firstOccurrence, size);
    part->endNew = m_announced;
    part->hasMore = HasChanges() || !IsTakenIn();
    ForgetFetched();
    return true;
}

void TreeWatcher::ForgetFetched() {
    if (!HasChanges()) {
        ClearEntries(&m_entries);
        m_read = 0;
        m_isTold = false;
    } else if (m_read > MaxEntries) {
        m_entries.erase(m_entries.begin(), m_entries.begin() + static_cast<std::ptrdiff_t>(m_read));
        m_read = 0;
    }
    // What is left is moved only when that is less than what goes.
    if (m_occurrenceRead < m_occurrences.Size() - m_occurrenceRead) return;
    m_occurrences.RemoveFront(m_occurrenceRead);
    m_occurrenceRead = 0;
}

}  // namespace vt
