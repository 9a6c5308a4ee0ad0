// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/pathbinding.h>

#include <platform/values/tree.h>
#include <platform/values/valuebase.h>

#include <utility>

PathBinding::IListener::~IListener() = default;

PathBinding::PathBinding(IListener& listener, Filter filter)
    : m_listener(listener), m_filter(std::move(filter)) {}

PathBinding::~PathBinding() {
    Detach();
}

void PathBinding::SetPath(const QString& path) {
    m_path = path;
    Rebind();
}

EBindingState PathBinding::GetState() const {
    if (m_path.isEmpty()) return EBindingState::Unbound;
    if (m_isWrongType) return EBindingState::WrongType;
    if (m_value == nullptr) return EBindingState::Waiting;
    return m_value->GetState() == values::Stale ? EBindingState::Stale : EBindingState::Live;
}

void PathBinding::Update(Observable* source, TChangeCode code) {
    if (source != m_observed) return;
    if (m_value != nullptr) {
        UpdateOfValue(code);
    } else if (auto* const item = dynamic_cast<values::ValueBase*>(source)) {
        // A value of another type: of interest only once it leaves the path.
        if (item->GetState() == values::GoingAway || code == changecode::DescriptionChanged) Rebind();
    } else if (code == changecode::ChildrenAdded || code == changecode::GoingAway) {
        Rebind();
    }
}

void PathBinding::UpdateOfValue(TChangeCode code) {
    const bool isGone = m_value->GetState() == values::GoingAway;
    const bool isRenamed =
        code == changecode::DescriptionChanged && values::Tree::Instance()->FindItem(m_path) != m_value;
    if (isGone || isRenamed)
        Rebind();
    else
        m_listener.OnBindingChanged(*this, code);
}

void PathBinding::Rebind() {
    Detach();
    Attach();
    m_listener.OnBindingChanged(*this, Rebound);
}

void PathBinding::Attach() {
    values::Tree* const tree = values::Tree::Instance();
    if (m_path.isEmpty() || tree == nullptr) return;
    values::TreeItem* const item = tree->FindItem(m_path);
    if (item == nullptr) return ObserveDeepestNode();
    auto* const value = dynamic_cast<values::ValueBase*>(item);
    m_isWrongType = value == nullptr || !m_filter(*value);
    if (!m_isWrongType) m_value = value;
    m_observed = item->GetObservable();
    m_observed->AddObserver(this);
}

/// An item comes to the path by being added to the deepest of its ancestors that exist, alone or as part of a
/// subtree.
void PathBinding::ObserveDeepestNode() {
    values::Tree* const tree = values::Tree::Instance();
    QString path = m_path;
    values::Node* node = nullptr;
    while (node == nullptr && !path.isEmpty()) {
        path.truncate(qMax(0, path.lastIndexOf(QLatin1Char('/'))));
        node = tree->FindNode(path);
    }
    if (node == nullptr || node->GetState() == values::GoingAway) return;
    m_observed = node;
    m_observed->AddObserver(this);
}

void PathBinding::Detach() {
    if (m_observed != nullptr) m_observed->DeleteObserver(this);
    m_observed = nullptr;
    m_value = nullptr;
    m_isWrongType = false;
}
