// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/modbustcpinterfacecreator.h>

#include <platform/app/trace.h>
#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>
#include <platform/modbus/client/modbustcpinterface.h>
#include <platform/modbus/imodbustcpinterfacecallback.h>

#include <memory>
#include <mutex>

namespace {

std::mutex g_settingsMutex;
ModbusSettings g_settings;

/// Port 502 takes rights that tests and demonstrations do not have.
quint16 PortInsteadOf(quint16 port) {
    constexpr const char* Variable = "MCS_MODBUS_PORT";
    if (port != ModbusAddress::StandardPort || !qEnvironmentVariableIsSet(Variable)) return port;
    bool isNumber = false;
    const quint16 other = qgetenv(Variable).toUShort(&isNumber);
    if (isNumber && other != 0) return other;
    MCS_TRACE(QStringLiteral("MCS_MODBUS_PORT is no port from 1 to 65535, %1 is used").arg(port));
    return port;
}

}  // namespace

IModbusTcpInterface* ModbusTcpInterfaceCreator::CreateInterface(const wchar_t* address,
                                                                IModbusTcpInterfaceCallback* callback) {
    Q_ASSERT(callback != nullptr);
    ModbusAddress parsed;
    QString reason;
    const unsigned error = parsed.Parse(address, &reason);
    if (error != 0) {
        MCS_TRACE(reason);
        callback->OnError(error);
        return nullptr;
    }
    parsed.port = PortInsteadOf(parsed.port);
    const std::lock_guard<std::mutex> lock(g_settingsMutex);
    return new ModbusTcpInterface(parsed, g_settings, *callback);
}

QString ModbusTcpInterfaceCreator::FaultOf(const QString& address) {
    return ModbusAddress::FaultOf(address);
}

void ModbusTcpInterfaceCreator::Configure() {
    const std::unique_ptr<ICfg> root(CfgCenter::Instance().OpenRoot());
    const std::unique_ptr<ICfg> section(root->OpenSection(QStringLiteral("Modbus")));
    const ModbusSettings settings = section ? ModbusSettings::Read(*section) : ModbusSettings();
    const std::lock_guard<std::mutex> lock(g_settingsMutex);
    g_settings = settings;
}
