// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <platform/values/observation.h>
#include <platform/values/value.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtWidgets/QWidget>

#include <array>
#include <memory>

class MCSStatus;
class QLabel;
class VCLabel;

/// Shows the state of the server: device, boot state, operation mode, sweep time, channels, job, multiplexed
/// devices. Writes nothing to the server. What is not live is veiled. GUI thread only.
class MCS_COMMON_EXPORT MCSStatusDisplay : public QWidget, public IObserver {  // fixed: virtual-order
    Q_OBJECT
    Q_PROPERTY(QByteArray valuePath READ GetValuePath WRITE SetValuePath)

  public:
    /// \a name, the object name, may be null for "MCSStatusDisplay".
    explicit MCSStatusDisplay(QWidget* parent = nullptr, const char* name = nullptr,
                              Qt::WindowFlags flags = Qt::WindowFlags());
    ~MCSStatusDisplay() override;

    /// Shows the status subtree at \a path, also anew if it is that one already.
    /// \return whether a node is there; otherwise nothing is shown until the next call.
    virtual bool SetStatus_ValuePath(const QString& path);
    /// Hides the frequency channels for the type of device that has none.
    void SetDeviceType(long type);

  protected:
    virtual void Build();
    virtual void UpdateOnlineDisp();
    virtual void UpdateFreqChannelsDisp();
    virtual void UpdateJobTypeDisp();
    virtual void UpdateNumberOfORVsDisplay();
    virtual void UpdateSweepTimeDisp();
    virtual void UpdateNoValues();
    void Update(Observable* observable, TChangeCode code) override;

  private:
    using ObservedValues = std::array<values::ValueBase*, 8>;
    using Flag = values::Value<bool>;

    // As forms have it, in UTF-8, which nobody translates: what comes to the path later is shown then.
    QByteArray GetValuePath() const;
    void SetValuePath(const QByteArray& path);

    Flag* CreateNoValueFlag();
    void Bind(const QString& path);
    void Unbind();
    void ShowUnbound();
    ObservedValues GetObservedValues() const;
    void UpdateOfState(const Observable* observable);
    void UpdateOfContent(const Observable* observable);
    void MarkStaleLabels();
    bool IsOnline() const;
    QString GetSweepTimeText() const;

    std::unique_ptr<MCSStatus> m_status;  ///< null while unbound
    unsigned m_bindings = 0;              ///< how often it was bound or unbound
    VCLabel* m_connectionStateDisp = nullptr;
    VCLabel* m_bootStateDisp = nullptr;
    QLabel* m_onlineDisp = nullptr;
    VCLabel* m_operationModeDisp = nullptr;
    QLabel* m_sweepTimeDisp = nullptr;
    QLabel* m_freqChannelDisp = nullptr;
    QLabel* m_jobTypeDisp = nullptr;
    QLabel* m_numberOfORVsDisp = nullptr;
    QLabel* m_freqChannelCaption = nullptr;
    Observation<Flag> m_bootStateNoValue;      ///< while true there is no boot state to show
    Observation<Flag> m_operationModeNoValue;  ///< likewise
};
