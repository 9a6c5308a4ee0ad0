// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>
#include <platform/values/mainthread.h>
#include <platform/values/treeitem.h>

#include <cstdint>

namespace values {

/// How the changes of a value reach those who are told of them.
enum class EDelivery : std::uint8_t {
    LastValue,  ///< the last content counts: setting an equal content is no change, and changes may be merged
    EveryChange  ///< each set is an occurrence (a log message): always told, never merged
};

/// What all values share: state, delivery and the name. Main thread.
class MCS_PLATFORM_EXPORT ValueBase : public TreeItem, public Observable {
  public:
    ~ValueBase() override;
    ValueBase& operator=(const ValueBase&) = delete;

    Observable* GetObservable() override { return this; }
    void NotifyObservers(TChangeCode code, IObserver* originator = nullptr) final {
        MCS_ASSERT_MAIN_THREAD();
        Notify(code, originator);
    }

    /// Renames the value and tells DescriptionChanged; its parent then tells ChildRenamed. A name with "/" in
    /// it is refused, and so is, for a value in the tree, an empty name or one that a sibling has; a refusal
    /// is traced and changes nothing.
    void SetName(const QString& name, IObserver* originator = nullptr);
    /// Marks the value as valid or stale and tells StateChanged. Going away is for the destructor alone.
    void SetState(TValueState state, IObserver* originator = nullptr);
    EDelivery GetDelivery() const { return m_delivery; }  ///< LastValue at first
    /// Tells DescriptionChanged.
    void SetDelivery(EDelivery delivery);
    /// False for a mirrored value that its server does not let this process write: such a write would only be
    /// refused.
    bool IsWritable() const { return m_isWritable; }
    /// Tells DescriptionChanged.
    void SetWritable(bool isWritable);

  protected:
    ValueBase() = default;
    ValueBase(const ValueBase& other);  ///< name and delivery; the copy is detached, valid, writable

    void NotifyGoingAway() override;
    /// Whether a set that finds \a isEqual content has nothing to tell.
    bool IsNoChange(bool isEqual) const { return isEqual && m_delivery == EDelivery::LastValue; }
    /// Traces that \a what (e.g. "content NaN") was refused.
    void TraceRefusal(const char* what) const;

  private:
    EDelivery m_delivery = EDelivery::LastValue;
    bool m_isWritable = true;
};

}  // namespace values
