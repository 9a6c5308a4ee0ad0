// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/imodbustcpinterface.h>

// Said once more, where MinGW exports it.
constexpr decltype(IModbusTcpInterface::MaxInputs) IModbusTcpInterface::MaxInputs;

IModbusTcpInterface::~IModbusTcpInterface() = default;
