// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/suppression/inputrules.h>
#include <apps/pages/lamplook.h>

#include <devicecontrol/multichannelserver/common/gts/modulestate.h>

#include <QtCore/QAbstractTableModel>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTimer>

#include <functional>
#include <vector>

class SuppressionPlant;

/// The inputs of all data modules as rows: which one, its name, its frequency and whether its transmitter is
/// keyed. What is entered is taken whole and at once by the plant, or refused. GUI thread.
class InputModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum EColumn { Module, Address, Input, Name, Frequency, State, ColumnCount };

    /// \a plant is not owned, and outlives the model.
    InputModel(SuppressionPlant& plant, const FrequencyRange& range, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    /// Enters what \a lines say, each of which has the texts for the columns from that of \a index on, into
    /// the rows from that of \a index on: all of it, or, with the first reason, nothing. Empty if it was
    /// taken.
    QString Enter(const QModelIndex& index, const std::vector<QStringList>& lines);
    /// The same for \a lines of the clipboard, with tabs, semicolons or commas between their cells.
    QString Paste(const QModelIndex& index, const QStringList& lines);

    /// The list as a text with commas: module, input, name, frequency in MHz.
    QString ToCsv() const;
    /// Enters names and frequencies of such a text, whose separators are commas, semicolons or tabs: all of
    /// it, or, with the first reason, nothing. Empty if it was taken.
    QString FromCsv(const QStringList& lines);

    /// The module of the row.
    const ModuleState& GetModule(int row) const;

  Q_SIGNALS:
    /// \a reason is empty if what was entered is taken.
    void SignalEntered(const QString& reason);
    /// What was entered is taken, though it may be a mistake: \a doubt says why.
    void SignalDoubted(const QString& doubt);
    /// What was pasted, or read from a text, has changed \a cells of them, and no input has the frequencies
    /// \a cleared, in Hz, any more; \a undo takes it back. That may be called when model and plant are gone.
    void SignalManyChanged(int cells, const std::vector<double>& cleared, const std::function<void()>& undo);

  private:
    struct Row {
        int module = 0;  ///< its place in m_modules
        int input = 0;
    };
    struct Change {
        int row = 0;
        int column = 0;
        QString text;
        FrequencyText::EPlainNumber plain;  ///< what a frequency without a unit counts
    };

    void Refresh();
    void CountRows();
    void ShowUnsupervised();
    QString TextOf(const Row& row, int column) const;
    lamplook::ELamp LampOf(const Row& row) const;
    QVariant LookOfState(const Row& row, int role) const;
    /// What is wrong with a frequency that was assigned elsewhere; empty if nothing is.
    QString DoubtOf(const Row& row) const;
    QString RefusalOf(const Change& change) const;
    /// Two modules of one name could not be told from each other.
    QString RefusalOfModuleName(const Change& change) const;
    QString RefusalOf(const std::vector<Change>& changes) const;
    void Apply(const Change& change);
    void OfferUndo(const std::vector<ModuleSettings>& before);
    QString DoubtOfAddresses(const std::vector<Change>& changes) const;
    QString TakeAll(const std::vector<Change>& changes, const QString& reason);
    static QString TooManyLines(std::size_t lines, int rows);
    int FindRow(const QString& title, const QString& input) const;

    SuppressionPlant& m_plant;
    FrequencyRange m_range;
    InputRules m_rules;
    QTimer m_refresh;
    std::vector<ModuleState> m_modules;
    std::vector<Row> m_rows;
    std::vector<double> m_unsupervised;  ///< whole hertz, ascending
};
