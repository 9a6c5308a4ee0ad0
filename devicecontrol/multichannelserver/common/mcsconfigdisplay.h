// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

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

  public:
    /// The groups to show, as a set of bits.
    enum Flags : int {
        BootConfigGroup = 1,  ///< "Connection"
        JobConfigGroup = 2    ///< "Job Settings"
    };

    /// \a name, the object name, may be null for "MCSConfigDisplay".
    explicit MCSConfigDisplay(MCSConfigDisplay::Flags flags, QWidget* parent = nullptr,
                              const char* name = nullptr, Qt::WindowFlags windowFlags = Qt::WindowFlags());
    ~MCSConfigDisplay() override;

    virtual Flags GetFlags() const;
    virtual void SetFlags(Flags flags);
    /// Edits the configuration subtree at \a path, also anew if it is that one already.
    /// \return whether a node is there; otherwise the fields are empty until the next call.
    virtual bool SetConfig_ValuePath(const QString& path);
    virtual void EnableBootConfigGroup(bool isEnabled);
    virtual void EnableJobConfigGroup(bool isEnabled);
    /// Hides the number of frequency channels for the type of device that has none.
    virtual void SetDeviceType(long type);

  protected:
    virtual void Build();
    virtual void BuildBootConfigGroup(QWidget* parent);
    virtual void BuildJobConfigGroup(QWidget* parent);

  private:
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
