// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtWidgets/QWidget>

#include <memory>

class MCSConfigData;
class QGroupBox;
class QLabel;
class VCCheckBox;
class VCComboBoxClassic;
class VCLineEdit;
class VCNumericFloatSpin;

/// Edits the configuration of the server: each field is bound to a value of the tree by itself. GUI thread
/// only.
class MCS_COMMON_EXPORT MCSConfigDisplay : public QWidget {  // fixed: virtual-order
    Q_OBJECT
    Q_PROPERTY(QByteArray valuePath READ GetValuePath WRITE SetValuePath)
    Q_PROPERTY(bool bootConfigGroup READ HasBootConfigGroup WRITE SetBootConfigGroup)
    Q_PROPERTY(bool jobConfigGroup READ HasJobConfigGroup WRITE SetJobConfigGroup)

  public:
    /// The groups to show, as a set of bits.
    enum Flags : int {
        BootConfigGroup = 1,  ///< "Connection"
        JobConfigGroup = 2    ///< "Job Settings"
    };

    /// \a name, the object name, may be null for "MCSConfigDisplay".
    explicit MCSConfigDisplay(MCSConfigDisplay::Flags flags, QWidget* parent = nullptr,
                              const char* name = nullptr, Qt::WindowFlags windowFlags = Qt::WindowFlags());
    /// Both groups: what code that is made of a form calls.
    explicit MCSConfigDisplay(QWidget* parent = nullptr);
    ~MCSConfigDisplay() override;

    virtual Flags GetFlags() const;  ///< The groups that are shown.
    virtual void SetFlags(Flags flags);
    /// Edits the configuration subtree at \a path, also anew if it is that one already.
    /// \return whether a node is there; otherwise the fields are empty until the next call.
    virtual bool SetConfig_ValuePath(const QString& path);
    /// Whether "Connection" can be edited, where its values can be.
    virtual void EnableBootConfigGroup(bool isEnabled);
    /// Whether "Job Settings" can be edited, where its values can be.
    virtual void EnableJobConfigGroup(bool isEnabled);
    /// Hides the number of frequency channels for the type of device that has none.
    virtual void SetDeviceType(long type);

  protected:
    virtual void Build();
    virtual void BuildBootConfigGroup(QWidget* parent);
    virtual void BuildJobConfigGroup(QWidget* parent);

  private:
    // As forms have it, in UTF-8, which nobody translates: what comes to the path later is shown then.
    QByteArray GetValuePath() const;
    void SetValuePath(const QByteArray& path);
    bool HasBootConfigGroup() const { return (m_flags & BootConfigGroup) != 0; }
    void SetBootConfigGroup(bool isShown) { ShowGroup(BootConfigGroup, isShown); }
    bool HasJobConfigGroup() const { return (m_flags & JobConfigGroup) != 0; }
    void SetJobConfigGroup(bool isShown) { ShowGroup(JobConfigGroup, isShown); }
    void ShowGroup(Flags group, bool isShown);

    Flags m_flags;
    std::unique_ptr<MCSConfigData> m_config;  ///< null while unbound
    unsigned m_bindings = 0;                  ///< how often it was bound or unbound
    VCLineEdit* m_deviceAddressDisp = nullptr;
    VCLineEdit* m_deviceNameDisp = nullptr;
    VCCheckBox* m_connectOnStartUpDisp = nullptr;
    VCCheckBox* m_forceConnectDisp = nullptr;
    VCNumericFloatSpin* m_numberOfFreqChannelsDisp = nullptr;
    VCComboBoxClassic* m_defaultScanAveragingTimeDisp = nullptr;
    QLabel* m_numberOfFreqChannelsCaption = nullptr;
    QGroupBox* m_bootConfigGroup = nullptr;
    QGroupBox* m_jobConfigGroup = nullptr;
};

constexpr MCSConfigDisplay::Flags operator|(MCSConfigDisplay::Flags left, MCSConfigDisplay::Flags right) {
    return static_cast<MCSConfigDisplay::Flags>(static_cast<int>(left) | static_cast<int>(right));
}
