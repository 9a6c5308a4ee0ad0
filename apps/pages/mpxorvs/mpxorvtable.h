// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/mpxorvs/mpxorvrow.h>

#include <platform/values/node.h>
#include <platform/values/observation.h>

#include <QtCore/QAbstractTableModel>
#include <QtCore/QHash>
#include <QtCore/QTimer>

#include <chrono>
#include <memory>
#include <vector>

/// All MpxORVs of the tree, a row each, in the order in which they came. What changes is told together, once
/// per turn of the event loop at most; of the rows that are touched only, unless there are too many to be
/// told one by one. GUI thread.
class MpxOrvTable : public QAbstractTableModel, private MpxOrvRow::IListener, private IObserver {
    Q_OBJECT

  public:
    static constexpr int PathRole = Qt::UserRole;  ///< the path of the row's node
    /// Changes beyond this rate are told together.
    static constexpr std::chrono::milliseconds Pause{33};

    explicit MpxOrvTable(QObject* parent = nullptr);
    ~MpxOrvTable() override;

    /// Shows the nodes of static and of dynamic MpxORVs at these paths; empty: none. Looks anew in any case,
    /// and tells of what is different only.
    void SetPaths(const QString& staticPath, const QString& dynamicPath);
    /// The MpxORV of this console is the one at \a path; empty: none is.
    void SetOwn(const QString& path);
    const MpxOrvContent& GetContent(int row) const;
    /// The row of the node at \a path; -1 if there is none.
    int FindRow(const QString& path) const;
    /// Something of what is shown is not known to hold any more.
    bool IsStale() const { return m_countStale > 0; }
    /// Tells now what waits to be told.
    void Flush();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  Q_SIGNALS:
    /// Rows are about to come, go and move for reasons of their own, and have done so.
    void FlushBegins();
    void FlushEnds();
    void StaleChanged(bool isStale);

  private:
    struct Source {
        Observation<values::Node> node;
        bool isStatic;
        bool hasNew = false;
    };

    void Update(Observable* source, TChangeCode code) override;
    void OnRowChanged(MpxOrvRow& row) override;
    void OnRowGone(MpxOrvRow& row) override;
    void FlushSoon();
    void RemoveGone();
    void RemoveRange(int first, int last);
    void RemoveAtOnce();
    void NumberRows();
    void AddNew(Source& source);
    void TellChanged();
    void CountStale();
    void DropSource(Source& source);

    std::vector<Source> m_sources;
    std::vector<std::unique_ptr<MpxOrvRow>> m_rows;
    QHash<const values::Node*, MpxOrvRow*> m_byNode;
    std::vector<MpxOrvRow*> m_changed;  ///< has room for all rows
    bool m_hasGone = false;
    int m_countStale = 0;
    QString m_own;
    QTimer m_turn;
    std::chrono::milliseconds m_lastFlush{};
};
