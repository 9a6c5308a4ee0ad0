// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/pathbinding.h>

#include <QtCore/QString>
#include <QtWidgets/QListView>

class QStandardItemModel;

/// The last events that the server told while this console looked, the newest first. GUI thread.
class LastEvents : public QListView, private PathBinding::IListener {
    Q_OBJECT

  public:
    static constexpr int Count = 5;

    explicit LastEvents(QWidget* parent = nullptr);

    /// Listens to the server whose tree is at \a basePath.
    void Bind(const QString& basePath);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  private:
    void OnBindingChanged(PathBinding& binding, TChangeCode code) override;
    void Add(const QString& event);

    PathBinding m_event;
    QStandardItemModel* m_model;
    qint64 m_lastNumber = 0;
};
