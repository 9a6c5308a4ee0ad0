// SPDX-License-Identifier: Apache-2.0
#include "ownpoller.h"

#include "plant.h"

#include <devicecontrol/multichannelserver/common/gts/blanking.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>

#include <algorithm>

namespace bench {

namespace {

double FrequencyOf(int module) {
    return 118000000.0 + 25000.0 * module;
}

}  // namespace

OwnPoller::OwnPoller() {
    Blanking::Instance();
}

OwnPoller::~OwnPoller() {
    m_modules.clear();
    Blanking::Instance()->FreeInstance();
    qunsetenv("MCS_MODBUS_PORT");
}

bool OwnPoller::Start(quint16 port) {
    qputenv("MCS_MODBUS_PORT", QByteArray::number(port));
    for (int i = 0; i < plant::Modules; ++i) {
        auto module = std::make_unique<DataModule>(&m_widget, i, QStringLiteral("Simulated"),
                                                   plant::AddressOf(i), PollInterval(plant::PollInterval));
        QObject::connect(module.get(), &DataModule::SignalError,
                         [this](const QString&, const QString& address, int, const QString& text) {
                             m_error = address + QStringLiteral(": ") + text;
                         });
        module->SetFrequency(plant::InputOf(i), FrequencyOf(i));
        module->Connect();
        m_modules.push_back(std::move(module));
    }
    return RunUntil([this] {
        return std::all_of(m_modules.begin(), m_modules.end(),
                           [](const auto& module) { return module->IsConnected(); });
    });
}

bool OwnPoller::WaitUntilKnown(int module, bool isKeyed, Clock::time_point* when) {
    const double frequency = FrequencyOf(module);
    const bool isKnown =
        RunUntil([&] { return Blanking::Instance()->IsFrequencyBlanked(frequency, &m_client) == isKeyed; });
    *when = Clock::now();
    return isKnown;
}

/// Asks after each turn of the event loop, which sleeps while nothing happens.
bool OwnPoller::RunUntil(const std::function<bool()>& isReached) {
    QTimer deadline;
    deadline.setSingleShot(true);
    deadline.start(plant::Patience);
    while (!isReached()) {
        if (!deadline.isActive()) return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

}  // namespace bench
