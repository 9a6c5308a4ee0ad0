// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <QtCore/QString>
#include <QtWidgets/QWidget>

class MCSMpxORVStatusListModel;
class QTableView;

/// A table of the MpxORVs below the nodes that it watches. GUI thread only.
class MCS_COMMON_EXPORT MCSMpxORVStatusListDisplay : public QWidget {  // fixed: virtual-order
    Q_OBJECT

  public:
    explicit MCSMpxORVStatusListDisplay(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~MCSMpxORVStatusListDisplay() override;

    /// Shows those below the node at \a path as well. \return false if there is none.
    virtual bool AddMpxORVs_ValuePath(const QString& path);
    virtual void RemoveAllMpxORVs_ValuePaths();
    /// Whether the column with the comments is shown, which it is at first.
    virtual void SetMaySeeFullStatusInformation(bool may);

  private:
    QTableView* m_view = nullptr;
    MCSMpxORVStatusListModel* m_model = nullptr;
};
