// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <condition_variable>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

class IModbusTcpInterface;
class IModbusTcpInterfaceCallback;

/// The network's input modules, as long as it lives: poll threads get their interfaces here. Modules are
/// known by IP address and can do anything at any time; one that was not told what to do reads all its inputs
/// as inactive. From any thread.
class FakeModules {
  public:
    static constexpr unsigned AllInactive = 0xFFF;
    static constexpr unsigned InvalidAddress = 22;

    FakeModules();
    ~FakeModules();
    FakeModules(const FakeModules&) = delete;
    FakeModules& operator=(const FakeModules&) = delete;

    void Read(const QString& ip, unsigned bits);   ///< every request is answered with \a bits
    void Fail(const QString& ip, unsigned error);  ///< every request ends with \a error
    void Hang(const QString& ip);    ///< requests hang until they are aborted, or something else is set
    void Refuse(const QString& ip);  ///< the address cannot be right: there is no interface

    int Requests(const QString& ip) const;  ///< answered, failed or hanging
    int Hanging() const;                    ///< requests that hang now
    /// Waits until \a count requests hang; false if they do not within 10 s. Runs no event loop.
    bool WaitUntilHanging(int count = 1);
    int Interfaces() const;                           ///< that live now
    std::vector<QString> Addresses() const;           ///< for which interfaces were made, in order
    std::vector<unsigned short> CountsAsked() const;  ///< the number of inputs of each request

  private:
    class Interface;
    enum class EState { Read, Fail, Hang, Refuse };
    struct Module {
        EState state = EState::Read;
        unsigned number = AllInactive;  ///< bits or error
        int requests = 0;
    };

    static IModbusTcpInterface* Create(const wchar_t* address, IModbusTcpInterfaceCallback* callback);
    void Set(const QString& ip, EState state, unsigned number);
    /// The module behind "TCP:<ip>:502".
    Module& ModuleAt(const std::wstring& address);

    static FakeModules* s_instance;

    mutable std::mutex m_mutex;  ///< guards all that follows
    std::condition_variable m_hangingChanged;
    std::set<Interface*> m_hangingInterfaces;
    std::map<std::wstring, Module> m_modules;  ///< by "TCP:<ip>:502"
    std::vector<std::wstring> m_addresses;
    std::vector<unsigned short> m_countsAsked;
    int m_interfaces = 0;
};
