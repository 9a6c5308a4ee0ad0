// SPDX-License-Identifier: Apache-2.0
#include <tests/devicecontrol/multichannelserver/common/gts/fakemodules.h>

#include <devicecontrol/multichannelserver/common/gts/plant/pollinterfacefactory.h>

#include <platform/modbus/imodbustcpinterface.h>
#include <platform/modbus/imodbustcpinterfacecallback.h>

#include <chrono>

namespace {

std::wstring AddressOf(const QString& ip) {
    return (QStringLiteral("TCP:") + ip + QStringLiteral(":502")).toStdWString();
}

}  // namespace

FakeModules* FakeModules::s_instance = nullptr;

class FakeModules::Interface final : public IModbusTcpInterface {
  public:
    Interface(FakeModules& modules, const wchar_t* address, IModbusTcpInterfaceCallback& callback)
        : m_modules(modules), m_address(address), m_callback(callback) {}
    ~Interface() override {
        const std::lock_guard<std::mutex> lock(m_modules.m_mutex);
        --m_modules.m_interfaces;
    }

    void ReadInputDiscretes(unsigned short count) override {
        Module module;
        {
            std::unique_lock<std::mutex> lock(m_modules.m_mutex);
            if (m_isAborted) return;
            Module& shared = m_modules.ModuleAt(m_address);
            ++shared.requests;
            m_modules.m_countsAsked.push_back(count);
            if (shared.state == EState::Hang) WaitForRelease(lock, shared);
            if (m_isAborted) return;
            module = shared;
        }
        if (module.state == EState::Read)
            Answer(module.number);
        else
            Fail(module.number);
    }
    void Close() override {
        if (m_isToldOpen) m_callback.OnClosed();
        m_isToldOpen = false;
    }
    void Abort() override {
        const std::lock_guard<std::mutex> lock(m_modules.m_mutex);
        m_isAborted = true;
        m_wake.notify_all();
    }
    void Wake() { m_wake.notify_all(); }

  private:
    void WaitForRelease(std::unique_lock<std::mutex>& lock, const Module& module) {
        m_modules.m_hangingInterfaces.insert(this);
        m_modules.m_hangingChanged.notify_all();
        m_wake.wait(lock, [&] { return m_isAborted || module.state != EState::Hang; });
        m_modules.m_hangingInterfaces.erase(this);
    }
    void Answer(unsigned bits) {
        if (!m_isToldOpen) m_callback.OnOpened();
        m_isToldOpen = true;
        m_callback.OnInputDiscretes(bits);
    }
    void Fail(unsigned error) {
        m_callback.OnError(error);
        Close();
    }

    FakeModules& m_modules;
    const std::wstring m_address;
    IModbusTcpInterfaceCallback& m_callback;
    bool m_isToldOpen = false;
    bool m_isAborted = false;        // guarded by the modules' mutex
    std::condition_variable m_wake;  // likewise
};

FakeModules::FakeModules() {
    s_instance = this;
    PollInterfaceFactory::Replace(&FakeModules::Create);
}

FakeModules::~FakeModules() {
    PollInterfaceFactory::Replace(nullptr);
    s_instance = nullptr;
}

IModbusTcpInterface* FakeModules::Create(const wchar_t* address, IModbusTcpInterfaceCallback* callback) {
    FakeModules& self = *s_instance;
    bool isRefused = false;
    {
        const std::lock_guard<std::mutex> lock(self.m_mutex);
        self.m_addresses.emplace_back(address);
        isRefused = self.ModuleAt(address).state == EState::Refuse;
        if (!isRefused) ++self.m_interfaces;
    }
    if (!isRefused) return new Interface(self, address, *callback);
    callback->OnError(InvalidAddress);
    return nullptr;
}

void FakeModules::Read(const QString& ip, unsigned bits) {
    Set(ip, EState::Read, bits);
}

void FakeModules::Fail(const QString& ip, unsigned error) {
    Set(ip, EState::Fail, error);
}

void FakeModules::Hang(const QString& ip) {
    Set(ip, EState::Hang, 0);
}

void FakeModules::Refuse(const QString& ip) {
    Set(ip, EState::Refuse, 0);
}

void FakeModules::Set(const QString& ip, EState state, unsigned number) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    Module& module = ModuleAt(AddressOf(ip));
    module.state = state;
    module.number = number;
    for (Interface* const interface : m_hangingInterfaces)
        interface->Wake();
}

FakeModules::Module& FakeModules::ModuleAt(const std::wstring& address) {
    return m_modules[address];
}

int FakeModules::Requests(const QString& ip) const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = m_modules.find(AddressOf(ip));
    return found != m_modules.end() ? found->second.requests : 0;
}

int FakeModules::Hanging() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return static_cast<int>(m_hangingInterfaces.size());
}

bool FakeModules::WaitUntilHanging(int count) {
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_hangingChanged.wait_for(lock, std::chrono::seconds(10), [&] {
        return m_hangingInterfaces.size() == static_cast<std::size_t>(count);
    });
}

int FakeModules::Interfaces() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_interfaces;
}

std::vector<QString> FakeModules::Addresses() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    std::vector<QString> addresses;
    for (const std::wstring& address : m_addresses)
        addresses.push_back(QString::fromStdWString(address));
    return addresses;
}

std::vector<unsigned short> FakeModules::CountsAsked() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_countsAsked;
}
