// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/plant/pollinterfacefactory.h>

#include <platform/modbus/modbustcpinterfacecreator.h>

#include <atomic>

namespace {

std::atomic<PollInterfaceFactory::Function> g_function{nullptr};

}  // namespace

IModbusTcpInterface* PollInterfaceFactory::Create(const wchar_t* address,
                                                  IModbusTcpInterfaceCallback* callback) {
    const Function function = g_function;
    return function != nullptr ? function(address, callback)
                               : ModbusTcpInterfaceCreator::CreateInterface(address, callback);
}

void PollInterfaceFactory::Replace(Function function) {
    g_function = function;
}
