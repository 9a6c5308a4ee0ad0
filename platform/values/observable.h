// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/app/platformexport.h>

#include <cstdint>
#include <memory>
#include <vector>

class Observable;

/// What happened to an observable. Codes from 5000 on, and those not named here, belong to the classes that
/// send them and are named there.
using TChangeCode = int;

/// The change codes of values and nodes.
namespace changecode {
constexpr TChangeCode StateChanged = 2;        ///< the state; with state GoingAway, forget the item
constexpr TChangeCode ContentChanged = 3;      ///< the content
constexpr TChangeCode DescriptionChanged = 4;  ///< name, limits or delivery
constexpr TChangeCode ItemsChanged = 7;        ///< the items of a list or selection, as a whole
constexpr TChangeCode ItemAdded = 8;           ///< one item of a selection came
constexpr TChangeCode ItemRemoved = 9;         ///< one item of a selection went
constexpr TChangeCode StructureChanged = 15;   ///< items came or went somewhere below (or at) this node
constexpr TChangeCode ChildrenAdded = 16;      ///< children of this node came
constexpr TChangeCode ChildrenRemoved = 17;    ///< children of this node went
constexpr TChangeCode GoingAway = 18;          ///< this node is going away; its children are still there
constexpr TChangeCode ChildRenamed = 19;       ///< a child of this node has another name
}  // namespace changecode

/// Is told of changes. An observer detaches itself before it dies. Main thread.
class MCS_PLATFORM_EXPORT IObserver {
  public:
    virtual ~IObserver();
    virtual void Update(Observable* source, TChangeCode code) = 0;  ///< \a source tells \a code

  protected:
    IObserver() = default;
    IObserver(const IObserver&) = default;
    IObserver& operator=(const IObserver&) = default;
};

/// Tells observers of changes. Main thread; observers are not owned.
///
/// Observers are told in the order in which they were added. While a notification runs, everything is
/// allowed: an observer added is told from the next notification on, one removed is not told any more at
/// once, one moved to the front moves when the outermost notification ends (at once where there is only one
/// to be told), nested notifications run in full, and the observable itself may be destroyed, which ends its
/// notifications. A notification allocates nothing. Should an observer throw, the exception passes through
/// and those after it are not told.
///
/// Copies start without observers, and assignment leaves the observers of both sides alone.
class MCS_PLATFORM_EXPORT Observable {  // fixed: virtual-order
  public:
    Observable() noexcept : m_single(nullptr) {}
    Observable(const Observable&) noexcept : m_single(nullptr) {}
    Observable& operator=(const Observable&) noexcept { return *this; }
    virtual ~Observable();

    /// Adds \a observer at the end. Null and an observer that is there already change nothing.
    virtual void AddObserver(IObserver* observer);
    /// Removes \a observer; a stranger changes nothing.
    virtual void DeleteObserver(IObserver* observer);
    virtual void DeleteObservers();  ///< removes all
    /// Moves \a observer to the front; a stranger changes nothing.
    virtual void MakeFirstObserver(IObserver* observer);
    /// Calls Update(this, code) on every observer but \a originator. Returns with `this` destroyed if an
    /// observer destroyed it; a caller that goes on afterwards checks with an ObservableGuard.
    virtual void NotifyObservers(TChangeCode code, IObserver* originator = nullptr);

    int CountObservers() const { return static_cast<int>(m_count); }  ///< how many are told
    bool HasObserver(const IObserver* observer) const { return IndexOf(observer) != m_count; }  ///< told?

  protected:
    /// What NotifyObservers does, for classes that do not let it be overridden and notify often.
    void Notify(TChangeCode code, IObserver* originator) {
        if (m_count == 0) return;
        if (m_count > 1) return NotifyMany(code, originator);
        // A single observer needs no walk: nothing of this object is touched after it was told.
        IObserver* const observer = Data()[0];
        if (observer != originator) observer->Update(this, code);
    }

  private:
    friend class ObservableGuard;

    /// A notification under way, on the stack of NotifyMany. Changes of the list keep `next` and `end` right,
    /// and mark the walk as disturbed, so that it runs on registers as long as nothing happens.
    struct MCS_PLATFORM_EXPORT Walk {
        explicit Walk(Observable& walked) : subject(&walked), outer(walked.m_walks) { walked.m_walks = this; }
        ~Walk();
        Walk(const Walk&) = delete;
        Walk& operator=(const Walk&) = delete;

        Observable* subject;  ///< null once it is destroyed
        Walk* outer;
        std::uint32_t next = 0;
        std::uint32_t end = 0;
        bool isDisturbed = false;
        std::unique_ptr<std::vector<IObserver*>> toFront;  ///< outermost walk: moves that wait for its end
    };

    IObserver** Data() { return m_capacity == 0 ? &m_single : m_heap; }
    IObserver* const* Data() const { return m_capacity == 0 ? &m_single : m_heap; }
    std::uint32_t IndexOf(const IObserver* observer) const;
    void NotifyMany(TChangeCode code, IObserver* originator);
    void MoveToFront(IObserver* observer);
    void DisturbWalks();
    void Grow();

    // One observer, the usual number, needs no allocation.
    union {
        IObserver* m_single;  ///< while m_capacity is 0
        IObserver** m_heap;   ///< owned array of m_capacity
    };
    std::uint32_t m_count = 0;
    std::uint32_t m_capacity = 0;
    Walk* m_walks = nullptr;  ///< innermost notification under way
};

/// Tells whether an observable outlived the notifications sent since the guard was made.
class ObservableGuard {
  public:
    explicit ObservableGuard(Observable& observable) : m_walk(observable) {}  ///< guards from here on
    bool IsAlive() const { return m_walk.subject != nullptr; }                ///< may it be touched?

  private:
    Observable::Walk m_walk;  // a walk over nobody
};
