// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/frequencyrange.h>
#include <devicecontrol/multichannelserver/common/gts/modulesettings.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTimer>

#include <functional>
#include <map>
#include <vector>

class GTSDisplay;

/// Notices what the operator does to data modules in their display, which acts at once, and knows how to undo
/// it: deleting one, disconnecting one, and changing its address and inputs. GUI thread.
class SuppressionUndo : public QObject {
    Q_OBJECT

  public:
    /// \a display is not owned and outlives this object. \a range is what the device can be tuned to.
    SuppressionUndo(GTSDisplay& display, const FrequencyRange& range);

    /// Addresses and inputs are as somebody has entered them elsewhere, who offers to undo that.
    void TakeAsKnown();

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
    void OfferToRestore(const std::vector<ModuleSettings>& before, const std::vector<ModuleSettings>& after);
    QString LossOf(const std::vector<double>& frequencies) const;
    bool IsWatched(double hz) const;
    bool CanBeTunedTo(double hz) const;

    GTSDisplay& m_display;
    FrequencyRange m_range;
    QTimer m_look;  ///< whoever is edited is disconnected for a moment: what holds afterwards counts
    Modules m_modules;
};
