// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcstools.h>

#include <QtCore/QCoreApplication>

namespace {

constexpr double KiloHertz = 1000.0;
constexpr double MegaHertz = 1000000.0;

QString Translate(const char* text) {
    return QCoreApplication::translate("MCSTools", text);
}

bool IsInKiloHertz(double hz) {
    return hz >= KiloHertz && hz < MegaHertz;
}

}  // namespace

QString MCSTools::FormatFrequency(double hz) {
    if (hz < KiloHertz) return Translate(QT_TRANSLATE_NOOP("MCSTools", "%1 Hz")).arg(hz);
    if (hz < MegaHertz) return Translate(QT_TRANSLATE_NOOP("MCSTools", "%1 kHz")).arg(hz / KiloHertz);
    return Translate(QT_TRANSLATE_NOOP("MCSTools", "%1 MHz")).arg(hz / MegaHertz);
}

QString MCSTools::FormatFrequencyRange(double from, double to) {
    if (from == to) return FormatFrequency(from);
    if (from < KiloHertz && to < KiloHertz)
        return Translate(QT_TRANSLATE_NOOP("MCSTools", "%1 - %2 Hz")).arg(from).arg(to);
    if (IsInKiloHertz(from) && IsInKiloHertz(to))
        return Translate(QT_TRANSLATE_NOOP("MCSTools", "%1 - %2 kHz"))
            .arg(from / KiloHertz)
            .arg(to / KiloHertz);
    if (from >= MegaHertz && to >= MegaHertz)
        return Translate(QT_TRANSLATE_NOOP("MCSTools", "%1 - %2 MHz"))
            .arg(from / MegaHertz)
            .arg(to / MegaHertz);
    const QString start = FormatFrequency(from);
    return start + QStringLiteral(" - ") + FormatFrequency(to);
}

QString MCSTools::OperationModeAsString(EOperationMode mode) {
    const values::ValueDescriptor& modes = StdDeviceDefinition::g_vdOperationMode;
    for (int i = 0; i < modes.CountSelItems(); ++i)
        if (modes.SelItems()[i].Key() == mode) return modes.SelItems()[i].String();
    return QString();
}
