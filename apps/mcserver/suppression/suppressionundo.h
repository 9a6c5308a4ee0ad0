// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/modulesettings.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTimer>

#include <functional>
#include <map>

class GTSDisplay;

/// Notices what the operator does to data modules in their display, which acts at once, and knows how to undo
/// it: deleting one, and disconnecting one. GUI thread.
class SuppressionUndo : public QObject {
    Q_OBJECT

  public:
    /// \a display is not owned and outlives this object.
    explicit SuppressionUndo(GTSDisplay& display);

  Q_SIGNALS:
    /// \a what was done, and \a undo takes it back. That may be called when the display is gone.
    void Acted(const QString& what, const std::function<void()>& undo);

  private:
    /// What was last known of a module.
    struct Known {
        ModuleSettings settings;
        QString node;  ///< below "GTS"
        bool isSwitchedOff = false;
    };
    using Modules = std::map<int, Known>;  ///< by number

    Modules Read() const;
    void Look();
    void OfferToAdd(const ModuleSettings& deleted);
    void OfferToConnect(const Known& module);
    QString LossOf(const std::vector<double>& frequencies) const;
    bool IsWatched(double hz) const;

    GTSDisplay& m_display;
    QTimer m_look;  ///< whoever is edited is disconnected for a moment: what holds afterwards counts
    Modules m_modules;
};
