// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/connectiontest.h>

#include <devicecontrol/multichannelserver/common/gts/moduleaddress.h>

#include <platform/modbus/imodbustcpinterface.h>
#include <platform/modbus/imodbustcpinterfacecallback.h>
#include <platform/modbus/modbustcpinterfacecreator.h>

#include <memory>
#include <optional>
#include <string>

namespace {

/// Keeps what a module answers to one question.
class OneAnswer final : public IModbusTcpInterfaceCallback {
  public:
    void OnOpened() override {}
    void OnError(unsigned code) override { error = code; }
    void OnClosed() override {}
    void OnInputDiscretes(unsigned bits) override { answer = bits; }

    std::optional<unsigned> answer;
    std::optional<unsigned> error;
};

}  // namespace

ConnectionTest::ConnectionTest(QObject* parent) : QObject(parent) {}

ConnectionTest::~ConnectionTest() {
    m_isAborted = true;
    Join();
}

/// A question takes the response time-out at most, so its thread is waited for.
void ConnectionTest::Join() {
    if (m_thread.joinable()) m_thread.join();
}

bool ConnectionTest::Start(const QString& address, int inputs) {
    if (m_isRunning) return false;
    Join();
    m_isRunning = true;
    m_thread = std::thread([this, address, inputs] { Run(address, inputs); });
    return true;
}

/// On the thread of the test.
void ConnectionTest::Run(const QString& address, int inputs) {
    OneAnswer outcome;
    const std::wstring whole = ModuleAddress::ToInterfaceAddress(address).toStdWString();
    const std::unique_ptr<IModbusTcpInterface> module(
        ModbusTcpInterfaceCreator::CreateInterface(whole.c_str(), &outcome));
    if (module != nullptr && !m_isAborted) module->ReadInputDiscretes(static_cast<unsigned short>(inputs));
    const auto tell = [this, outcome] {
        m_isRunning = false;
        if (outcome.answer)
            Q_EMIT SignalAnswered(*outcome.answer);
        else
            Q_EMIT SignalFailed(ModbusErrorText(outcome.error.value_or(0)));
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}
