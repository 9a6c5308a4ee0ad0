// SPDX-License-Identifier: Apache-2.0
// A device of one's own: so many channels as its options say, which take any frequency below 1 GHz.
#include <platform/device/iorvdriver.h>
#include <platform/device/iorvdriverplugin.h>

#include <QtCore/QTimer>

#include <algorithm>
#include <vector>

class ExampleDevice : public QObject, public IOrvDriver {
  public:
    explicit ExampleDevice(int channels) : m_isUsed(std::size_t(channels), false) {
        m_boot.setSingleShot(true);
        connect(&m_boot, &QTimer::timeout, this, [this] { GoOnline(); });
    }

    void SetListener(IOrvDriverListener* listener) override { m_listener = listener; }
    void Connect(const OrvDeviceSettings& /*settings*/) override {
        m_boot.start(100);  // a real one would begin to connect here, and say so when it is done
    }
    void Disconnect() override {
        m_boot.stop();
        m_isUsed.assign(m_isUsed.size(), false);
        Become(false, BootUnknown, OperationIdle, QStringLiteral("let go"));
    }
    bool IsOnline() const override { return m_isOnline; }
    EBooState GetBootState() const override { return m_bootState; }
    EOperationMode GetOperationMode() const override { return m_mode; }
    double GetBandwidth() const override { return 8000.0; }

    QString AllocateChannel(int* channel) override {
        for (std::size_t i = 0; i < m_isUsed.size(); ++i) {
            if (m_isUsed[i]) continue;
            m_isUsed[i] = true;
            *channel = int(i);
            TellChannels();
            return QString();
        }
        return QStringLiteral("all receivers are in use");
    }
    void FreeChannel(int channel) override {
        m_isUsed[std::size_t(channel)] = false;
        TellChannels();
    }
    QString Tune(int channel, double hz) override {
        if (hz >= 1e9) return QStringLiteral("it receives nothing above 1 GHz");
        if (m_listener != nullptr)  // a real one would pass it on to whoever waits for the hardware
            m_listener->OnLog(QStringLiteral("channel %1 goes to %2 Hz").arg(channel).arg(hz, 0, 'f', 0));
        return QString();
    }

  private:
    void GoOnline() { Become(true, BootReady, OperationFfm, QStringLiteral("the example is connected")); }
    void Become(bool isOnline, EBooState bootState, EOperationMode mode, const QString& state) {
        m_isOnline = isOnline;
        m_bootState = bootState;
        m_mode = mode;
        if (m_listener == nullptr) return;
        m_listener->OnConnectionChanged(isOnline, state);
        m_listener->OnBootStateChanged(bootState);
        m_listener->OnOperationModeChanged(mode);
        TellChannels();
    }
    void TellChannels() {
        const int used = int(std::count(m_isUsed.begin(), m_isUsed.end(), true));
        if (m_listener != nullptr)
            m_listener->OnChannelsChanged(m_isOnline ? int(m_isUsed.size()) - used : 0, used);
    }

    QTimer m_boot;
    std::vector<bool> m_isUsed;
    IOrvDriverListener* m_listener = nullptr;
    bool m_isOnline = false;
    EBooState m_bootState = BootUnknown;
    EOperationMode m_mode = OperationIdle;
};

class ExampleDevicePlugin : public QObject, public IOrvDriverPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID OrvDriverPlugin_iid)
    Q_INTERFACES(IOrvDriverPlugin)

  public:
    IOrvDriver* Create(const QString& options, QString* error) override {
        const int channels = options.isEmpty() ? 1 : options.toInt();
        if (channels >= 1 && channels <= 100) return new ExampleDevice(channels);
        *error = QStringLiteral("'%1' is no number of channels from 1 to 100").arg(options);
        return nullptr;
    }
};

#include "exampledevice.moc"
