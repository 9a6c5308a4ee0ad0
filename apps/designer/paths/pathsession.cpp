// SPDX-License-Identifier: Apache-2.0
#include <apps/designer/paths/pathsession.h>

#include <devicecontrol/multichannelserver/common/gts/gtskeys.h>
#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/nats/natsscheme.h>
#include <platform/values/tree.h>

#include <QtCore/QStringList>

#include <algorithm>
#include <utility>

// Said once more, where the address of a constant is asked for.
constexpr decltype(PathSession::Patience) PathSession::Patience;

namespace {

/// What a server shows to clients, each by itself: a user may read some of it and not the rest.
QStringList Subtrees() {
    QStringList subtrees;
    for (const QLatin1String segment : {mcskeys::Command, mcskeys::Config, mcskeys::Status,
                                        mcskeys::DynamicMpxORVs, mcskeys::StaticMpxORVs})
        subtrees << QString(mcskeys::Root) + QLatin1Char('/') + segment;
    return subtrees << QString(gtskeys::Server) + gtskeys::Gts;
}

constexpr std::chrono::milliseconds LookInterval(100);

}  // namespace

PathSession::PathSession(QObject* parent) : QObject(parent), m_client(*this), m_top(*this) {
    nats::RegisterScheme();
    m_timer.setInterval(LookInterval);
    connect(&m_timer, &QTimer::timeout, this, &PathSession::Judge);
}

PathSession::~PathSession() {
    Disconnect();
}

void PathSession::Connect(const ServerAddress& server, const VtClientOptions& options) {
    Disconnect();
    if (values::Tree::Instance() == nullptr) m_ownTree = std::make_unique<values::Tree>();
    static int number = 0;
    m_place = QStringLiteral("/LookedAt%1").arg(++number);
    m_top.Begin(values::Tree::Instance()->ProvideNode(m_place));
    VtClientCenter& center = VtClientCenter::Instance();
    const VtClientOptions before = center.GetOptions();
    center.SetOptions(options);
    m_client.Begin(center.CreateVtClient(server.ToVtAddress().toLatin1().constData(), server.port));
    center.SetOptions(before);  // the token is nobody else's
    if (!m_client) return Leave(EState::Failed, tr("there can be no such server"));
    AddTics();
    m_since.start();
    m_timer.start();
    m_state = EState::Connecting;
    Q_EMIT StateChanged();
}

void PathSession::AddTics() {
    for (const QString& subtree : Subtrees()) {
        IVtTic* const tic = m_client->AddTic(m_place + subtree + QLatin1Char(',') + subtree, ticoption::Look);
        if (tic != nullptr) m_tics.push_back(tic);
    }
}

void PathSession::Disconnect() {
    if (m_state != EState::Idle) Leave(EState::Idle, QString());
}

void PathSession::Leave(EState state, const QString& problem) {
    m_timer.stop();
    m_state = state;
    m_problem = problem;
    Q_EMIT StateChanged();  // first, so that nobody looks at items that are gone
    m_tics.clear();
    IVtClient* const client = m_client.Get();
    m_client.End();
    VtClientCenter::Instance().DestroyVtClient(client);
    DropTree();
}

void PathSession::DropTree() {
    values::Node* const top = m_top.Get();
    m_top.End();
    if (top != nullptr && values::Tree::Instance() != nullptr) values::Tree::Instance()->Delete(top);
    m_ownTree.reset();
}

void PathSession::Update(Observable* source, TChangeCode code) {
    if (m_client.EndIfGoingAway(source, code)) {
        m_tics.clear();  // with the application
        return;
    }
    if (m_top.EndIfGoingAway(source, code)) return;
    if (m_top.Is(source) && code == changecode::StructureChanged) Q_EMIT StructureChanged();
    // The client cannot be left while it tells.
    if (m_client.Is(source)) QMetaObject::invokeMethod(this, &PathSession::Judge, Qt::QueuedConnection);
}

bool PathSession::HasTree() const {
    const auto isAnswered = [](const IVtTic* tic) { return tic->IsEstablished() || tic->IsAbsent(); };
    const auto isHere = [](const IVtTic* tic) { return tic->IsEstablished(); };
    return std::all_of(m_tics.begin(), m_tics.end(), isAnswered) &&
           std::any_of(m_tics.begin(), m_tics.end(), isHere);
}

PathSession::EState PathSession::Look() {
    const bool wasReady = m_state == EState::Ready || m_state == EState::Lost;
    if (!m_client) return EState::Failed;
    if (m_client->IsConnected()) {
        const bool isNothing =
            std::all_of(m_tics.begin(), m_tics.end(), [](const IVtTic* tic) { return tic->IsAbsent(); });
        if (isNothing) m_problem = tr("the server shows nothing to this user");
        return isNothing ? EState::Failed : HasTree() ? EState::Ready : EState::Reading;
    }
    m_problem = m_client->GetLastError();
    if (m_client->IsRefused()) return EState::Failed;
    if (wasReady) return EState::Lost;
    return m_problem.isEmpty() ? EState::Connecting : EState::Failed;
}

void PathSession::Judge() {
    if (m_state == EState::Idle || m_state == EState::Failed) return;
    EState state = Look();
    const bool isUnderWay = state == EState::Connecting || state == EState::Reading;
    if (isUnderWay && m_since.hasExpired(Patience.count())) {
        state = EState::Failed;
        m_problem = tr("no answer in time");
    }
    if (state == EState::Failed) return Leave(state, std::exchange(m_problem, QString()));
    if (state == EState::Ready) m_since.start();  // a later loss has its own time
    if (state == m_state) return;
    m_state = state;
    if (state == EState::Ready) m_problem.clear();
    Q_EMIT StateChanged();
}
