// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/suppression/suppressionstate.h>

#include <QtCore/QAbstractTableModel>

#include <array>
#include <map>
#include <optional>
#include <vector>

/// The modules as rows: what each is called, whether it answers, since when and why not. GUI thread.
class ModuleStatusModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum EColumn { Name, State, Since, Reason, Address, LastAnswer, ColumnCount };

    explicit ModuleStatusModel(QObject* parent = nullptr);

    void Show(const SuppressionState& state);
    /// Lets the last answers grow older.
    void RefreshAges() { TellChanges(); }
    /// Notes which answers there are, as soon as they come, whether or not somebody looks: ages count from
    /// then.
    void LearnClock(const SuppressionState& state);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

  private:
    /// The last answer of a module.
    struct Heard {
        QString answer;              ///< when, by the server's clock
        std::optional<qint64> atMs;  ///< by the clock here; not known of one from before somebody listened
    };

    /// What else there is to say, where room for it is.
    static QString DetailOf(const ModuleStatusView& module, int column);
    QString TextOf(const ModuleStatusView& module, int column) const;
    static QString StateWord(const ModuleStatusView& module);
    QString AgeText(const ModuleStatusView& module) const;
    void TellChanges();

    bool m_isLive = false;
    std::vector<ModuleStatusView> m_modules;
    std::vector<std::array<QString, ColumnCount>> m_texts;  ///< of them, as views know them
    std::map<int, Heard> m_heard;                           ///< by the modules' numbers
    /// By how much the clock here is ahead of that of the server, as far as answers show that arrive while
    /// somebody listens.
    std::optional<qint64> m_aheadMs;
};
