// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtWidgets/QWidget>

class MCSMpxORVStatusListModel;
class QTableView;

/// A table of the MpxORVs below the nodes that it watches. GUI thread only.
class MCS_COMMON_EXPORT MCSMpxORVStatusListDisplay : public QWidget {  // fixed: virtual-order
    Q_OBJECT
    Q_PROPERTY(QByteArray valuePaths READ GetValuePaths WRITE SetValuePaths)
    Q_PROPERTY(
        bool fullStatusInformation READ ShowsFullStatusInformation WRITE SetMaySeeFullStatusInformation)

  public:
    /// Watches nothing until it is told what.
    explicit MCSMpxORVStatusListDisplay(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~MCSMpxORVStatusListDisplay() override;

    /// Shows those below the node at \a path as well. \return false if there is none.
    virtual bool AddMpxORVs_ValuePath(const QString& path);
    virtual void RemoveAllMpxORVs_ValuePaths();  ///< Watches nothing any more: the table is empty.
    /// Whether the column with the comments is shown, which it is at first.
    virtual void SetMaySeeFullStatusInformation(bool may);

  private:
    // As forms have it, in UTF-8 with commas between, which nobody translates: what comes to the paths later
    // is shown then.
    QByteArray GetValuePaths() const;
    void SetValuePaths(const QByteArray& paths);
    bool ShowsFullStatusInformation() const;

    QTableView* m_view = nullptr;
    MCSMpxORVStatusListModel* m_model = nullptr;
};
