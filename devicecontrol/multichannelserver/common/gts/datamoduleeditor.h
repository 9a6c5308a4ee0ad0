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
class QVBoxLayout;
class Remark;

/// Sets a data module's type, IP address and poll interval. One that has no type yet gets proposals. Takes
/// every address, and says beforehand what will come of a doubtful one. GUI thread.
class MCS_COMMON_EXPORT DataModuleEditor : public QDialog {
    Q_OBJECT

  public:
    /// \a module is not owned, and may go while the dialog is open.
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
    /// Says beforehand what will come of the address as it is.
    void ShowDoubt();
    QString GetDoubt() const;

    QVBoxLayout* m_layout = nullptr;
    QGroupBox* m_group = nullptr;
    QComboBox* m_type = nullptr;
    QLineEdit* m_address = nullptr;
    QSpinBox* m_pollInterval = nullptr;
    Remark* m_remark = nullptr;
    QPointer<DataModule> m_module;
};
