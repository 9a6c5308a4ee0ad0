// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/pollthread.h>

#include <devicecontrol/multichannelserver/common/gts/pollthreadimpl.h>

#include <platform/modbus/modbussystem.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

#include <memory>

int PollThread::s_count = 0;

PollThread::PollThread(QObject* parent) : QThread(parent) {}

PollThread::~PollThread() {
    quit();
    WaitForEnd();
}

QString PollThread::InterfaceAddress(const QString& address) {
    return QStringLiteral("TCP:%1:502").arg(address);  // fixed: port-502
}

void PollThread::Setup(const QString& address, unsigned short inputCount, PollInterval pollInterval) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_address = InterfaceAddress(address);
    m_inputCount = inputCount;
    m_pollInterval = pollInterval;
}

unsigned PollThread::Start() {
    if (!m_isCounted && s_count >= modbussystem::MostConnections())
        return modbussystem::CodeOf(modbussystem::EError::TooManyFiles);
    if (!m_isCounted) ++s_count;
    m_isCounted = true;
    start();
    if (isRunning()) return 0;
    WaitForEnd();
    return modbussystem::CodeOf(modbussystem::EError::NoResources);
}

void PollThread::WaitForEnd() {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_impl != nullptr) m_impl->Abort();
    }
    wait();
    if (m_isCounted) --s_count;
    m_isCounted = false;
    // run() gives the mutex back last. Qt's own waiting is nothing that the thread sanitizer could see.
    const std::lock_guard<std::mutex> lock(m_mutex);
    QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
    m_errorOnItsWay = 0;
}

QDateTime PollThread::GetLastAnswer() const {
    const qint64 time = m_lastAnswerMs;
    return time != 0 ? QDateTime::fromMSecsSinceEpoch(time, Qt::UTC) : QDateTime();
}

/// On the poll thread.
void PollThread::TellError(int error, const QString& text) {
    if (m_errorOnItsWay.exchange(error) == error) return;
    const auto tell = [this, error, text] {
        int heard = error;
        m_errorOnItsWay.compare_exchange_strong(heard, 0);
        Q_EMIT InterfaceError(error, text);
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

void PollThread::run() {
    std::unique_ptr<PollThreadImpl> impl;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        impl = std::make_unique<PollThreadImpl>(m_address, m_inputCount, m_pollInterval);
        m_impl = impl.get();
    }
    connect(impl.get(), &PollThreadImpl::InputDiscretesChanged, this, &PollThread::InputDiscretesChanged);
    connect(impl.get(), &PollThreadImpl::InterfaceOpen, this, &PollThread::InterfaceOpen);
    connect(impl.get(), &PollThreadImpl::InterfaceClose, this, &PollThread::InterfaceClose);
    connect(impl.get(), &PollThreadImpl::InterfaceError, impl.get(),
            [this](int error, const QString& text) { TellError(error, text); });
    connect(impl.get(), &PollThreadImpl::InterfaceAnswersAgain, this, &PollThread::InterfaceAnswersAgain);
    connect(impl.get(), &PollThreadImpl::InterfaceAnswered, impl.get(),
            [this] { m_lastAnswerMs = QDateTime::currentMSecsSinceEpoch(); });
    impl->Start();
    exec();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_impl = nullptr;
    impl.reset();
}
