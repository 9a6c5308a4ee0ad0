// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>
#include <devicecontrol/multichannelserver/common/gts/modulestate.h>
#include <devicecontrol/multichannelserver/common/gts/moduleview.h>

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QString>

#include <functional>
#include <set>
#include <vector>

class ISuppressionListener;
class PlantModule;
struct BlankingSource;

/// The data modules of the ground transmitter suppression as a plant, with or without a window: loads and
/// saves their list, shows in the tree how many there are, finds them indexes, connects lost ones anew, and
/// tells a listener what becomes of them. Does not own the modules: a GTSDisplay owns them with its rows, a
/// HeadlessSuppression where there is no window. One per process, after the tree; main thread.
class MCS_COMMON_EXPORT SuppressionPlant : public QObject {
    Q_OBJECT

  public:
    /// Another one while there is one already is asserted, and loads and saves nothing.
    SuppressionPlant();
    ~SuppressionPlant() override;
    /// Not for another one.
    bool IsInCharge() const;

    /// Whether the configuration has a list of modules that is not empty.
    static bool IsConfigured();
    /// The modules that the configuration names, as a plant would make them.
    static std::vector<ModuleSettings> GetConfiguredSettings();
    /// A short text that is another one whenever something else stands in the configuration's section.
    static QByteArray GetConfigurationMark();
    /// The plant that comes next makes these modules in place of those that the configuration names, and
    /// saves them as its own. For what was set before and did not reach the configuration.
    static void LoadInstead(std::vector<ModuleSettings> settings);

    /// What people set of the modules, in their order.
    std::vector<ModuleSettings> GetSettings() const;
    /// What holds of the modules, in their order.
    std::vector<ModuleState> GetStates() const;
    /// Shows \a look one module after the other, in their order.
    void ForEachModule(const std::function<void(const ModuleView&)>& look) const;

    /// What people are told of an input, in the middle of a sentence: "Tower mast, input Tower 1", or
    /// "ADAM-6051 1, input 3".
    QString Describe(const BlankingSource& source) const;

    /// Whether \a hz, by its whole hertz, is assigned to an input whose module does not answer, so that
    /// nobody would notice if its transmitter used it: another input of the same frequency has another
    /// transmitter. Where the module was disconnected by hand, only if no other input of the frequency is
    /// watched.
    bool IsUnsupervised(double hz) const;
    /// All of those: whole hertz, ascending, each once.
    std::vector<double> GetUnsupervisedFrequencies() const;

    // As an operator does with one module, which is told by the name of its node. False if there is none.
    /// In Hz; 0.0 for none. An input that the module has not changes nothing.
    bool SetFrequency(const QString& module, int input, double hz);
    /// What people call it.
    bool SetName(const QString& module, const QString& label);
    bool SetLabel(const QString& module, int input, const QString& label);  ///< empty: its number
    /// Connects it anew, unless it has that address.
    bool SetAddress(const QString& module, const QString& address);

    /// If it is not connected.
    bool ConnectModule(const QString& module);

    int Count() const { return static_cast<int>(m_modules.size()); }  ///< How many modules are in the list.
    /// Connects the modules that are in error anew, as an operator does one by one.
    void ConnectLostModules();
    /// Tells \a listener what becomes of the modules, in place of who was told before; null tells nobody. It
    /// is not owned, and outlives the plant or is taken away first.
    void SetListener(ISuppressionListener* listener) { m_listener = listener; }

    // For the owner of the modules:

    /// Makes a module of this index, which is not connected, and keeps it.
    using Maker = std::function<PlantModule&(int index)>;
    /// Has a module made for each usable entry of the configuration, and connects it.
    void Load(const Maker& make);
    /// Writes the list to the configuration. Once, before the modules go.
    void Save();
    /// Takes \a module into the list, at its end.
    void Add(PlantModule& module);
    void Remove(PlantModule& module);  ///< Takes \a module, which stays its owner's, out of the list.
    /// Shows in the tree how many modules there are.
    void ShowCount() const;
    /// The smallest index that no module of the list has.
    int FreeIndex() const;
    /// The index of \a module, which is in the list; another one if somebody else publishes its node.
    int IndexFor(const PlantModule& module) const;

  Q_SIGNALS:
    /// The settings of a module may have changed, or one came or went; not any more once they are saved.
    void SignalSettingsChanged();
    /// Something of what GetStates() tells may have changed.
    void SignalStatesChanged();

  private:
    void TellSettings();
    PlantModule* FindModule(const QString& name) const;

    static SuppressionPlant* s_instance;

    std::vector<PlantModule*> m_modules;
    std::set<QString> m_sections;  ///< of the configuration, of which modules were made
    ISuppressionListener* m_listener = nullptr;
    int m_nextNumber = 0;
    bool m_isSaved = false;
};
