// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/mcsmpxorvstatus.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistmodel.h>

#include <tests/devicecontrol/multichannelserver/common/treeaccess.h>

#include <gtest/gtest.h>

#include <QtCore/QStringList>
#include <QtGui/QPixmap>

#include <memory>

/// A tree with MpxORVs, and a list model of them. MpxORVs are named by their path below "/Mpx".
class StatusListTest : public testing::Test {
  protected:
    static QString PathOf(const char* name) { return QStringLiteral("/Mpx/") + QString::fromUtf8(name); }
    /// An MpxORV as the server makes it. Writes its status as the server does.
    static std::unique_ptr<MCSMpxORVStatus> Add(const char* name) {
        values::Tree::Instance()->ProvideNode(PathOf(name));
        return StatusOf(name);
    }
    static std::unique_ptr<MCSMpxORVStatus> StatusOf(const char* name) {
        return std::make_unique<MCSMpxORVStatus>(PathOf(name) + QStringLiteral("/Status"));
    }
    void Remove(const char* name) { m_tree.Delete(m_tree.FindItem(PathOf(name))); }

    QVariant At(int row, int column, int role = Qt::DisplayRole) const {
        return m_model.index(row, column).data(role);
    }
    QString TextAt(int row, int column) const { return At(row, column).toString(); }
    QStringList Names() const {
        QStringList names;
        for (int row = 0; row < m_model.rowCount(); ++row)
            names << TextAt(row, 0);
        return names;
    }
    int CountObserversAt(const QString& path) {
        values::TreeItem* const item = m_tree.FindItem(path);
        return item != nullptr ? item->GetObservable()->CountObservers() : -1;
    }

    inline static const QString s_path = QStringLiteral("/Mpx");

    values::Tree m_tree;
    MCSMpxORVStatusListModel m_model;
};
