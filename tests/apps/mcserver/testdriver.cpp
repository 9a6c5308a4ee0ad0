// SPDX-License-Identifier: Apache-2.0
// A plugin with a driver that a test drives: by its options it does what it must not. Built several times, as
// TEST_DRIVER_IID says.
#include <platform/device/iorvdriver.h>
#include <platform/device/iorvdriverplugin.h>

#include <stdexcept>

namespace {

/// Two channels, of which the second is lost when it is tuned; boots at once.
class TestDriver : public IOrvDriver {
  public:
    void SetListener(IOrvDriverListener* listener) override { m_listener = listener; }
    void Connect(const OrvDeviceSettings& settings) override {
        Become(true, QStringLiteral("at %1").arg(settings.address));
    }
    void Disconnect() override { Become(false, QStringLiteral("let go")); }
    bool IsOnline() const override { return m_isOnline; }
    EBooState GetBootState() const override { return m_isOnline ? BootReady : BootUnknown; }
    EOperationMode GetOperationMode() const override { return m_isOnline ? OperationFfm : OperationIdle; }
    double GetBandwidth() const override { return 8000.0; }
    QString AllocateChannel(int* channel) override {
        if (m_used == 2) return QStringLiteral("both are in use");
        *channel = m_used++;
        return QString();
    }
    void FreeChannel(int /*channel*/) override { --m_used; }
    QString Tune(int channel, double hz) override {
        if (hz == 123e6) m_listener->OnChannelLost(channel, QStringLiteral("a fuse blew"));
        if (hz == 124e6) Become(false, QStringLiteral("the mast fell"));
        return hz == 125e6 ? QStringLiteral("not that one") : QString();
    }

  private:
    void Become(bool isOnline, const QString& state) {
        m_isOnline = isOnline;
        if (m_listener == nullptr) return;
        m_listener->OnConnectionChanged(isOnline, state);
        m_listener->OnBootStateChanged(GetBootState());
        m_listener->OnOperationModeChanged(GetOperationMode());
        m_listener->OnChannelsChanged(isOnline ? 2 - m_used : 0, m_used);
    }

    IOrvDriverListener* m_listener = nullptr;
    bool m_isOnline = false;
    int m_used = 0;
};

}  // namespace

class TestDriverPlugin : public QObject, public IOrvDriverPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TEST_DRIVER_IID)
#ifndef TEST_DRIVER_OFFERS_NOTHING
    Q_INTERFACES(IOrvDriverPlugin)
#endif

  public:
    IOrvDriver* Create(const QString& options, QString* error) override {
        if (options == QLatin1String("throw")) throw std::runtime_error("no\nantenna");
        if (options == QLatin1String("throw a number")) throw 7;
        if (options == QLatin1String("silent")) return nullptr;
        if (options.isEmpty()) return new TestDriver;
        *error = QStringLiteral("'%1' is no\n option").arg(options);
        return nullptr;
    }
};

#include "testdriver.moc"
