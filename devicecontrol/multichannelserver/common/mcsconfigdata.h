// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>
#include <devicecontrol/multichannelserver/common/mcspolicyset.h>

#include <platform/values/observable.h>
#include <platform/values/value.h>
#include <platform/values/valueselection.h>

#include <QtCore/QList>
#include <QtCore/QString>

class ICfg;

/// The highest version of the device's protocol that the server uses.
enum MCSProtocolLevel : int { MCSProtocolLevelDefault = 30 };

/// The server's configuration: values in the tree, kept in a configuration store. Main thread; the tree owns
/// the values, the store belongs to the caller and outlives this object.
///
/// Setting the value "SaveConfig" saves, and resets it: a push button for clients. The default frequency and
/// the default averaging time save everything by themselves on every change. All that takes a store known
/// from an earlier ReadFrom or WriteTo. Other changes are told to the observers as ContentChanged; ReadFrom
/// tells them once, at its end. Whoever is told may destroy this object.
///
/// Accessors of a value that went away must not be called, path accessors excepted.
class MCS_COMMON_EXPORT MCSConfigData : public Observable, public IObserver {
  public:
    /// A multiplexed ORV that the configuration itself defines.
    struct StaticMpxORV {
        QString name;
        MCSPolicySet policies;
    };

    /// Finds or creates the values under \a basePath; null means the server's own place. \a overwrite resets
    /// values that exist already to the defaults.
    MCSConfigData(const QString* basePath, bool overwrite);
    ~MCSConfigData() override;
    MCSConfigData(const MCSConfigData&) = delete;
    MCSConfigData& operator=(const MCSConfigData&) = delete;

    // clang-format off
    virtual QString          GetDeviceAddress() const;  ///< host name or IP address of the device
    virtual void             SetDeviceAddress(const QString& address);
    virtual QString          GetDeviceAddress_ValuePath() const;

    virtual QString          GetDeviceName() const;  ///< what people call the device
    virtual void             SetDeviceName(const QString& name);
    virtual QString          GetDeviceName_ValuePath() const;

    /// Whether the server connects to it when it starts.
    virtual bool             GetConnectOnStartup() const;
    virtual void             SetConnectOnStartup(bool connect);
    virtual QString          GetConnectOnStartup_ValuePath() const;

    /// Whether it takes the device from whoever else has it.
    virtual bool             GetForceConnect() const;
    virtual void             SetForceConnect(bool force);
    virtual QString          GetForceConnect_ValuePath() const;

    virtual int              GetNumberOfFreqChannels() const;  ///< how many the device is asked for
    virtual void             SetNumberOfFreqChannels(int number);
    virtual QString          GetNumberOfFreqChannels_ValuePath() const;

    virtual MCSProtocolLevel GetMaxProtocolLevel() const;  ///< highest that is spoken with the device
    virtual void             SetMaxProtocolLevel(MCSProtocolLevel level);
    virtual QString          GetMaxProtocolLevel_ValuePath() const;

    virtual double           GetDefaultFrequencyForChannels() const;  ///< Hz
    virtual void             SetDefaultFrequencyForChannels(double hz);
    virtual QString          GetDefaultFrequencyForChannels_ValuePath() const;

    virtual long             GetDefaultScanAveragingTime() const;  ///< index of the selection
    virtual void             SetDefaultScanAveragingTime(long index);
    virtual QString          GetDefaultScanAveragingTime_ValuePath() const;

    virtual bool             GetGuiVisible() const;  ///< whether the server shows its window
    virtual void             SetGuiVisible(bool visible);
    virtual QString          GetGuiVisible_ValuePath() const;  ///< nothing is there (fixed: path-without-value)
    virtual bool             GetResetAfterBoot() const;  ///< whether the device is reset once it has booted
    // clang-format on

    virtual QString GetBasePath() const;  ///< Where the values are.
    /// The store that was read or written last; null before the first time.
    virtual ICfg* GetICfg() const;

    /// Those that the configuration had when it was read last, in its order.
    virtual QList<StaticMpxORV> GetStaticMpxORVs() const;
    /// Whether one of them has exactly that \a name.
    virtual bool DoesStaticMpxORVExist(const QString& name) const;
    /// The policies that a dynamically connected client gets.
    virtual MCSPolicySet GetDefaultDynMpxORVPolicy() const;

    /// Pushes the button "SaveConfig".
    virtual void TriggerSaveConfig();
    /// Takes every setting from \a cfg, or for null from the store known; without one nothing happens. A key
    /// that is missing keeps its setting, and some are written with their defaults.
    virtual void ReadFrom(ICfg* cfg);
    /// Writes and commits every setting but "ResetAfterBoot" and the default policies to \a cfg, or for null
    /// to the store known; without one nothing happens. The frequency is written as a whole number of 32
    /// bits: from 2147483648 Hz on it cannot be kept and reads -2147483648. (fixed: frequency-of-32-bits)
    virtual void WriteTo(ICfg* cfg);
    /// Writes and commits whether the window is shown; null as in WriteTo.
    virtual void WriteGuiVisibleTo(ICfg* cfg);

  protected:
    void Update(Observable* source, TChangeCode code) override;

  private:
    struct Fields;  ///< the table of the settings

    void ReadDefaultPolicy(ICfg& cfg);
    void OnContentChanged(const Observable* source);

    QString m_basePath;
    ICfg* m_pCfg = nullptr;  ///< not owned
    bool m_isReading = false;
    values::Value<QString>* m_pDeviceAddress = nullptr;
    values::Value<QString>* m_pDeviceName = nullptr;
    values::Value<bool>* m_pConnectOnStartup = nullptr;
    values::Value<bool>* m_pForceConnect = nullptr;
    values::ValueNumeric<int>* m_pNumberOfFreqChannels = nullptr;
    values::Value<int>* m_pMaxProtocolLevel = nullptr;
    values::ValueSelection* m_pDefaultScanAveragingTime = nullptr;
    values::ValueNumeric<double>* m_pDefaultFrequencyForChannels = nullptr;
    bool m_guiVisible = true;
    bool m_resetAfterBoot = false;
    QList<StaticMpxORV> m_staticMpxORVs;
    MCSPolicySet m_defaultDynMpxORVPolicy;
    values::Value<bool>* m_pSaveConfig = nullptr;
};
