// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/client/modbussettings.h>

#include <platform/app/trace.h>
#include <platform/config/icfg.h>

namespace {

void TraceRefused(const QString& key, const QString& text, int minimum, int maximum, int fallback) {
    MCS_TRACE(
        QStringLiteral("Configuration: Modbus/%1 is \"%2\", which is no number from %3 to %4; %5 is used")
            .arg(key, text.left(80))
            .arg(minimum)
            .arg(maximum)
            .arg(fallback));
}

void ReadNumber(ICfg& section, const char* name, int minimum, int maximum, int* number) {
    const QString key = QString::fromUtf8(name);
    // As a text, since a number that cannot be read would pass for its default unnoticed.
    const QString text = section.ReadString(key, QString());
    if (text.isEmpty()) return;
    bool isNumber = false;
    const int read = text.trimmed().toInt(&isNumber);
    if (isNumber && read >= minimum && read <= maximum)
        *number = read;
    else
        TraceRefused(key, text, minimum, maximum, *number);
}

}  // namespace

ModbusSettings ModbusSettings::Read(ICfg& section) {
    ModbusSettings settings;
    ReadNumber(section, "FunctionCode", 1, 2, &settings.functionCode);
    ReadNumber(section, "StartAddress", 0, 65535, &settings.startAddress);
    ReadNumber(section, "UnitId", 0, 255, &settings.unitId);
    auto responseTimeoutMs = static_cast<int>(settings.responseTimeout.count());
    ReadNumber(section, "ResponseTimeout", 10, 60000, &responseTimeoutMs);
    settings.responseTimeout = std::chrono::milliseconds(responseTimeoutMs);
    return settings;
}
