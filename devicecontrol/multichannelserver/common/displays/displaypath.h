// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/pathbinding.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>

class QWidget;

/// A path that a display was given as a property. Displays by themselves look at a path once; a form is made
/// before there is a connection, so whoever uses one has the display look again whenever something comes to
/// the path or goes. A child of its display. GUI thread only.
class DisplayPath final : public QObject, private PathBinding::IListener {
  public:
    /// Has the display show what is at \a path now. May destroy the display.
    using Show = std::function<void(const QString& path)>;

    /// The path that \a display was given; empty if none.
    static QString Of(const QWidget& display);
    static QStringList AllOf(const QWidget& display);
    /// Has \a show called now, and later from the event loop whenever something else is at \a path. Replaces
    /// what was set before; an empty path is shown once and not followed.
    static void Set(QWidget& display, const QString& path, const Show& show);
    /// The same for several; the empty ones are left out.
    static void SetAll(QWidget& display, const QStringList& paths, const Show& show);

  private:
    DisplayPath(QWidget& display, const QString& path, Show show);

    void OnBindingChanged(PathBinding& binding, TChangeCode code) override;
    void ShowAgain();

    Show m_show;
    PathBinding m_binding;
    bool m_isDue = false;
};
