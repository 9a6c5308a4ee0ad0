// SPDX-License-Identifier: Apache-2.0
#include <platform/values/pathbinding.h>

#include <platform/values/tree.h>
#include <platform/values/valuebase.h>

#include <utility>

// Said once more, where MinGW exports it.
constexpr decltype(PathBinding::Rebound) PathBinding::Rebound;

PathBinding::IListener::~IListener() = default;

PathBinding::PathBinding(IListener& listener, Filter filter)
    : m_listener(listener), m_filter(std::move(filter)) {}

PathBinding::~PathBinding() {
    Detach();
}

void PathBinding::SetPath(const QString& path) {
    Detach();
    m_path = path;
    Attach(FindItemOrAncestor());
    m_listener.OnBindingChanged(*this, Rebound);
}

EBindingState PathBinding::GetState() const {
    if (m_path.isEmpty()) return EBindingState::Unbound;
    if (m_isWrongType) return EBindingState::WrongType;
    if (m_value == nullptr) return EBindingState::Waiting;
    return m_value->GetState() == values::Stale ? EBindingState::Stale : EBindingState::Live;
}

void PathBinding::Update(Observable* /*source*/, TChangeCode code) {
    if (m_value != nullptr)
        UpdateOfValue(code);
    else if (MayMatter(code))
        Follow();
}

void PathBinding::UpdateOfValue(TChangeCode code) {
    if (code == changecode::DescriptionChanged || m_value->GetState() == values::GoingAway) {
        const values::ValueBase* const before = m_value;
        Follow();  // the value may have been renamed, so that it stands at another path
        if (m_value != before) return;
    }
    m_listener.OnBindingChanged(*this, code);
}

/// Whether what m_watched tells by \a code may mean that the path leads to something else now. There is no
/// value at the path meanwhile: an ancestor is watched, or a value of a type that the widget does not show.
bool PathBinding::MayMatter(TChangeCode code) const {
    switch (code) {
        case changecode::ChildrenAdded:
        case changecode::ChildRenamed:
        case changecode::GoingAway:
            return m_watched->IsNode();
        case changecode::StateChanged:
        case changecode::DescriptionChanged:
            return !m_watched->IsNode();  // a value of a type that is not shown
        default:
            return false;
    }
}

/// Goes on with what is at the path by now, if it is something else.
void PathBinding::Follow() {
    values::TreeItem* const item = FindItemOrAncestor();
    if (item == m_watched) return;
    const bool wasItem = m_value != nullptr || m_isWrongType;
    Detach();
    Attach(item);
    if (wasItem || m_value != nullptr || m_isWrongType) m_listener.OnBindingChanged(*this, Rebound);
}

void PathBinding::Attach(values::TreeItem* item) {
    if (item == nullptr) return;
    if (Observable* const observable = item->GetObservable()) {  // an item without one never tells of changes
        observable->AddObserver(this);
        m_watched = item;
    }
    if (values::Tree::Instance()->FindItem(m_path) != item) return;
    auto* const value = dynamic_cast<values::ValueBase*>(item);
    m_isWrongType = value == nullptr || !m_filter(*value);
    if (!m_isWrongType) m_value = value;
}

void PathBinding::Detach() {
    if (m_watched != nullptr) m_watched->GetObservable()->DeleteObserver(this);
    m_watched = nullptr;
    m_value = nullptr;
    m_isWrongType = false;
}

/// An item comes to the path by being added to the deepest node that exists on the way to it, alone or as
/// part of a subtree, or by being renamed there.
values::TreeItem* PathBinding::FindItemOrAncestor() const {
    const values::Tree* const tree = values::Tree::Instance();
    if (m_path.isEmpty() || tree == nullptr) return nullptr;
    values::TreeItem* item = tree->FindItem(m_path);
    QString path = m_path;
    while (item == nullptr && !path.isEmpty()) {
        path.truncate(qMax(0, path.lastIndexOf(QLatin1Char('/'))));
        item = tree->FindNode(path);
    }
    return item == nullptr || item->GetState() == values::GoingAway ? nullptr : item;
}
