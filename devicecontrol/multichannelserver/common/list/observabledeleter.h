// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/observable.h>

#include <memory>

/// Deletes an observable when its last holder lets go of it, having detached the observer that came with it.
class ObservableDeleter {
  public:
    explicit ObservableDeleter(IObserver* observer) : m_observer(observer) {}

    template <class Subject>
    void operator()(Subject* subject) const {
        if (subject == nullptr) return;
        subject->DeleteObserver(m_observer);
        delete subject;
    }

    /// Takes ownership of \a subject and attaches \a observer, which outlives it or is not told any more.
    template <class Subject>
    static std::shared_ptr<Subject> Share(Subject* subject, IObserver* observer) {
        subject->AddObserver(observer);
        return std::shared_ptr<Subject>(subject, ObservableDeleter(observer));
    }

  private:
    IObserver* m_observer;
};
