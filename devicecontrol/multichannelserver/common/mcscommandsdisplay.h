// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtWidgets/QWidget>

#include <chrono>
#include <memory>

class MCSCommands;
class VCCheckBox;

/// The switch that tells the server whether it shall be connected to its device. After each click it is
/// locked for a moment. GUI thread only.
class MCS_COMMON_EXPORT MCSCommandsDisplay : public QWidget {  // fixed: virtual-order
    Q_OBJECT
    Q_PROPERTY(QByteArray valuePath READ GetValuePath WRITE SetValuePath)

  public:
    static constexpr std::chrono::milliseconds LockTime{250};

    /// \a name, the object name, may be null for "MCSCommandsDisplay".
    explicit MCSCommandsDisplay(QWidget* parent = nullptr, const char* name = nullptr,
                                Qt::WindowFlags flags = Qt::WindowFlags());
    ~MCSCommandsDisplay() override;

    /// Binds the switch to the commands subtree at \a path, also anew if it is that one already.
    /// \return whether a node is there; otherwise the switch is disabled until the next call.
    virtual bool SetCommands_ValuePath(const QString& path);

  protected:
    virtual void Build();

  public Q_SLOTS:
    /// The operator has switched: locks the box for a moment, whatever the state. (connected by name).
    void on_m_pShallBeConnectedDisp_stateChanged(int state);
    void enableConnectionCheckbox();  ///< Ends that moment.

  private:
    // As forms have it, in UTF-8, which nobody translates: what comes to the path later is shown then.
    QByteArray GetValuePath() const;
    void SetValuePath(const QByteArray& path);

    std::unique_ptr<MCSCommands> m_commands;  ///< null while unbound
    unsigned m_bindings = 0;                  ///< how often it was bound or unbound
    VCCheckBox* m_shallBeConnectedDisp = nullptr;
    int m_locks = 0;  ///< clicks less than LockTime ago
};
