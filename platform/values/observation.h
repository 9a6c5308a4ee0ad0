// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/observable.h>
#include <platform/values/valuebase.h>

#include <type_traits>
#include <utility>

/// An observer's hold on one Subject: a value, a node, a tic, a client. A member of the observer, or of what
/// the observer holds. Detaches at its own end, and lets go of a subject that goes as soon as the observer's
/// Update passes that on. Main thread; the subject is not owned.
///
/// The observer is the one that is told, in the order in which it was attached like any other: an observation
/// adds no observer of its own, and two of the same subject by the same observer end together.
template <class Subject>
class Observation {
  public:
    explicit Observation(IObserver& observer, Subject* subject = nullptr) : m_observer(&observer) {
        Begin(subject);
    }  ///< neither is owned; null: observes nothing
    Observation(Observation&& other) noexcept
        : m_observer(other.m_observer), m_subject(std::exchange(other.m_subject, nullptr)) {}
    Observation& operator=(Observation&& other) noexcept {
        if (this == &other) return *this;
        End();
        m_observer = other.m_observer;
        m_subject = std::exchange(other.m_subject, nullptr);
        return *this;
    }
    ~Observation() { End(); }

    /// Observes \a subject, which may be null, in place of what was observed.
    void Begin(Subject* subject) {
        if (subject == m_subject) return;
        End();
        m_subject = subject;
        if (subject != nullptr) subject->AddObserver(m_observer);
    }
    void End() {
        if (Subject* const subject = std::exchange(m_subject, nullptr)) subject->DeleteObserver(m_observer);
    }  ///< observes nothing any more
    /// Ends if \a source is the subject, and says by \a code that it goes. For the observer's Update.
    bool EndIfGoingAway(const Observable* source, TChangeCode code) {
        if (!Is(source) || !IsGoingAway(code)) return false;
        End();
        return true;
    }

    /// Whether \a source is the subject. Null is none.
    bool Is(const Observable* source) const { return m_subject != nullptr && m_subject == source; }

    Subject* Get() const { return m_subject; }  ///< null: observes nothing
    Subject* operator->() const { return m_subject; }
    Subject& operator*() const { return *m_subject; }
    explicit operator bool() const { return m_subject != nullptr; }

  private:
    /// A value says so by its state; nodes, tics and clients have a code for it.
    bool IsGoingAway(TChangeCode code) const {
        if constexpr (std::is_base_of_v<values::ValueBase, Subject>)
            return code == changecode::StateChanged && m_subject->GetState() == values::GoingAway;
        else
            return code == changecode::GoingAway;
    }

    IObserver* m_observer;
    Subject* m_subject = nullptr;
};
