// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/pollthreadimpl.h>

#include <devicecontrol/multichannelserver/common/gts/plant/pollinterfacefactory.h>

#include <platform/modbus/modbustcpinterfacecreator.h>

#include <QtCore/QTimer>

#include <algorithm>
#include <limits>
#include <utility>

PollThreadImpl::PollThreadImpl(const QString& address, unsigned short inputCount, PollInterval pollInterval)
    : m_address(address.toStdWString()), m_inputCount(inputCount), m_timer(new QTimer(this)) {
    constexpr PollInterval Longest(std::numeric_limits<int>::max());  // that a QTimer can wait
    m_timer->setTimerType(Qt::PreciseTimer);
    m_timer->setInterval(std::chrono::milliseconds(std::min(pollInterval, Longest)));
    connect(m_timer, &QTimer::timeout, this, &PollThreadImpl::SlotOnTimer);
    m_interface.reset(PollInterfaceFactory::Create(m_address.c_str(), this));
}

PollThreadImpl::~PollThreadImpl() {
    if (m_interface) m_interface->Close();
}

void PollThreadImpl::Start() {
    if (m_creationError)
        Q_EMIT InterfaceError(static_cast<int>(*m_creationError), ModbusErrorText(*m_creationError));
    m_creationError.reset();
    m_timer->start();
}

void PollThreadImpl::Abort() {
    if (m_interface) m_interface->Abort();
}

void PollThreadImpl::SlotOnTimer() {
    if (m_interface)
        m_interface->ReadInputDiscretes(m_inputCount);
    else
        m_timer->stop();
}

void PollThreadImpl::OnOpened() {
    m_isOpening = !m_hasFailed;
}

void PollThreadImpl::OnError(unsigned code) {
    m_hasFailed = true;
    m_isAnsweringAgain = false;
    m_isOpening = false;
    if (m_interface)
        Q_EMIT InterfaceError(static_cast<int>(code), ModbusErrorText(code));
    else
        m_creationError = code;  // nobody can listen yet
}

void PollThreadImpl::OnClosed() {
    m_isOpening = false;
    m_inputDiscretes = 0;  // fixed: inputs-forgotten
    Q_EMIT InterfaceClose();
}

void PollThreadImpl::OnInputDiscretes(unsigned bits) {
    Q_EMIT InterfaceAnswered();
    if (m_hasFailed) {
        if (!std::exchange(m_isAnsweringAgain, true)) Q_EMIT InterfaceAnswersAgain();
        return;
    }
    if (bits != m_inputDiscretes) {
        m_inputDiscretes = bits;
        Q_EMIT InputDiscretesChanged(m_inputCount, bits);
    }
    if (!m_isOpening) return;
    m_isOpening = false;
    Q_EMIT InterfaceOpen();  // fixed: open-with-the-first-answer
}
