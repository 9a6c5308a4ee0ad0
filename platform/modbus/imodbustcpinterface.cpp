// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/imodbustcpinterface.h>

IModbusTcpInterface::~IModbusTcpInterface() = default;
