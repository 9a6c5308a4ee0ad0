// SPDX-License-Identifier: Apache-2.0
#include <tests/apps/mctree/fakevtclient.h>

#include <apps/mctree/mirror/walk.h>

#include <platform/values/tree.h>
#include <platform/values/valuebase.h>

#include <QtCore/QTimer>

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

FakeVtClient::FakeVtClient() = default;

FakeVtClient::~FakeVtClient() {
    for (const auto& tic : m_tics)
        if (values::TreeItem* const item = values::Tree::Instance()->FindItem(tic->GetLocalPath()))
            item->GetObservable()->DeleteObserver(this);
}

bool FakeVtClient::AreAllTicsEstablished() const {
    for (const auto& tic : m_tics)
        if (!tic->isEstablished) return false;
    return m_isConnected;
}

IVtTic* FakeVtClient::AddTic(const QString& spec, const char*) {
    const int comma = spec.indexOf(QLatin1Char(','));
    m_tics.push_back(std::make_unique<FakeVtTic>(spec.left(comma), spec.mid(comma + 1)));
    if (m_isConnected) Establish(*m_tics.back());
    return m_tics.back().get();
}

void FakeVtClient::RemoveTic(IVtTic* tic) {
    for (auto found = m_tics.begin(); found != m_tics.end(); ++found) {
        if (found->get() != tic) continue;
        values::TreeItem* const item = values::Tree::Instance()->FindItem(tic->GetLocalPath());
        if (item != nullptr) item->GetObservable()->DeleteObserver(this);
        m_tics.erase(found);
        return;
    }
}

void FakeVtClient::Connect() {
    m_isConnected = true;
    NotifyObservers(connectioncode::Connected);
    SetStates(values::Valid);
    for (const auto& tic : m_tics)
        Establish(*tic);
    NotifyObservers(connectioncode::TicsChanged);
}

void FakeVtClient::ConnectSoon() {
    Soon([this] { Connect(); });
}

void FakeVtClient::Disconnect() {
    SetStates(values::Stale);
    m_isConnected = false;
    for (const auto& tic : m_tics)
        tic->isEstablished = false;
    NotifyObservers(connectioncode::Disconnected);
    NotifyObservers(connectioncode::TicsChanged);
}

void FakeVtClient::Soon(std::function<void()> action) {
    QTimer::singleShot(0, &m_context, std::move(action));
}

void FakeVtClient::Update(Observable* source, TChangeCode code) {
    if (code != changecode::ContentChanged && code != changecode::ItemsChanged) return;
    if (m_isUnanswered) return;  // the server's own doing
    m_isUnanswered = true;
    if (!answer) return;
    Soon([this, source] {
        answer(dynamic_cast<values::TreeItem&>(*source));
        m_isUnanswered = false;
        NotifyObservers(connectioncode::WritesAnswered);
    });
}

void FakeVtClient::Establish(FakeVtTic& tic) {
    const values::TreeItem* const original = Find(server, tic.GetRemotePath());
    tic.isAbsent = original == nullptr;
    if (tic.isAbsent || (isRootHidden && original == &server)) return;
    const QString path = tic.GetLocalPath();
    if (values::Tree::Instance()->FindItem(path) == nullptr) CopyIntoTree(*original, path);
    values::Tree::Instance()->FindItem(path)->GetObservable()->AddObserver(this);
    tic.isEstablished = true;
}

void FakeVtClient::SetStates(values::TValueState state) {
    mctree::Walk(*values::Tree::Instance()->GetRoot(), [state](values::TreeItem& item, int) {
        if (auto* const value = dynamic_cast<values::ValueBase*>(&item)) value->SetState(state);
    });
}
