// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/gts/frequencyrange.h>
#include <devicecontrol/multichannelserver/common/gts/suppressionplant.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>

#include <memory>
#include <vector>

class DataModule;
class GTSDisplay;
class QHBoxLayout;
class QMenu;
class QPoint;
class QPushButton;
class QTreeWidget;
class StandardNotification;

/// What a GTSDisplay shows and does: owns the data modules, each of which is a row of its tree widget. Goes
/// before that widget does.
class GTSDisplayImpl final : public QObject {
    Q_OBJECT

  public:
    explicit GTSDisplayImpl(GTSDisplay* display);
    /// Takes the modules along, which disconnect first.
    ~GTSDisplayImpl() override;

    /// Lays the display out; once.
    void Build();
    /// Makes the modules that the configuration names, and connects them.
    void Load();
    bool IsLoaded() const { return m_plant != nullptr; }
    /// Once it is loaded.
    SuppressionPlant& GetPlant() { return *m_plant; }
    void AddModule(const ModuleSettings& settings);
    void SetFrequencyRange(const FrequencyRange& range) { m_range = range; }

  public Q_SLOTS:
    void SlotOnRightClick(const QPoint& position);
    void SlotCreateNewDataModule();
    void SlotAssignInputs();
    /// Disconnects the module of the context menu if it is connected, and connects it if it is not.
    void SlotConnectDataModule();
    /// For the module of the context menu, as the next.
    void SlotEditDataModule();
    void SlotDeleteDataModule();
    void SlotDataModuleError(const QString& name, const QString& address, int errorcode,
                             const QString& errortext);

  private:
    void BuildTree();
    QHBoxLayout* BuildButtons();
    /// Lets the operator edit \a module. False if that was not accepted, or the display is gone.
    bool Edit(DataModule* module);
    /// Keeps \a module, and listens to its errors.
    DataModule& Keep(std::unique_ptr<DataModule> module);
    /// Takes one of those that are kept into the list, and connects it.
    void AddToPlant(DataModule& module);
    std::vector<DataModule*> Modules() const;
    /// There is nothing to assign without modules.
    void EnableAssigning();
    void ShowWarning(const QString& message);

    GTSDisplay* m_display;
    std::unique_ptr<SuppressionPlant> m_plant;  ///< null until it is loaded
    QTreeWidget* m_tree = nullptr;
    QPushButton* m_addModule = nullptr;
    QPushButton* m_assignInputs = nullptr;
    QPointer<QMenu> m_menu;
    std::vector<std::unique_ptr<DataModule>> m_modules;
    std::unique_ptr<DataModule> m_newModule;  ///< while its editor is open
    QPointer<DataModule> m_menuModule;        ///< of the context menu
    QPointer<StandardNotification> m_warning;
    FrequencyRange m_range;
    bool m_isBuilt = false;
};
