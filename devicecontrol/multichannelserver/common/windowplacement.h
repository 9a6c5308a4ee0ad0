// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/commonexport.h>

#include <platform/values/persistant.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtWidgets/QWidget>

#include <memory>
#include <set>

/// Remembers where a window was, how big, and whether it was minimized or maximized: puts it back there when
/// it is created as the window's child, and stores it when it dies with the window. Restores what was stored
/// even where no screen is any more; the application brings its windows back (platform/widgets/screenfit.h).
/// Without a widget or a name it does nothing. GUI thread only.
class MCS_COMMON_EXPORT WindowPlacement : public QObject,
                                          public values::PersistantOwner {  // fixed: virtual-order
    Q_OBJECT

  public:
    /// \a name is the section of the configuration store. The third argument is not used.
    /// (fixed: unused-argument)
    WindowPlacement(QString name, QWidget* widget, const char* = nullptr);
    ~WindowPlacement() override;

    virtual void Store();    ///< Puts where the window is now into the configuration.
    virtual void Restore();  ///< Puts the window where the configuration says; without an entry it stays.

    /// Stores all placements. They do not store again when they die.
    static void CommitData();

    void ApplyPersistantBeforeWrite() override;
    void ApplyPersistantAfterRead() override;

  private:
    bool IsPersistent() const { return m_widget != nullptr && !m_name.isEmpty(); }

    static std::set<WindowPlacement*> s_WindowPlacementSet;

    std::unique_ptr<values::Persistant> m_persistant;
    QPointer<QWidget> m_widget;
    QString m_name;
    bool m_committed = false;
    int m_x = 0;
    int m_y = 0;
    int m_w = 200;
    int m_h = 200;
    int m_minimized = 0;
    int m_maximized = 0;
};
