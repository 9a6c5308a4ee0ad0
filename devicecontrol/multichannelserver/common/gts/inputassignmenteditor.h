// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>
#include <devicecontrol/multichannelserver/common/gts/frequencyrange.h>

#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtWidgets/QDialog>

#include <vector>

class DataModule;
class QHBoxLayout;
class QTableWidget;
class QTableWidgetItem;
class QVBoxLayout;
class Remark;

/// Assigns a frequency to every input of every data module, in a table of MHz. Takes every text, and says
/// beforehand what will come of a doubtful one. GUI thread.
class MCS_COMMON_EXPORT InputAssignmentEditor : public QDialog {
    Q_OBJECT

  public:
    /// \a modules are not owned, and may go while the dialog is open.
    InputAssignmentEditor(QWidget* parent, const std::vector<DataModule*>& modules);

    /// What the device can be tuned to: assignments beyond it are doubtful.
    void SetFrequencyRange(const FrequencyRange& range);

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
    static QString NoFrequencyText();
    void OnItemChanged(QTableWidgetItem* cell);
    void OnTyped(const QModelIndex& index, const QString& text);
    void MarkDoubt(QTableWidgetItem& cell);
    /// An empty \a text takes a mark away.
    void Mark(QTableWidgetItem& cell, const QString& text);
    /// Says what is marked: the current cell, or else the first.
    void ShowRemark();
    QString RemarkOf(const QTableWidgetItem& cell, const QString& text) const;

    QVBoxLayout* m_layout = nullptr;
    QTableWidget* m_table = nullptr;
    Remark* m_remark = nullptr;
    FrequencyRange m_range;
    std::vector<QPointer<DataModule>> m_modules;
};
