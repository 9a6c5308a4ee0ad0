// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/emcscontroltreesegments.h>

#include <QtCore/QString>
#include <QtWidgets/QWidget>

#include <functional>

/// One page of a window on the server's tree. GUI thread.
class Page : public QWidget {
    Q_OBJECT

  public:
    explicit Page(QWidget* parent = nullptr);
    ~Page() override;

    /// Shows what there is below \a basePath of \a segments, those that are there now; with none of its own
    /// among them the page shows that it is not connected. Binds anew in any case.
    virtual void Bind(const QString& basePath, EMCSControlTreeSegments segments) = 0;

    /// The path of one segment; empty if it is not among \a segments.
    static QString SegmentPath(const QString& basePath, EMCSControlTreeSegments segments,
                               EMCSControlTreeSegments segment);

  Q_SIGNALS:
    /// The user has just done \a what, in a widget that does not ask before; \a undo takes it back. May be
    /// called when the page is gone.
    void Acted(const QString& what, const std::function<void()>& undo);

  protected:
    /// The path of what is called \a key below \a path; empty if that is.
    static QString Below(const QString& path, QLatin1String key);
};
