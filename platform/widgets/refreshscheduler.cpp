// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/refreshscheduler.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTimerEvent>

// Said once more, where MinGW exports it.
constexpr decltype(RefreshScheduler::Interval) RefreshScheduler::Interval;

RefreshScheduler* RefreshScheduler::s_instance = nullptr;

RefreshScheduler::Client::~Client() {
    Unlink();
}

void RefreshScheduler::Client::Unlink() {
    if (m_next == nullptr) return;
    m_previous->m_next = m_next;
    m_next->m_previous = m_previous;
    m_previous = m_next = nullptr;
}

RefreshScheduler::Head::Head() {
    m_previous = m_next = this;
}

RefreshScheduler::Head::~Head() {
    while (!IsEmpty())
        First()->Unlink();
    m_previous = m_next = nullptr;
}

bool RefreshScheduler::Head::IsEmpty() const {
    return m_next == this;
}

RefreshScheduler::Client* RefreshScheduler::Head::First() const {
    return m_next;
}

void RefreshScheduler::Head::Append(Client& client) {
    client.m_previous = m_previous;
    client.m_next = this;
    m_previous->m_next = &client;
    m_previous = &client;
}

void RefreshScheduler::Head::TakeAll(Head& other) {
    while (!other.IsEmpty()) {
        Client* const first = other.First();
        first->Unlink();
        Append(*first);
    }
}

RefreshScheduler::RefreshScheduler(QObject* parent) : QObject(parent) {}

RefreshScheduler::~RefreshScheduler() {
    s_instance = nullptr;
}

// Its timer belongs to the application's event loop, so it comes and goes with the application.
RefreshScheduler& RefreshScheduler::Instance() {
    if (s_instance == nullptr) {
        Q_ASSERT_X(QCoreApplication::instance() != nullptr, Q_FUNC_INFO, "widgets need an application");
        s_instance = new RefreshScheduler(QCoreApplication::instance());
    }
    return *s_instance;
}

void RefreshScheduler::Request(Client& client) {
    if (client.m_next != nullptr) return;
    if (m_pause.isActive()) {
        m_waiting.Append(client);
        return;
    }
    Pause();
    client.Refresh();
}

void RefreshScheduler::Pause() {
    m_pause.start(static_cast<int>(Interval.count()), Qt::PreciseTimer, this);
}

void RefreshScheduler::Flush() {
    // What is asked for meanwhile waits for the next time, so this ends.
    Head now;
    now.TakeAll(m_waiting);
    while (!now.IsEmpty()) {
        Client* const client = now.First();
        client->Unlink();
        client->Refresh();
    }
}

void RefreshScheduler::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_pause.timerId()) return QObject::timerEvent(event);
    if (m_waiting.IsEmpty()) return m_pause.stop();
    QElapsedTimer taken;
    taken.start();
    Flush();
    // Where a machine is too slow for the rate, others shall get their turns too.
    if (std::chrono::milliseconds(taken.elapsed()) >= Interval) Pause();
}
