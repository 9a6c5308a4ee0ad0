// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>
#include <devicecontrol/multichannelserver/common/gts/frequencyrange.h>

#include <QtWidgets/QWidget>

#include <memory>

class GTSDisplayImpl;
class SuppressionPlant;
struct ModuleSettings;

/// Shows the data modules of the ground transmitter suppression, and lets the operator add, edit, connect and
/// delete them and assign frequencies to their inputs. Brings the suppression into being: with it Blanking
/// comes and goes, and the modules are polled as long as it lives. Loads them from the configuration and
/// saves them when it is destroyed. One at a time, and no HeadlessSuppression beside it, after the tree; GUI
/// thread.
class MCS_COMMON_EXPORT GTSDisplay : public QWidget {
    Q_OBJECT

  public:
    /// \a name, the object name, may be null for "GTSDisplay".
    explicit GTSDisplay(QWidget* parent = nullptr, const char* name = nullptr,
                        Qt::WindowFlags flags = Qt::WindowFlags());
    /// Asks for one that only looks like it.
    struct LookOnly {};
    /// For tools in which windows are laid out: looks like a display without modules, and brings nothing into
    /// being. Nothing is to be called but what every widget has.
    GTSDisplay(LookOnly look, QWidget* parent);
    ~GTSDisplay() override;

    /// Connects the modules that are in error anew, as the operator does one by one.
    void ConnectLostModules();
    /// Adds a module as it was once, at the end of the list, and connects it: as the operator does who adds
    /// one. It gets another index if a module of the list has that of \a settings.
    void AddModule(const ModuleSettings& settings);
    /// What the device can be tuned to: operators are told of assignments beyond it. Nothing is known unless
    /// it is set.
    void SetFrequencyRange(const FrequencyRange& range);
    /// The modules as a plant, which needs no display.
    SuppressionPlant& GetPlant();

  private:
    std::unique_ptr<GTSDisplayImpl> m_impl;
};
