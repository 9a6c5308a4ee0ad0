// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mctree/servedvtclient.h>

#include <apps/mctree/mirror/walk.h>

#include <platform/values/tree.h>
#include <platform/values/valuebase.h>

#include <QtCore/QTimer>

#include <algorithm>

namespace {

/// The item at \a path below \a root.
values::TreeItem* Find(values::Node& root, const QString& path) {
    values::TreeItem* item = &root;
    for (const QString& name : path.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        auto* const node = dynamic_cast<values::Node*>(item);
        item = node != nullptr ? node->FindChild(name) : nullptr;
    }
    return item;
}

/// Copies \a original to \a path in the process's tree.
void CopyIntoTree(const values::TreeItem& original, const QString& path) {
    const QString name = path.section(QLatin1Char('/'), -1);
    values::Node* const root = values::Tree::Instance()->ProvideNode(path.chopped(name.size()));
    if (const auto* const value = dynamic_cast<const values::ValueBase*>(&original)) {
        root->CreateChild(*value, name);
        return;
    }
    const auto& node = dynamic_cast<const values::Node&>(original);
    std::unique_ptr<values::TreeItem> copy = std::make_unique<values::Node>(name);
    auto& target = static_cast<values::Node&>(*copy);
    for (values::TreeItem* const child : node.GetTreeItems()) {
        if (const auto* const value = dynamic_cast<const values::ValueBase*>(child)) {
            target.CreateChild(*value, child->GetName());
            continue;
        }
        std::unique_ptr<values::TreeItem> below(static_cast<const values::Node&>(*child).DeepCopy());
        target.AddChild(below);
    }
    root->AddChild(copy);
}

}  // namespace

ServedVtClient::~ServedVtClient() {
    for (const FakeVtTic* tic : Tics())
        StopObserving(*tic);
}

void ServedVtClient::StopObserving(const IVtTic& tic) {
    values::TreeItem* const top = values::Tree::Instance()->FindItem(tic.GetLocalPath());
    if (top != nullptr)
        mctree::Walk(*top,
                     [this](values::TreeItem& item, int) { item.GetObservable()->DeleteObserver(this); });
}

void ServedVtClient::OnTicAdded(FakeVtTic& tic) {
    m_mostTics = std::max(m_mostTics, Tics().size());
    if (IsConnected()) Establish(tic);
}

void ServedVtClient::OnTicRemoved(IVtTic& tic) {
    StopObserving(tic);
}

void ServedVtClient::Connect() {
    SetConnected(true);
    NotifyObservers(connectioncode::Connected);
    SetStates(values::Valid);
    for (FakeVtTic* tic : Tics())
        Establish(*tic);
    NotifyObservers(connectioncode::TicsChanged);
}

void ServedVtClient::ConnectSoon() {
    Soon([this] { Connect(); });
}

void ServedVtClient::Disconnect() {
    SetStates(values::Stale);
    SetConnected(false);
    for (FakeVtTic* tic : Tics())
        tic->SetEstablished(false);
    NotifyObservers(connectioncode::Disconnected);
    NotifyObservers(connectioncode::TicsChanged);
}

void ServedVtClient::Soon(std::function<void()> action) {
    QTimer::singleShot(0, &m_context, std::move(action));
}

void ServedVtClient::Update(Observable* source, TChangeCode code) {
    if (code != changecode::ContentChanged && code != changecode::ItemsChanged) return;
    if (hasUnansweredWrites) return;  // the server's own doing
    auto& item = dynamic_cast<values::TreeItem&>(*source);
    if (item.GetName().endsWith(QLatin1String("Answer"))) return;  // which clients do not write
    hasUnansweredWrites = true;
    m_written += item.GetName();
    if (!answer) return;
    Soon([this, &item] {
        answer(item);
        hasUnansweredWrites = false;
        NotifyObservers(connectioncode::WritesAnswered);
    });
}

void ServedVtClient::Establish(FakeVtTic& tic) {
    const values::TreeItem* const original = Find(server, tic.GetRemotePath());
    tic.SetAbsent(original == nullptr);
    if (original == nullptr || (isRootHidden && original == &server)) return;
    const QString path = tic.GetLocalPath();
    if (values::Tree::Instance()->FindItem(path) == nullptr) CopyIntoTree(*original, path);
    StopObserving(tic);  // should it come back
    mctree::Walk(*values::Tree::Instance()->FindItem(path),
                 [this](values::TreeItem& item, int) { item.GetObservable()->AddObserver(this); });
    tic.SetEstablished(true);
}

void ServedVtClient::SetStates(values::TValueState state) {
    mctree::Walk(*values::Tree::Instance()->GetRoot(), [state](values::TreeItem& item, int) {
        if (auto* const value = dynamic_cast<values::ValueBase*>(&item)) value->SetState(state);
    });
}
