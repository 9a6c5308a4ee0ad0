// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/imodbustcpinterfacecallback.h>

IModbusTcpInterfaceCallback::~IModbusTcpInterfaceCallback() = default;

void IModbusTcpInterfaceCallback::OnCoils(unsigned) {}

void IModbusTcpInterfaceCallback::OnHoldingRegisters(unsigned) {}

void IModbusTcpInterfaceCallback::OnInputRegisters(unsigned) {}
