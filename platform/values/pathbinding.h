// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>
#include <platform/values/observable.h>

#include <QtCore/QString>

#include <functional>

namespace values {
class TreeItem;
class ValueBase;
}  // namespace values

/// What stands at the path that is followed.
enum class EBindingState {
    Unbound,    ///< no path
    Waiting,    ///< nothing, so far or any more
    WrongType,  ///< an item that cannot be shown here
    Stale,      ///< the value, but the connection is down: the last content known
    Live        ///< the value
};

/// Follows the value at a path of the tree: also one that is not there yet, goes away, or comes back as
/// another item or another type. A change of the value costs no memory. Main thread.
class MCS_PLATFORM_EXPORT PathBinding : private IObserver {
  public:
    /// Told, besides the codes of the value itself, when another item or none is at the path.
    static constexpr TChangeCode Rebound = 0;
    /// Whoever shows what is there.
    class MCS_PLATFORM_EXPORT IListener {
      public:
        virtual ~IListener();
        /// \a code is Rebound or what the value told. Must not destroy the binding.
        virtual void OnBindingChanged(PathBinding& binding, TChangeCode code) = 0;
    };

    /// Whether a value is of a type that can be shown.
    using Filter = std::function<bool(const values::ValueBase& value)>;

    /// \a listener outlives the binding.
    PathBinding(IListener& listener, Filter filter);
    ~PathBinding() override;
    PathBinding(const PathBinding&) = delete;
    PathBinding& operator=(const PathBinding&) = delete;

    /// Binds to \a path, also anew to the same one; the listener is told Rebound. Empty: to nothing.
    void SetPath(const QString& path);
    QString GetPath() const { return m_path; }

    EBindingState GetState() const;  ///< of what is at the path now
    /// Null unless the state is Stale or Live.
    values::ValueBase* GetValue() const { return m_value; }

  private:
    void Update(Observable* source, TChangeCode code) override;
    void UpdateOfValue(TChangeCode code);
    bool MayMatter(TChangeCode code) const;
    void Follow();
    void Attach(values::TreeItem* item);
    void Detach();
    values::TreeItem* FindItemOrAncestor() const;

    IListener& m_listener;
    Filter m_filter;
    QString m_path;
    values::ValueBase* m_value = nullptr;
    /// What tells when there is something new: the item at the path, or else its deepest ancestor.
    values::TreeItem* m_watched = nullptr;
    bool m_isWrongType = false;
};
