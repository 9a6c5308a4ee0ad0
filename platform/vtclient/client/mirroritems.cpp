// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/client/mirroritems.h>

#include <platform/values/tree.h>
#include <platform/vtclient/client/changeerror.h>
#include <platform/vtclient/wire/itemkinds.h>

#include <QtCore/QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace vt {

MirrorItems::MirrorItems(QString localPath, MirrorRecords& records)
    : m_localPath(std::move(localPath)), m_records(records) {}

MirrorRecord* MirrorItems::Make(const TreeChange& change, MirrorRecord* parent, QString* error) {
    const QString name =
        parent != nullptr ? change.name : m_localPath.mid(m_localPath.lastIndexOf(QLatin1Char('/')) + 1);
    std::unique_ptr<values::TreeItem> item = MakeItem(change.item, name);
    values::TreeItem* const added = item.get();
    const bool isBelowNew = parent != nullptr && IsNew(*parent);
    if (isBelowNew) {
        if (!parent->Node().AddChild(item)) {
            FailChange(error, QStringLiteral("the name '%1' added twice").arg(change.name));
            return nullptr;
        }
        parent->lastChild = added;
    } else {
        m_aside.push_back({std::move(item), parent});
    }
    MirrorRecord& record = m_records.Make(added, change.item.kind, parent, ERecord::Known);
    record.series = m_series;
    record.server = change.item.content;
    record.isOccurring = (change.item.flags & ItemDescription::EveryChange) != 0;
    m_records.Arrive(record, parent, change.id);
    return &record;
}

bool MirrorItems::AttachAll(QString* error) {
    if (m_aside.empty()) return true;
    while (!m_aside.empty()) {
        Aside next = std::move(m_aside.front());
        m_aside.pop_front();
        if (!Attach(std::move(next), error)) return false;
    }
    ++m_series;
    return true;
}

bool MirrorItems::Attach(Aside aside, QString* error) {
    m_attaching = aside.item.get();
    bool isAttached = true;
    if (aside.parent != nullptr) {
        isAttached = AttachBelow(*aside.parent, aside.item, error);
    } else {
        const QString parentPath = m_localPath.left(m_localPath.lastIndexOf(QLatin1Char('/')) + 1);
        isAttached = values::Tree::Instance()->AddItem(parentPath, aside.item);
        if (!isAttached) *error = QStringLiteral("there is no room for it at '%1'").arg(m_localPath);
    }
    m_attaching = nullptr;
    return isAttached;
}

bool MirrorItems::AttachBelow(MirrorRecord& parent, std::unique_ptr<values::TreeItem>& item, QString* error) {
    const values::TreeItem* const parentItem = parent.item;
    values::Node& node = parent.Node();
    // Made here since the server's was announced: the server wins.
    if (values::TreeItem* const rival = node.FindChild(item->GetName())) Destroy(rival);
    if (parent.item != parentItem || node.AddChild(item)) return true;
    *error = QStringLiteral("'%1' cannot be added").arg(item->GetName());
    return false;
}

void MirrorItems::Destroy(values::TreeItem* item) {
    const QScopedValueRollback<bool> destroying(m_isDestroying, true);
    const auto isItem = [item](const Aside& aside) { return aside.item.get() == item; };
    const auto found = std::find_if(m_aside.begin(), m_aside.end(), isItem);
    if (found != m_aside.end()) {
        const Aside taken = std::move(*found);
        m_aside.erase(found);
    } else if (item->GetParent() != nullptr && item->GetState() != values::GoingAway) {
        delete item;  // wherever it is, its parent lets go of it
    }
}

void MirrorItems::DestroyNew() {
    const QScopedValueRollback<bool> destroying(m_isDestroying, true);
    std::deque<Aside> dropped;
    dropped.swap(m_aside);  // first: the records of what goes look through what is still there
    dropped.clear();
    ++m_series;
}

void MirrorItems::DestroyNewBelow(const MirrorRecord& parent) {
    const auto isIts = [&parent](const Aside& aside) { return aside.parent == &parent; };
    while (!m_aside.empty()) {
        const auto found = std::find_if(m_aside.begin(), m_aside.end(), isIts);
        if (found == m_aside.end()) return;
        const Aside orphan = std::move(*found);
        m_aside.erase(found);
    }
}

}  // namespace vt
