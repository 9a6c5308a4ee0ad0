// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtWidgets/QDialog>

class DataModule;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLayout;
class QLineEdit;
class QSpinBox;

/// Sets a data module's type, IP address and poll interval. One that has no type yet gets proposals. GUI
/// thread.
class MCS_COMMON_EXPORT DataModuleEditor : public QDialog {
    Q_OBJECT

  public:
    DataModuleEditor(QWidget* parent, DataModule* module);

  public Q_SLOTS:
    /// Configures the module, which connects it anew, and closes the dialog.
    void SlotOkButton();

  private:
    void Build();
    void AddRow(QGridLayout& grid, const QString& caption, QWidget* field, const char* name);
    QLayout* BuildButtons();
    void Fill();
    void SetType(const QString& type);

    QGroupBox* m_group = nullptr;
    QComboBox* m_type = nullptr;
    QLineEdit* m_address = nullptr;
    QSpinBox* m_pollInterval = nullptr;
    QPointer<DataModule> m_module;
};
