// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtWidgets/QDialog>

#include <vector>

class DataModule;
class QHBoxLayout;
class QTableWidget;
class QTableWidgetItem;

/// Assigns a frequency to every input of every data module, in a table of MHz. GUI thread.
class MCS_COMMON_EXPORT InputAssignmentEditor : public QDialog {
    Q_OBJECT

  public:
    InputAssignmentEditor(QWidget* parent, const std::vector<DataModule*>& modules);

  public Q_SLOTS:
    /// Applies and closes the dialog.
    void SlotSaveAssignments();
    /// Takes the table over: the modules publish it at once.
    void SlotApply();

  private:
    void Build();
    QHBoxLayout* BuildButtons();
    void Fill();
    void FillRow(int row, const DataModule& module);
    void TakeOver(QTableWidgetItem& cell, DataModule& module, int input);
    void Mark(QTableWidgetItem& cell, bool isWrong);

    QTableWidget* m_table = nullptr;
    std::vector<QPointer<DataModule>> m_modules;
};
