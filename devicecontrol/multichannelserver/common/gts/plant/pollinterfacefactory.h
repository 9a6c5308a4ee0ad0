// SPDX-License-Identifier: Apache-2.0
#pragma once

class IModbusTcpInterface;
class IModbusTcpInterfaceCallback;

/// Where poll threads get their Modbus/TCP interfaces from: ModbusTcpInterfaceCreator, unless a test has put
/// modules of its own in its place.
class PollInterfaceFactory {
  public:
    using Function = IModbusTcpInterface* (*)(const wchar_t* address, IModbusTcpInterfaceCallback* callback);

    PollInterfaceFactory() = delete;

    /// As ModbusTcpInterfaceCreator::CreateInterface(). From any thread.
    static IModbusTcpInterface* Create(const wchar_t* address, IModbusTcpInterfaceCallback* callback);
    /// Interfaces made from now on come from \a function; null: from the creator again. From any thread.
    static void Replace(Function function);
};
