// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/hamlib/hamlibmodule.h>
#include <apps/mcserver/hamlib/module/hamlibrig.h>

#include <clocale>
#include <cstring>
#include <memory>

namespace {

class HamlibRigMaker : public IRigMaker {
  public:
    HamlibRigMaker(const HamlibSettings& settings, const rig_caps& caps)
        : m_settings(settings),
          m_name(QStringLiteral("%1 %2").arg(QString::fromUtf8(caps.mfg_name),
                                             QString::fromUtf8(caps.model_name))) {}

    QString GetName() const override { return m_name; }
    std::unique_ptr<IRig> Make(const QString& port) override {
        return std::make_unique<HamlibRig>(m_settings, port);
    }

  private:
    const HamlibSettings m_settings;
    const QString m_name;
};

QString SettingsFault(const HamlibSettings& settings, const rig_caps* caps) {
    if (caps == nullptr)
        return QStringLiteral("Hamlib knows no model %1: rigctl --list shows them").arg(settings.model);
    if (rig_parse_mode(settings.mode.toLatin1().constData()) == RIG_MODE_NONE)
        return QStringLiteral("mode: Hamlib knows no '%1'").arg(settings.mode);
    const bool needsPort = caps->port_type == RIG_PORT_SERIAL || caps->port_type == RIG_PORT_NETWORK ||
                           caps->port_type == RIG_PORT_UDP_NETWORK;
    if (needsPort && settings.ports.isEmpty())
        return QStringLiteral("model %1 needs a port for each receiver, such as /dev/ttyUSB0 or host:4532")
            .arg(settings.model);
    return QString();
}

}  // namespace

// The server's own, resolved by its name.
extern "C" __attribute__((visibility("default"))) IRigMaker* McsCreateRigMaker(const char* version,
                                                                               const HamlibSettings& settings,
                                                                               QString* error) {
    if (std::strcmp(version, MCSERVER_VERSION) != 0) {
        *error = QStringLiteral("what knows Hamlib is of version %1, and the server of %2")
                     .arg(QStringLiteral(MCSERVER_VERSION), QString::fromUtf8(version));
        return nullptr;
    }
    // Hamlib writes numbers in "C" and then goes back to the name of the locale before, which the system has
    // let go of by then, and does so in all threads at once. Where it is "C" already nothing is let go of.
    std::setlocale(LC_NUMERIC, "C");
    rig_set_debug(RIG_DEBUG_NONE);
    rig_load_all_backends();
    const rig_caps* const caps = rig_get_caps(static_cast<rig_model_t>(settings.model));
    *error = SettingsFault(settings, caps);
    return error->isEmpty() ? new HamlibRigMaker(settings, *caps) : nullptr;
}
