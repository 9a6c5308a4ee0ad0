// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/observable.h>

#include <utility>
#include <vector>

/// An observable data object that notes what it tells its observers, and with which originator.
template <class Object>
class Notifying : public Object {
  public:
    using Notification = std::pair<TChangeCode, IObserver*>;

    using Object::Object;

    void NotifyObservers(TChangeCode code, IObserver* originator) override {
        m_notifications.emplace_back(code, originator);
        Object::NotifyObservers(code, originator);
    }

    const std::vector<Notification>& Notifications() const { return m_notifications; }
    void Clear() { m_notifications.clear(); }
    /// The object as the tree tells it of changes.
    IObserver& AsObserver() { return *this; }

  private:
    std::vector<Notification> m_notifications;
};
